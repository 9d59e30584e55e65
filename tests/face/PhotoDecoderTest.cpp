#include "DLibWrapper.h"
#include "FaceFixtures.h"
#include "PhotoDecoder.h"
#include "TiffPages.h"

#include <QFile>
#include <QImageWriter>
#include <QTemporaryDir>
#include <QTransform>
#include <QtEndian>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <future>
#include <memory>
#include <thread>

namespace {

class PhotoDecoderTest : public ::testing::Test {
protected:
    QString write(const QString& name, const QByteArray& bytes) { return writtenFile(folder.path(), name, bytes); }

    QByteArray portraitBytes() const
    {
        QFile file(testDataPath("portrait.png"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    QTemporaryDir folder;
};

void expectCleanRefusal(const DecodedPhoto& photo, const QString& fileName, bool forItsSize = false)
{
    EXPECT_FALSE(photo.ok());
    EXPECT_EQ(photo.tooLarge, forItsSize) << fileName.toStdString();
    EXPECT_TRUE(photo.error.contains(fileName)) << photo.error.toStdString();
    EXPECT_TRUE(photo.img_Basic.isNull());
}

// A BMP header that claims `width` × `height` pixels and carries none.
QByteArray bmpHeaderClaiming(qint32 width, qint32 height)
{
    QByteArray header(54, '\0');
    auto put32 = [&](int offset, quint32 value) { qToLittleEndian(value, header.data() + offset); };
    header[0] = 'B';
    header[1] = 'M';
    put32(2, 54 + 16);
    put32(10, 54);
    put32(14, 40);
    put32(18, quint32(width));
    put32(22, quint32(height));
    qToLittleEndian<quint16>(1, header.data() + 26);
    qToLittleEndian<quint16>(24, header.data() + 28);
    return header + QByteArray(16, '\x7f');
}

} // namespace

TEST_F(PhotoDecoderTest, GifAndTiffAreReadAndAnalysed)
{
    const QString tiff = folder.filePath("portrait.tif");
    ASSERT_TRUE(QImageWriter(tiff, "tiff").write(portraitPicture()));

    for (const QString& path : {testDataPath("portrait.gif"), tiff}) {
        const DecodedPhoto photo = decodePhoto(path);
        ASSERT_TRUE(photo.ok()) << photo.error.toStdString();
        EXPECT_EQ(photo.imgSize, QSizeF(512, 512));
        EXPECT_EQ(DLibWrapper::Detect_Facial_Points(photo.img_Basic).code, 0) << path.toStdString();
    }
}

TEST_F(PhotoDecoderTest, JpegStoredSidewaysIsTurnedUprightByItsOrientationTag)
{
    // The pixels lie on their side; the tag says how to stand them up.
    const QImage sideways = portraitPicture().transformed(QTransform().rotate(90)).scaled(512, 384);
    const QString path = folder.filePath("phone.jpg");
    QImageWriter writer(path, "jpeg");
    writer.setTransformation(QImageIOHandler::TransformationRotate270);
    ASSERT_TRUE(writer.write(sideways));

    const DecodedPhoto photo = decodePhoto(path);

    ASSERT_TRUE(photo.ok()) << photo.error.toStdString();
    EXPECT_EQ(photo.img_Basic.size(), QSize(384, 512));
    EXPECT_EQ(photo.imgSize, QSizeF(384, 512));
    EXPECT_EQ(DLibWrapper::Detect_Facial_Points(photo.img_Basic).code, 0);
}

TEST_F(PhotoDecoderTest, PhotoIsStretchedToTheLargestWidthAndLargestHeightOfItsPages)
{
    // 40 × 10 and 20 × 30: the larger page, the second, is the photo (a
    // thumbnail often comes first), measured 40 × 30.
    QImage tall = makePicture({20, 30}), wide = makePicture({40, 10});
    tall.fill(Qt::red);
    wide.fill(Qt::blue);
    const DecodedPhoto decoded = decodePhoto(write("two-pages.tif", tiffOfPages({{wide}, {tall}})));
    ASSERT_TRUE(decoded.ok()) << decoded.error.toStdString();
    EXPECT_EQ(decoded.imgSize, QSizeF(40, 30));
    EXPECT_EQ(decoded.img_Basic.size(), QSize(40, 30)) << "the picture is the measure: masks and photo agree";
    EXPECT_EQ(decoded.img_Basic.pixelColor(39, 0), QColor(Qt::red));
}

TEST_F(PhotoDecoderTest, PageClaimingTooManyPixelsRefusesTheFileBeforeAnyPixelIsRead)
{
    QImage speck = makePicture({1, 1});
    speck.fill(Qt::gray);
    const QString path =
        write("giant-page.tif", tiffOfPages({{portraitPicture()}, {speck, QSize(100000, 100000)}}));

    expectCleanRefusal(decodePhoto(path), "giant-page.tif", true);
}

TEST_F(PhotoDecoderTest, BadFilesAreRefusedWithAMessageNamingThem)
{
    const QByteArray png = portraitBytes();
    expectCleanRefusal(decodePhoto(folder.filePath("absent.png")), "absent.png");
    expectCleanRefusal(decodePhoto(write("empty.png", {})), "empty.png");
    expectCleanRefusal(decodePhoto(write("notes.jpg", "Shopping: eggs, milk, bread.\n")), "notes.jpg");
    expectCleanRefusal(decodePhoto(write("huge.bmp", bmpHeaderClaiming(100000, 100000))), "huge.bmp");
    expectCleanRefusal(decodePhoto(write("header-only.png", png.left(60))), "header-only.png");
}

// A pipe without a writer would block the open for ever, a device like
// /dev/zero would stream without end: each is decoded on a thread of its
// own, and a decode still reading after 20 s fails the test (a pipe is let
// go by a writer that comes and goes) instead of hanging the suite.
TEST_F(PhotoDecoderTest, PipesDevicesAndFoldersAreRefusedBeforeTheyAreRead)
{
    const QString pipe = folder.filePath("photo.jpg");
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString& path : {pipe, QString("/dev/zero"), folder.path()}) {
        SCOPED_TRACE(path.toStdString());
        auto decoded = std::make_shared<std::promise<DecodedPhoto>>();
        std::future<DecodedPhoto> result = decoded->get_future();
        std::thread([decoded, path] { decoded->set_value(decodePhoto(path)); }).detach();
        if (result.wait_for(std::chrono::seconds(20)) != std::future_status::ready) {
            ::close(::open(QFile::encodeName(pipe).constData(), O_RDWR | O_NONBLOCK));
            FAIL() << "still reading after 20 s";
        }
        const DecodedPhoto photo = result.get();
        expectCleanRefusal(photo, QFileInfo(path).fileName());
        EXPECT_TRUE(path == folder.path() || photo.error.contains("not a regular file")) << photo.error.toStdString();
    }
}
