#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QSize>
#include <QtEndian>

#include <optional>

// One page of a test TIFF: its pixels, and optionally a size its header
// claims instead of theirs (for files that lie about how large they are).
struct TiffPage {
    TiffPage(QImage pixels, std::optional<QSize> claimedSize = {})
        : pixels(std::move(pixels))
        , claimedSize(claimedSize)
    {
    }

    QImage pixels;
    std::optional<QSize> claimedSize;
};

// A little-endian baseline TIFF of uncompressed 8-bit RGB pages, chained in
// the given order. Qt writes one page per file, so multi-page fixtures are
// put together here.
inline QByteArray tiffOfPages(const QList<TiffPage>& pages)
{
    QByteArray file("II\x2a\0\0\0\0\0", 8);
    auto put16 = [&](QByteArray& bytes, quint16 v) { bytes.append(reinterpret_cast<const char*>(&v), 2); };
    auto put32 = [&](QByteArray& bytes, quint32 v) { bytes.append(reinterpret_cast<const char*>(&v), 4); };
    qsizetype linkAt = 4; // where the offset of the next page's directory goes
    for (const TiffPage& page : pages) {
        const QImage rgb = page.pixels.convertToFormat(QImage::Format_RGB888);
        const QSize size = page.claimedSize.value_or(rgb.size());
        const auto stripOffset = quint32(file.size());
        for (int y = 0; y < rgb.height(); ++y)
            file.append(reinterpret_cast<const char*>(rgb.constScanLine(y)), rgb.width() * 3);
        const auto bitsOffset = quint32(file.size());
        for (int i = 0; i < 3; ++i)
            put16(file, 8);
        if (file.size() % 2)
            file.append('\0');
        const auto directoryOffset = quint32(file.size());
        qToLittleEndian(directoryOffset, file.data() + linkAt);

        struct Entry {
            quint16 tag, type;
            quint32 count, value;
        };
        const quint16 kShort = 3, kLong = 4;
        const Entry entries[] = {
            {256, kLong, 1, quint32(size.width())},
            {257, kLong, 1, quint32(size.height())},
            {258, kShort, 3, bitsOffset},
            {259, kShort, 1, 1}, // no compression
            {262, kShort, 1, 2}, // RGB
            {273, kLong, 1, stripOffset},
            {277, kShort, 1, 3},
            {278, kLong, 1, quint32(size.height())},
            {279, kLong, 1, quint32(qint64(size.width()) * size.height() * 3)},
            {284, kShort, 1, 1}, // channels interleaved
        };
        put16(file, quint16(std::size(entries)));
        for (const Entry& e : entries) {
            put16(file, e.tag);
            put16(file, e.type);
            put32(file, e.count);
            put32(file, e.value); // a single short sits in the low bytes, little-endian
        }
        linkAt = file.size();
        put32(file, 0);
    }
    return file;
}
