#include "PhotoDecoder.h"

#include "Picture.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

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

QSizeF largestSizeOverAllImages(const QByteArray& bytes, QSize first)
{
    MemoryReader file(bytes);
    float width = float(first.width());
    float height = float(first.height());
    // Jumping by number: stepping to the next image loses its place in a
    // memory buffer for TIFF.
    const int count = std::clamp(file.reader.imageCount(), 1, kMaxImagesMeasured);
    for (int i = 0; i < count; ++i) {
        if (i > 0 && !file.reader.jumpToImage(i))
            break;
        const QSize size = uprightSize(file.reader);
        width = std::max(width, float(size.width()));
        height = std::max(height, float(size.height()));
    }
    return {width, height};
}

QString refusalBeforeDecoding(const QString& path, QImageReader& reader)
{
    if (!reader.canRead())
        return QString("The file %1 is not a picture Bellavenor can read (BMP, JPEG, PNG, GIF or TIFF).")
            .arg(quoted(path));
    const QSize size = uprightSize(reader);
    if (qint64(size.width()) * size.height() > kMaxPhotoPixels)
        return QString("The picture %1 is %2 × %3 pixels; Bellavenor opens pictures of up to %4 megapixels.")
            .arg(quoted(path))
            .arg(size.width())
            .arg(size.height())
            .arg(kMaxPhotoPixels / 1'000'000);
    return {};
}

QString readWholeFile(const QString& path, QByteArray& bytes)
{
    QFile file(path);
    if (!file.exists())
        return QString("The file %1 does not exist.").arg(quoted(path));
    if (file.size() > kMaxFileBytes)
        return QString("The file %1 is larger than 1 GB.").arg(quoted(path));
    if (!file.open(QIODevice::ReadOnly))
        return QString("The file %1 could not be opened: %2.").arg(quoted(path), file.errorString());
    bytes = file.readAll();
    if (bytes.isEmpty())
        return QString("The file %1 is empty.").arg(quoted(path));
    return {};
}

} // namespace

DecodedPhoto decodePhoto(const QString& path)
{
    DecodedPhoto photo;
    QByteArray bytes;
    if (photo.error = readWholeFile(path, bytes); !photo.ok())
        return photo;

    MemoryReader file(bytes);
    if (photo.error = refusalBeforeDecoding(path, file.reader); !photo.ok())
        return photo;
    const QImage image = file.reader.read();
    if (image.isNull()) {
        photo.error = QString("The picture %1 could not be decoded: %2.").arg(quoted(path), file.reader.errorString());
        return photo;
    }
    photo.img_Basic = toPicture(image);
    photo.imgSize = largestSizeOverAllImages(bytes, image.size());
    return photo;
}
