// libFuzzer target: arbitrary bytes as a photo's file and as the EXIF, XMP
// and IPTC blobs taken from one, copied into a small picture of every
// format Bellavenor writes. Nothing may crash, hang or leak; a picture
// whose metadata could not be written stays as it was.
#include "PhotoMetadata.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImage>
#include <QImageWriter>

#include <cstdint>
#include <cstdlib>

namespace {

QList<QByteArray> smallPictures()
{
    QImage picture(16, 16, QImage::Format_RGB888);
    picture.fill(Qt::darkCyan);
    QList<QByteArray> encoded;
    for (const char* format : {"png", "jpeg", "tiff", "webp"}) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QImageWriter(&buffer, format).write(picture);
        encoded << buffer.data();
    }
    return encoded;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static QCoreApplication application(*argc, *argv); // image plugins are found through it
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const QList<QByteArray> pictures = smallPictures();
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    QStringList warnings;
    const PhotoMetadata read = readMetadata(bytes, warnings);
    PhotoMetadata raw;
    (size % 3 == 0 ? raw.exif : size % 3 == 1 ? raw.xmp : raw.iptc) = bytes;
    for (const PhotoMetadata& metadata : {read, raw})
        for (const QByteArray& picture : pictures) {
            QByteArray written = picture;
            if (!embedMetadata(written, metadata).isEmpty() && written != picture)
                std::abort();
        }
    return 0;
}
