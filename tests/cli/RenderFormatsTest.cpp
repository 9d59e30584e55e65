// `render` on photos as phones and cameras write them: what a colour-managed
// viewer shows of the saved picture, the tags it keeps, the format asked for.
#include "../face/FaceFixtures.h"
#include "CliRun.h"
#include "../face/PhotoFixtures.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

namespace {

CliRun render(const QStringList& arguments)
{
    return runCli(QStringList{"render"} + arguments);
}

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class RenderFormatsTest : public ::testing::Test {
protected:
    QString write(const QString& name, const QByteArray& bytes) { return writtenFile(folder.path(), name, bytes); }

    QTemporaryDir folder;
};

// What a viewer shows: the picture converted through its own profile.
QImage asSeen(const QString& path)
{
    QImage picture(path);
    picture = picture.convertToFormat(QImage::Format_RGB888);
    return picture.colorSpace().isValid() ? picture.convertedToColorSpace(QColorSpace::SRgb) : picture;
}

// Mean difference per channel outside the mouth, where the lips-only
// settings paint nothing.
double meanDifferenceOutsideTheMouth(const QImage& a, const QImage& b)
{
    const QRect mouth(150, 110, 150, 80);
    double sum = 0;
    int counted = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            if (mouth.contains(x, y))
                continue;
            const QColor p = a.pixelColor(x, y), q = b.pixelColor(x, y);
            sum += std::abs(p.red() - q.red()) + std::abs(p.green() - q.green()) + std::abs(p.blue() - q.blue());
            ++counted;
        }
    return sum / (3.0 * counted);
}

int pixelsNear(const QImage& picture, QColor colour, int tolerance)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QColor p = picture.pixelColor(x, y);
            count += std::abs(p.red() - colour.red()) <= tolerance && std::abs(p.green() - colour.green()) <= tolerance
                     && std::abs(p.blue() - colour.blue()) <= tolerance;
        }
    return count;
}

} // namespace

TEST_F(RenderFormatsTest, WideGamutPhotosLookInTheSavedPictureAsTheyDidWithTheChosenLipColour)
{
    const QImage portrait = inColourSpace(portraitHead(), {});
    const QString lips = write("lips.json", R"({"b_Color_Lips": true, "color_Color_Lips": "#b8324e",
                                               "f_Color_Lips_Transparency": 1})");
    struct Case {
        const char* input;
        QByteArray bytes;
        const char* output;
        double meanLimit; // lossy outputs add their own loss
        int lipPixels;    // and blur the lips' edges
    } cases[] = {
        {"adobe.jpg", encodedAs(inColourSpace(portrait, QColorSpace::AdobeRgb), "jpeg"), "out.png", 1, 200},
        {"p3.png", encodedAs(inColourSpace(portrait, QColorSpace::DisplayP3), "png"), "out.tif", 1, 200},
        {"p3.heic", heifOf(inColourSpace(portrait, QColorSpace::DisplayP3), heif_compression_HEVC), "out.webp", 1.5,
         200},
        {"adobe.tif", encodedAs(inColourSpace(portrait, QColorSpace::AdobeRgb), "tiff"), "out.jpg", 1.5, 50},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.input);
        const QString out = folder.filePath(c.output);
        const QString input = write(c.input, c.bytes);
        const CliRun run = render({input, "--settings", lips, "-o", out, "--quality", "100"});
        ASSERT_EQ(run.status, 0) << run.err.toStdString();
        EXPECT_TRUE(QImage(out).colorSpace().isValid()) << "the photo's profile is embedded";
        const QImage seen = asSeen(out);
        // The input as a viewer shows it (Qt reads no HEIC: the portrait it was made of).
        const QImage reference = QImage(input).isNull() ? portrait : asSeen(input);
        EXPECT_LE(meanDifferenceOutsideTheMouth(seen, reference), c.meanLimit);
        EXPECT_GT(pixelsNear(seen, QColor("#b8324e"), 3), c.lipPixels) << "the lips in the colour chosen";
    }
}

TEST_F(RenderFormatsTest, CameraTagsReachEveryFormatUprightWithoutThumbnail)
{
    // Stored on its side, as a phone held upright writes it.
    const QImage sideways = portraitHead().transformed(QTransform().rotate(-90));
    const QString photo = write("camera.jpg", withExif(encodedAs(sideways, "jpeg"),
                                                        {{"Exif.Image.Model", "Testcam 9"},
                                                         {"Exif.Image.Copyright", "(c) A. Person"},
                                                         {"Exif.Photo.DateTimeOriginal", "2026:05:04 10:11:12"},
                                                         {"Exif.Image.Orientation", "6"}},
                                                        encodedAs(sideways.scaled(64, 64), "jpeg")));
    const char* keys[] = {"Exif.Image.Model", "Exif.Image.Copyright", "Exif.Photo.DateTimeOriginal",
                          "Exif.Image.Orientation", "Exif.Thumbnail.JPEGInterchangeFormat"};
    struct Case {
        const char* output;
        QByteArray firstBytes;
    } cases[] = {
        {"out.png", "\x89PNG"},
        {"out.JPG", "\xff\xd8\xff"},
        {"out.webp", "RIFF"},
        {"out.tiff", "II*"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.output);
        const QString out = folder.filePath(c.output);
        const CliRun run = render({photo, "-o", out});
        ASSERT_EQ(run.status, 0) << run.err.toStdString();
        const QByteArray written = readAll(out);
        EXPECT_TRUE(written.startsWith(c.firstBytes));
        EXPECT_EQ(QImage(out).size(), QSize(512, 340)) << "upright";
        const std::map<std::string, std::string> expected = {
            {keys[0], "Testcam 9"}, {keys[1], "(c) A. Person"}, {keys[2], "2026:05:04 10:11:12"}, {keys[3], "1"},
            {keys[4], ""}};
        EXPECT_EQ(exifOf(written, {keys[0], keys[1], keys[2], keys[3], keys[4]}), expected);
    }
    const QString plain = folder.filePath("plain.jpg");
    ASSERT_EQ(render({write("plain.png", encodedAs(inColourSpace(portraitHead(), {}), "png")), "-o", plain}).status, 0);
    EXPECT_EQ(exifOf(readAll(plain), {keys[0]}).at(keys[0]), "") << "no metadata in, none out";
}

TEST_F(RenderFormatsTest, AnOutputOfAnotherKindIsRefusedBeforeAnyWork)
{
    for (const char* output : {"out.bmp", "out", "out.png.txt"}) {
        const CliRun run = render({"/nonexistent/photo.jpg", "-o", folder.filePath(output)});
        EXPECT_EQ(run.status, 64) << output;
        EXPECT_TRUE(run.err.contains(".png, .jpg, .jpeg, .webp, .tif, .tiff")) << run.err.toStdString();
    }
    const QString photo = testDataPath("portrait.png"), out = folder.filePath("q.jpg");
    for (const QStringList& wrong : {QStringList{photo, "-o", out, "--quality", "0"}, {photo, "-o", out, "--quality", "101"},
                                     {photo, "-o", out, "--quality", "high"}, {photo, "-o", out, "--fast"}, {photo},
                                     {photo, "-o", out, "--settings", photo, "--preset", "Evening"}})
        EXPECT_EQ(render(wrong).status, 64) << wrong.join(' ').toStdString();
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}
