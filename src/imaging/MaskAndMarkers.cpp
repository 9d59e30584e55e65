#include "FilterPrimitives.h"

#include "Contract.h"
#include "PixelKernels.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <atomic>

namespace {

constexpr uchar kQualifies = 100;

// The mask's grey samples at the image's size, stretched without
// interpolation when the sizes differ.
cv::Mat maskSamples(const QImage& mask, QSize size)
{
    const QImage grey = mask.convertToFormat(QImage::Format_Grayscale8);
    const cv::Mat samples(grey.height(), grey.width(), CV_8UC1, const_cast<uchar*>(grey.constBits()),
                          size_t(grey.bytesPerLine()));
    cv::Mat stretched;
    if (grey.size() == size)
        samples.copyTo(stretched); // outlives `grey`
    else
        cv::resize(samples, stretched, cv::Size(size.width(), size.height()), 0, 0, cv::INTER_NEAREST);
    return stretched;
}

constexpr quint32 kColourBytes = 0x00ffffffu;
constexpr quint32 kAlphaByte = 0xff000000u;
constexpr quint32 kMarkerGreen = 0x0000ff00u; // R 0, G 255, B 0

} // namespace

QImage maskImage(const QImage& image, const QImage& mask)
{
    if (image.isNull() || mask.isNull())
        return {};
    const cv::Mat samples = maskSamples(mask, image.size());
    const uchar* kept = samples.ptr<uchar>();
    QImage result;
    // Every premultiplied byte scales by (255 - sample) / 255: the sample is
    // the share taken away.
    mapPixels(image, result, [&](const uchar* in, uchar* out, qsizetype k) {
        const int keep = 255 - kept[k / 4];
        for (int c = 0; c < 4; ++c)
            out[c] = uchar((in[c] * keep + 127) / 255);
    });
    return result;
}

void imageReplaceWhiteWithTransparent(const QImage& src, QImage& dst)
{
    mapWords(src, dst, [](quint32 px, qsizetype) {
        const bool bright = (px & 0xff) >= kQualifies && ((px >> 16) & 0xff) >= kQualifies
                            && ((px >> 8) & 0xff) >= kQualifies;
        return bright ? (px & kAlphaByte) | kMarkerGreen : px;
    });
}

QImage imageReplaceWhiteWithTransparent(const QImage& image)
{
    QImage result;
    imageReplaceWhiteWithTransparent(image, result);
    return result;
}

void imageReplaceGreenWithOriginal(const QImage& marker, const QImage& base, const QImage& source, QImage& dst)
{
    if (base.isNull())
        return;
    const QImage markers = toPicture(marker), colours = toPicture(source);
    BELLAVENOR_CHECK(markers.size() == base.size() && colours.size() == base.size(),
                     "marker " << marker.size() << ", base " << base.size() << ", source " << source.size());
    if (markers.size() != base.size() || colours.size() != base.size())
        return;
    const auto* markerWords = reinterpret_cast<const quint32*>(markers.constBits());
    const auto* sourceWords = reinterpret_cast<const quint32*>(colours.constBits());
    mapWords(base, dst, [&](quint32 px, qsizetype i) {
        const bool marked = (markerWords[i] & kColourBytes) == kMarkerGreen;
        return marked ? (sourceWords[i] & kColourBytes) | (px & kAlphaByte) : px;
    });
}

QImage imageReplaceGreenWithOriginal(const QImage& marker, const QImage& base, const QImage& source)
{
    QImage result;
    imageReplaceGreenWithOriginal(marker, base, source, result);
    return result;
}

namespace {

BELLAVENOR_HOT_LOOP
void drawOverRun(const quint32* __restrict src, quint32* __restrict dst, qsizetype count)
{
    for (qsizetype i = 0; i < count; ++i) {
        const quint32 s = src[i], d = dst[i];
        const quint32 keep = 255 - (s >> 24);
        quint32 out = 0;
        for (int shift = 0; shift < 32; shift += 8) {
            const quint32 channel = ((s >> shift) & 0xff) + (((d >> shift) & 0xff) * keep + 127) / 255;
            out |= std::min<quint32>(channel, 255) << shift;
        }
        dst[i] = out;
    }
}

// The alpha bits every pixel has set: 255 only when all are opaque.
BELLAVENOR_HOT_LOOP
quint32 alphaOfAll(const quint32* __restrict words, qsizetype count)
{
    quint32 all = 0xff000000u;
    for (qsizetype i = 0; i < count; ++i)
        all &= words[i];
    return all >> 24;
}

} // namespace

void drawOver(QImage& dst, const QImage& src)
{
    const QImage over = toPicture(src);
    BELLAVENOR_CHECK(over.size() == dst.size() && dst.format() == kPictureFormat && over.constBits() != dst.constBits(),
                     "src " << src.size() << ", dst " << dst.size() << " in format " << dst.format());
    if (over.size() != dst.size() || dst.format() != kPictureFormat)
        return;
    const auto* from = reinterpret_cast<const quint32*>(over.constBits());
    mapRows(dst, dst, [&](const quint32*, quint32* out, qsizetype count, qsizetype first) {
        drawOverRun(from + first, out, count);
    });
}

bool isOpaque(const QImage& picture)
{
    const QImage p = toPicture(picture);
    std::atomic<bool> opaque = true;
    parallelRows(p.height(), [&](int begin, int end) {
        const auto* words = reinterpret_cast<const quint32*>(p.constScanLine(begin));
        if (begin < end && alphaOfAll(words, qsizetype(end - begin) * p.width()) != 255)
            opaque = false;
    });
    return opaque;
}
