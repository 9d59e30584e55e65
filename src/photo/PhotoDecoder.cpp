#include "PhotoDecoder.h"

#include "HeifDecoder.h"
#include "Picture.h"
#include "RegularFile.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <new>

namespace {

constexpr qint64 kMaxFileBytes = qint64(1) << 30;
constexpr int kAllocationLimitMB = int(kMaxPhotoPixels * 4 / (1024 * 1024)) + 1;
constexpr int kMaxImagesMeasured = 1000;

QString quoted(const QString& path)
{
    return "\"" + QFileInfo(path).fileName() + "\"";
}

// A reader over the file's bytes: the file is read from disk once and every
// decoder pass works on memory.
struct MemoryReader {
    QBuffer buffer;
    QImageReader reader;

    explicit MemoryReader(const QByteArray& bytes)
    {
        buffer.setData(bytes); // shares the bytes, copies nothing
        buffer.open(QIODevice::ReadOnly);
        reader.setDevice(&buffer);
        reader.setDecideFormatFromContent(true);
        reader.setAutoTransform(true);
        reader.setAllocationLimit(kAllocationLimitMB);
    }
};

// The size the current image will have once its orientation is applied.
QSize uprightSize(const QImageReader& reader)
{
    const QSize stored = reader.size();
    return reader.transformation() & QImageIOHandler::TransformationRotate90 ? stored.transposed() : stored;
}


QString tooLarge(const QString& path, QSize size)
{
    return QString("The picture %1 is %2 × %3 pixels; Bellavenor opens pictures of up to %4 megapixels.")
        .arg(quoted(path))
        .arg(size.width())
        .arg(size.height())
        .arg(kMaxPhotoPixels / 1'000'000);
}

qint64 area(QSize size)
{
    return qint64(std::max(size.width(), 0)) * std::max(size.height(), 0);
}

// The pages of a file as their headers describe them, before any pixel is
// read: which one is the photo (the largest; a multi-page file often starts
// with a thumbnail) and the largest width and largest height over all.
struct PageSurvey {
    int photoPage = 0;
    QSize photoSize;
    QSize measure;
    QString refusal;
};

PageSurvey surveyPages(const QString& path, const QByteArray& bytes)
{
    MemoryReader file(bytes);
    PageSurvey survey;
    // Jumping by number: stepping to the next image loses its place in a
    // memory buffer for TIFF.
    const int count = std::clamp(file.reader.imageCount(), 1, kMaxImagesMeasured);
    for (int i = 0; i < count; ++i) {
        if (i > 0 && !file.reader.jumpToImage(i))
            break;
        const QSize size = uprightSize(file.reader);
        if (area(size) > kMaxPhotoPixels) {
            survey.refusal = tooLarge(path, size);
            return survey;
        }
        if (area(size) > area(survey.photoSize)) {
            survey.photoPage = i;
            survey.photoSize = size;
        }
        survey.measure = survey.measure.expandedTo(size);
    }
    if (area(survey.measure) > kMaxPhotoPixels)
        survey.refusal = tooLarge(path, survey.measure);
    return survey;
}

// The photo is the largest page, held at the file's measure (the largest
// width and the largest height over all pages), so that the picture shown,
// the picture the face is found on and the size the regions are flipped by
// are one and the same. Only a file whose pages differ in shape has its
// photo stretched.
DecodedPhoto readPhoto(const QByteArray& bytes, const QString& path)
{
    DecodedPhoto photo;
    if (!MemoryReader(bytes).reader.canRead()) {
        photo.error =
            QString("The file %1 is not a picture Bellavenor can read (BMP, JPEG, PNG, GIF, TIFF, WebP, HEIC or AVIF).")
                .arg(quoted(path));
        return photo;
    }
    const PageSurvey survey = surveyPages(path, bytes);
    if (photo.error = survey.refusal; !photo.ok()) {
        photo.tooLarge = true;
        return photo;
    }

    MemoryReader file(bytes);
    if (survey.photoPage > 0)
        file.reader.jumpToImage(survey.photoPage);
    QImage image = file.reader.read();
    if (image.isNull()) {
        photo.error = QString("The picture %1 could not be decoded: %2.").arg(quoted(path), file.reader.errorString());
        return photo;
    }
    const QSize measure = survey.measure.expandedTo(image.size());
    const QColorSpace colourSpace = image.colorSpace();
    if (image.size() == measure) {
        // Converted where it lies when Qt can: a second copy of a 64 MP
        // photo is a quarter of a gigabyte more at the open's peak.
        image.convertTo(kPictureFormat);
        requireAllocated(image, measure);
        photo.img_Basic = std::move(image);
    } else {
        photo.img_Basic = Stretch_Image(image, measure);
    }
    photo.imgSize = measure;
    bool hasIccProfile = false;
    photo.metadata = readMetadata(bytes, photo.warnings, &hasIccProfile);
    photo.metadata.colourSpace = colourSpace;
    if (hasIccProfile && !colourSpace.isValid())
        photo.warnings << kUnreadableProfile;
    return photo;
}

// HEIC and AVIF go through libheif: one image, upright, its colour space
// from an ICC profile or an nclx box, EXIF and XMP from the file's items.
DecodedPhoto readHeifPhoto(const QByteArray& bytes, const QString& path)
{
    DecodedPhoto photo;
    HeifPhoto heif = decodeHeif(bytes, kMaxPhotoPixels);
    photo.tooLarge = !heif.oversize.isEmpty();
    if (photo.tooLarge)
        photo.error = tooLarge(path, heif.oversize);
    else if (!heif.error.isEmpty())
        photo.error = QString("The picture %1 could not be decoded: %2.").arg(quoted(path), heif.error);
    if (!photo.ok())
        return photo;
    photo.img_Basic = std::move(heif.image);
    photo.imgSize = photo.img_Basic.size();
    photo.metadata = std::move(heif.metadata);
    photo.warnings = std::move(heif.warnings);
    return photo;
}

} // namespace

DecodedPhoto decodePhotoData(const QByteArray& bytes, const QString& path)
{
    try {
        return isHeifFile(bytes) ? readHeifPhoto(bytes, path) : readPhoto(bytes, path);
    } catch (const std::bad_alloc&) {
        DecodedPhoto refused;
        refused.error = QString("There is not enough memory to open %1.").arg(quoted(path));
        return refused;
    }
}

DecodedPhoto decodePhoto(const QString& path)
{
    QByteArray bytes;
    DecodedPhoto unread;
    if (unread.error = readRegularFile(path, kMaxFileBytes, bytes); !unread.ok())
        return unread;
    return decodePhotoData(bytes, path);
}
