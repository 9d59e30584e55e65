// Photos as phones and cameras write them: colour profiles in every format,
// HEIC and AVIF, camera metadata, and hostile versions of each.
#include "DLibWrapper.h"
#include "FaceFixtures.h"
#include "PhotoDecoder.h"
#include "PhotoFixtures.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <cmath>

namespace {

const QColorSpace kP3(QColorSpace::DisplayP3);
const QColorSpace kAdobe(QColorSpace::AdobeRgb);

double meanLandmarkDistance(const FaceLandmarks& a, const FaceLandmarks& b)
{
    double sum = 0;
    for (qsizetype i = 0; i < a.size(); ++i)
        sum += std::hypot(a[i].x() - b[i].x(), a[i].y() - b[i].y());
    return sum / double(a.size());
}

FaceLandmarks landmarksOf(const QImage& picture)
{
    return DLibWrapper::Detect_Facial_Points(picture).landmarks;
}

// A JPEG with one more segment right after its start marker.
QByteArray withJpegSegment(const QByteArray& jpeg, quint8 marker, const QByteArray& payload)
{
    QByteArray segment("\xff");
    segment.append(char(marker));
    segment.append(char((payload.size() + 2) >> 8)).append(char((payload.size() + 2) & 0xff));
    return jpeg.left(2) + segment + payload + jpeg.mid(2);
}

QByteArray iccSegment(const QByteArray& profile)
{
    return QByteArray("ICC_PROFILE\0\1\1", 14) + profile;
}

QByteArray exifSegment(const QByteArray& tiff)
{
    return QByteArray("Exif\0\0", 6) + tiff;
}

// A little-endian TIFF header whose first directory starts at `offset` and
// claims `entries` entries.
QByteArray exifDirectory(quint32 offset, quint16 entries)
{
    QByteArray tiff("II*\0", 4);
    tiff.append(QByteArray(4, '\0'));
    qToLittleEndian(offset, tiff.data() + 4);
    tiff.append(QByteArray(8, '\0'));
    qToLittleEndian(entries, tiff.data() + 8);
    return tiff + QByteArray(24, '\x41');
}

} // namespace

