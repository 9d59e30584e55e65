#pragma once

// Per-pixel building blocks shared by the hand-written filters. OpenCV has
// no fused equivalents for these colour formulas, so they are written here
// once and used by every filter that needs them.

#include "Contract.h"
#include "Picture.h"

#include <QImage>

#include <opencv2/core.hpp>

#include <algorithm>
#include <cmath>

// Marks a function holding a hot pixel loop: built for AVX2 and for the
// baseline processor, the better one chosen when the program starts (not
// under ThreadSanitizer, whose instrumentation breaks the choosing).
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_THREAD__)
#define BELLAVENOR_HOT_LOOP __attribute__((target_clones("avx2", "default")))
#else
#define BELLAVENOR_HOT_LOOP
#endif

// Rec. 709 luminance of gamma-encoded colour, as stored: no linearisation.
inline constexpr float kLumaRed = 0.2126f;
inline constexpr float kLumaGreen = 0.7152f;
inline constexpr float kLumaBlue = 0.0722f;

inline float luminance709(float r, float g, float b)
{
    return kLumaRed * r + kLumaGreen * g + kLumaBlue * b;
}

// Rec. 709 luminance of straight colour bytes, times four (0..1020), in
// fixed point: 12-bit weights summing to 4 × 4096.
inline int luma709Quarters(int r, int g, int b)
{
    return (r * 3483 + g * 11718 + b * 1183 + 2048) >> 12;
}

inline uchar toByte(float unit)
{
    return uchar(std::clamp(unit, 0.0f, 1.0f) * 255.0f + 0.5f);
}

// A colour with components in 0..1, not premultiplied.
struct UnitColour {
    float r, g, b;
};

// Reads a premultiplied RGBA pixel as straight colour; a transparent pixel
// reads as black.
inline UnitColour unpremultiplied(const uchar* px)
{
    const uchar a = px[3];
    if (a == 255)
        return {px[0] / 255.0f, px[1] / 255.0f, px[2] / 255.0f};
    if (a == 0)
        return {0, 0, 0};
    const float scale = 1.0f / a;
    return {px[0] * scale, px[1] * scale, px[2] * scale};
}

// Clamps straight colour to 0..1 and writes it premultiplied by `alpha`.
inline void storePremultiplied(uchar* px, UnitColour c, uchar alpha)
{
    const float a = alpha / 255.0f;
    px[0] = toByte(std::clamp(c.r, 0.0f, 1.0f) * a);
    px[1] = toByte(std::clamp(c.g, 0.0f, 1.0f) * a);
    px[2] = toByte(std::clamp(c.b, 0.0f, 1.0f) * a);
    px[3] = alpha;
}

// OpenCV views of picture memory: no copies.
inline cv::Mat matView(QImage& picture)
{
    return {picture.height(), picture.width(), CV_8UC4, picture.bits(), size_t(picture.bytesPerLine())};
}

inline cv::Mat matView(const QImage& picture)
{
    return {picture.height(), picture.width(), CV_8UC4, const_cast<uchar*>(picture.constBits()),
            size_t(picture.bytesPerLine())};
}

// Runs fn(firstRow, endRow) over stripes of `rows` rows on every core.
// Requires: fn writes only its own rows.
template <typename RowsFn>
void parallelRows(int rows, RowsFn&& fn)
{
    cv::parallel_for_(cv::Range(0, rows), [&](const cv::Range& range) { fn(range.start, range.end); });
}

// Runs fn(in, out, count, first) over the rows of `src` and `dst` (made the
// same size; it may be `src` itself, which is then changed in place), on
// every core: `in` and `out` point at `count` pixels as 32-bit words, the
// first of which is pixel number `first` of the picture.
// Requires: pictures without row padding (every picture form has none).
// Ensures: dst premultiplied RGBA of src's size.
template <typename RowFn>
void mapRows(const QImage& src, QImage& dst, RowFn&& fn)
{
    QImage converted;
    const QImage* input = &src;
    if (src.format() != kPictureFormat) {
        converted = toPicture(src);
        input = &converted;
    }
    if (&src != &dst)
        ensurePicture(dst, input->size());
    else if (input == &converted)
        dst = converted;
    BELLAVENOR_CHECK(dst.size() == input->size() && dst.bytesPerLine() == 4 * dst.width()
                         && input->bytesPerLine() == 4 * input->width(),
                     "src " << input->size() << " (" << input->bytesPerLine() << " bytes a row), dst " << dst.size()
                            << " (" << dst.bytesPerLine() << ")");
    auto* outBase = reinterpret_cast<quint32*>(dst.bits()); // first: in place both read the same memory
    const auto* inBase = reinterpret_cast<const quint32*>(input->constBits());
    const qsizetype width = dst.width();
    parallelRows(dst.height(), [&](int begin, int end) {
        const qsizetype first = begin * width;
        fn(inBase + first, outBase + first, (end - begin) * width, first);
    });
}

// Runs fn(in, out, k) over every pixel of `src` into `dst`, as mapRows does.
// `in` and `out` point at the four bytes R, G, B, A of the same pixel; k is
// its byte offset, which names the same pixel in every picture of that size,
// so a loop may read further pictures at k.
template <typename PixelFn>
void mapPixels(const QImage& src, QImage& dst, PixelFn&& fn)
{
    mapRows(src, dst, [&](const quint32* in, quint32* out, qsizetype count, qsizetype first) {
        const auto* inBytes = reinterpret_cast<const uchar*>(in);
        auto* outBytes = reinterpret_cast<uchar*>(out);
        for (qsizetype i = 0; i < count; ++i)
            fn(inBytes + 4 * i, outBytes + 4 * i, 4 * (first + i));
    });
}

// Runs fn(word, pixel number) -> word over every pixel of `src` into `dst` as 32-bit words
// (bytes R, G, B, A from the lowest address; on a little-endian machine R is
// the low byte). A loop of plain word operations vectorises, which the
// byte-wise marker loops need to stay near the speed of a copy.
template <typename WordFn>
void mapWords(const QImage& src, QImage& dst, WordFn&& fn)
{
    static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "word layout assumes R in the low byte");
    mapRows(src, dst, [&](const quint32* __restrict in, quint32* __restrict out, qsizetype count, qsizetype first) {
        for (qsizetype i = 0; i < count; ++i)
            out[i] = fn(in[i], first + i);
    });
}
