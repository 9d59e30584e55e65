#include "FilterPrimitives.h"
#include "Picture.h"
#include "PictureSaver.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

// A full disk, for this process: writes past `bytes` fail (EFBIG) instead
// of ending the process.
class FullDiskAfter {
public:
    explicit FullDiskAfter(rlim_t bytes)
    {
        previousSignal_ = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &previous_);
        const rlimit limited{bytes, previous_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FullDiskAfter()
    {
        setrlimit(RLIMIT_FSIZE, &previous_);
        std::signal(SIGXFSZ, previousSignal_);
    }

private:
    rlimit previous_{};
    void (*previousSignal_)(int) = nullptr;
};

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

// A picture PNG cannot squeeze: a few hundred kilobytes as a file.
QImage noisyPicture()
{
    QImage picture = makePicture({300, 300});
    std::mt19937 random(3);
    auto* words = reinterpret_cast<quint32*>(picture.bits());
    for (int i = 0; i < 300 * 300; ++i)
        words[i] = random() | 0xff000000u;
    return picture;
}

dev_t deviceOf(const QString& path)
{
    struct stat info {};
    return stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_dev : 0;
}

} // namespace

TEST(PictureSaver, TheNamesExtensionChoosesTheFormatElseTheChosenTypeAddsItsOwn)
{
    const struct {
        const char* chosen;
        PictureFormat type;
        const char* written;
    } cases[] = {
        {"/p/a.JPG", PictureFormat::Png, "/p/a.JPG"},   {"/p/a.tiff", PictureFormat::Jpeg, "/p/a.tiff"},
        {"/p/a", PictureFormat::Jpeg, "/p/a.jpg"},      {"/p/a.bmp", PictureFormat::Tiff, "/p/a.bmp.tif"},
        {"/p/a.x.webp", PictureFormat::Png, "/p/a.x.webp"}, {"/p/png", PictureFormat::WebP, "/p/png.webp"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(withPictureExtension(c.chosen, c.type), c.written);
    EXPECT_EQ(pictureFormatOf("a.JPEG"), PictureFormat::Jpeg);
    EXPECT_EQ(pictureFormatOf("a.tif"), PictureFormat::Tiff);
    EXPECT_FALSE(pictureFormatOf("a.heic")) << "read, never written";
}

TEST(PictureSaver, WriteOnAFullDiskFailsAndLeavesTheOldFileWhole)
{
    QTemporaryDir folder;
    const QString path = folder.filePath("picture.png");
    writeFile(path, "the user's old picture");
    QString reason;
    {
        FullDiskAfter full(64 * 1024);
        reason = writePicture(noisyPicture(), path, {}, {});
    }
    EXPECT_FALSE(reason.isEmpty());
    EXPECT_EQ(contentOf(path), "the user's old picture");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"picture.png"}) << "no half file left";
}

TEST(PictureSaver, MoveToAnotherFileSystemOnAFullDiskLeavesTheOldFileWhole)
{
    QTemporaryDir here;
    QTemporaryDir there(QDir::tempPath() == "/dev/shm" ? "/tmp/bellavenor-XXXXXX" : "/dev/shm/bellavenor-XXXXXX");
    if (!there.isValid() || deviceOf(here.path()) == deviceOf(there.path()))
        GTEST_SKIP() << "needs two file systems (the temporary folder and /dev/shm)";
    const QString rendered = here.filePath("rendered.png"), chosen = there.filePath("mine.png");
    const QByteArray picture(300 * 1024, 'p');
    writeFile(rendered, picture);
    writeFile(chosen, "old picture");
    QString reason;
    {
        FullDiskAfter full(100 * 1024);
        reason = moveReplacing(rendered, chosen);
    }
    EXPECT_FALSE(reason.isEmpty());
    EXPECT_EQ(contentOf(chosen), "old picture") << "never a truncated picture at the chosen place";
    EXPECT_EQ(contentOf(rendered), picture) << "the picture stays in the working folder";
    EXPECT_EQ(QDir(there.path()).entryList(QDir::Files), QStringList{"mine.png"});

    EXPECT_EQ(moveReplacing(rendered, chosen), "") << "with room, the copy goes through";
    EXPECT_EQ(contentOf(chosen), picture);
    EXPECT_FALSE(QFile::exists(rendered));
}