TEST(PhotoFormats, EachFormatKeepsItsValuesAndNamesItsColourSpace)
{
    const QImage portrait = portraitPicture();
    struct Case {
        const char* name;
        const char* format;
        QColorSpace space;
    } cases[] = {
        {"untagged PNG", "png", {}},          {"Display P3 PNG", "png", kP3},
        {"Adobe RGB TIFF", "tiff", kAdobe},   {"Adobe RGB JPEG", "jpeg", kAdobe},
        {"Display P3 WebP", "webp", kP3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const QImage stored = inColourSpace(portrait, c.space);
        const DecodedPhoto photo = decodePhotoData(encodedAs(stored, c.format), c.name);
        ASSERT_TRUE(photo.ok()) << photo.error.toStdString();
        EXPECT_EQ(photo.metadata.colourSpace.isValid(), c.space.isValid());
        if (c.space.isValid()) {
            EXPECT_EQ(photo.metadata.colourSpace, c.space);
        }
        EXPECT_TRUE(photo.warnings.isEmpty());
        if (QByteArray(c.format) != "jpeg" && QByteArray(c.format) != "webp") { // lossless: the values as stored
            EXPECT_EQ(photo.img_Basic.pixel(200, 120), stored.pixel(200, 120));
        }
    }
}

TEST(PhotoFormats, HeicAndAvifOpenWithThePngsLandmarksAndTheirProfile)
{
    const QImage portrait = portraitPicture();
    const FaceLandmarks fromPng = landmarksOf(portrait);
    for (const auto& [name, format] : {std::pair{"HEIC", heif_compression_HEVC}, {"AVIF", heif_compression_AV1}}) {
        SCOPED_TRACE(name);
        const QByteArray file = heifOf(inColourSpace(portrait, kP3), format);
        if (file.isEmpty()) {
            ADD_FAILURE() << "Debian's libheif encodes " << name << "; this one cannot";
            continue;
        }
        const DecodedPhoto photo = decodePhotoData(file, name);
        ASSERT_TRUE(photo.ok()) << photo.error.toStdString();
        EXPECT_EQ(photo.imgSize, QSizeF(512, 512));
        EXPECT_EQ(photo.metadata.colourSpace, kP3);
        // Same face within the codec's loss: the P3 values are converted
        // back to sRGB for the detector to see what the PNG holds.
        const QImage seen = toPicture(photo.img_Basic.convertedToColorSpace(QColorSpace::SRgb));
        ASSERT_FALSE(seen.isNull());
        ASSERT_EQ(landmarksOf(seen).size(), 68);
        ASSERT_EQ(fromPng.size(), 68);
        EXPECT_LT(meanLandmarkDistance(landmarksOf(seen), fromPng), 1.5);
    }
}

TEST(PhotoFormats, HeicStoredSidewaysOpensUpright)
{
    const QImage upright = portraitPicture().scaled(384, 512);
    const QImage sideways = upright.transformed(QTransform().rotate(-90));
    // The file holds the turned pixels and says to turn them back.
    const QByteArray file = heifOf(sideways, heif_compression_HEVC, heif_orientation_rotate_90_cw);
    const DecodedPhoto photo = decodePhotoData(file, "sideways.heic");
    ASSERT_TRUE(photo.ok()) << photo.error.toStdString();
    EXPECT_EQ(photo.img_Basic.size(), QSize(384, 512));
    EXPECT_EQ(DLibWrapper::Detect_Facial_Points(photo.img_Basic).code, 0);
}

TEST(PhotoFormats, BrokenHeicIsRefusedByNameAndAHugeOneBeforeDecoding)
{
    const QByteArray file = heifOf(portraitPicture(), heif_compression_HEVC);
    QByteArray huge = file;
    const qsizetype ispe = huge.indexOf("ispe");
    ASSERT_GT(ispe, 0);
    qToBigEndian<quint32>(20000, huge.data() + ispe + 8); // width, behind the box's version and flags
    qToBigEndian<quint32>(20000, huge.data() + ispe + 12);
    QByteArray scrambled = file; // the boxes behind the file type, not the coded pixels
    for (qsizetype i = 32; i < 400; i += 5)
        scrambled[i] = char(scrambled[i] ^ 0x5a);
    struct Case {
        const char* name;
        QByteArray bytes;
        const char* says;
    } cases[] = {
        {"huge.heic", huge, "megapixels"},
        {"truncated.heic", file.left(file.size() / 2), "could not be decoded"},
        {"header-only.heic", file.left(40), ""},
        {"scrambled.heic", scrambled, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const DecodedPhoto photo = decodePhotoData(c.bytes, c.name);
        EXPECT_FALSE(photo.ok());
        EXPECT_TRUE(photo.error.contains(c.name) && photo.error.contains(c.says)) << photo.error.toStdString();
        EXPECT_EQ(photo.tooLarge, QByteArray(c.says) == "megapixels");
        EXPECT_TRUE(photo.img_Basic.isNull());
    }
}

TEST(PhotoFormats, HostileProfilesAndMetadataLeaveThePhotoOpenAndSaySo)
{
    const QByteArray jpeg = encodedAs(inColourSpace(portraitPicture(), {}), "jpeg");
    QByteArray lyingProfile = QColorSpace(QColorSpace::DisplayP3).iccProfile();
    qToBigEndian<quint32>(0xffffffff, lyingProfile.data() + 128); // tag count
    struct Case {
        const char* name;
        QByteArray bytes;
        bool saysProfile;
    } cases[] = {
        {"random profile", withJpegSegment(jpeg, 0xe2, iccSegment(QByteArray(300, '\x93'))), true},
        {"profile with 4 billion tags", withJpegSegment(jpeg, 0xe2, iccSegment(lyingProfile)), true},
        {"cut profile", withJpegSegment(jpeg, 0xe2, iccSegment(kP3.iccProfile().left(200))), true},
        {"directory of 65535 entries", withJpegSegment(jpeg, 0xe1, exifSegment(exifDirectory(8, 0xffff))), false},
        {"directory pointing at itself", withJpegSegment(jpeg, 0xe1, exifSegment(exifDirectory(0, 1))), false},
        {"directory beyond the end", withJpegSegment(jpeg, 0xe1, exifSegment(exifDirectory(0x7fffffff, 3))), false},
    };
    QStringList warnings;
    EXPECT_FALSE(readMetadata({}, warnings).hasTags()) << "an empty file, once a crash found by fuzzing";
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const DecodedPhoto photo = decodePhotoData(c.bytes, "hostile.jpg");
        ASSERT_TRUE(photo.ok()) << photo.error.toStdString();
        EXPECT_EQ(photo.imgSize, QSizeF(512, 512));
        EXPECT_FALSE(photo.metadata.colourSpace.isValid()) << "taken as sRGB";
        if (c.saysProfile) {
            EXPECT_TRUE(photo.warnings.contains(kUnreadableProfile)) << photo.warnings.join("; ").toStdString();
        }
    }
}
