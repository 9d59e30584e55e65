#include "FilterPrimitives.h"
#include "PixelKernels.h"

#include <opencv2/imgproc.hpp>

#include <array>
#include <cmath>

namespace {

// Saturation mixes with the luminance grey (0 grey, 1 unchanged), brightness
// is added, contrast scales about mid-grey; then the exposure multiplies by
// 2^ev. Values stay unclamped between the stages, as in a float pipeline,
// and are clamped once when stored.
struct ToneSettings {
    float saturation;
    float brightness;
    float contrast;
    float exposureEV;
};

inline UnitColour toned(UnitColour c, const ToneSettings& t, float exposureGain)
{
    const float y = luminance709(c.r, c.g, c.b);
    auto channel = [&](float v) {
        v = y + t.saturation * (v - y) + t.brightness;
        return ((v - 0.5f) * t.contrast + 0.5f) * exposureGain;
    };
    return {channel(c.r), channel(c.g), channel(c.b)};
}

// The tonal maths is linear in a channel and in the luminance before it is
// clamped: out = A (1 - s) Y + A s c + B, with A the contrast times the
// exposure gain and B what brightness and contrast shift. Opaque pixels take
// it in 16-bit fixed point, in a loop the compiler vectorises; the few
// others are then redone with the float formula in straight colour.
struct ToneCoefficients {
    int perLumaQuarter; // A (1 - s) per quarter level of luminance
    int perLevel;       // A s per level of the channel
    int offset;         // B, plus one half for rounding
};

ToneCoefficients toneCoefficients(const ToneSettings& t, float exposureGain)
{
    const double a = double(t.contrast) * exposureGain;
    const double b = ((double(t.brightness) - 0.5) * t.contrast + 0.5) * exposureGain;
    const double one = 65536.0;
    return {int(std::lround(one * 255.0 * a * (1 - t.saturation) / 1020.0)),
            int(std::lround(one * a * t.saturation)), int(std::lround(one * 255.0 * b + one / 2))};
}

// One run of opaque pixels. The loop vectorises; with AVX2 it does its
// 32-bit multiplies and clamps natively, so it is built for AVX2 as well as
// for the baseline and the processor picks at run time.
BELLAVENOR_HOT_LOOP
void toneMapOpaque(const quint32* __restrict in, quint32* __restrict out, qsizetype count, ToneCoefficients k)
{
    for (qsizetype i = 0; i < count; ++i) {
        const quint32 px = in[i];
        const int r = int(px & 0xff), g = int((px >> 8) & 0xff), b = int((px >> 16) & 0xff);
        const int base = k.perLumaQuarter * luma709Quarters(r, g, b) + k.offset;
        const auto level = [&](int c) { return quint32(std::clamp((base + k.perLevel * c) >> 16, 0, 255)); };
        out[i] = level(r) | level(g) << 8 | level(b) << 16 | (px & 0xff000000u);
    }
}

void toneMap(const QImage& src, QImage& dst, const ToneSettings& t)
{
    const float gain = std::exp2(t.exposureEV);
    const ToneCoefficients k = toneCoefficients(t, gain);
    // The opaque pass overwrites colour, so in place the input is kept aside.
    const QImage input = &src == &dst ? copied(src) : src;
    mapRows(input, dst, [&](const quint32* in, quint32* out, qsizetype count, qsizetype) {
        toneMapOpaque(in, out, count, k);
        for (qsizetype i = 0; i < count; ++i) {
            const quint32 alpha = in[i] >> 24;
            if (alpha != 255)
                storePremultiplied(reinterpret_cast<uchar*>(out + i),
                                   toned(unpremultiplied(reinterpret_cast<const uchar*>(in + i)), t, gain), uchar(alpha));
        }
    });
}

// The constants of the tonal conversions, as single-precision values.
constexpr ToneSettings kBlackAndWhite{0.0f, 0.0f, 1.1f, 0.7f};
constexpr ToneSettings kWhitenTeeth{0.5f, 0.0f, 1.1f, 0.7f};
constexpr float kEdgeIntensity = 100.0f;

// Straight colour channels as floats in 0..1, and back.
cv::Mat unitColour(const QImage& picture)
{
    cv::Mat rgba;
    matView(picture).convertTo(rgba, CV_32FC4, 1.0 / 255.0);
    return rgba;
}



QImage toneMapped(const QImage& image, const ToneSettings& t)
{
    QImage result;
    toneMap(image, result, t);
    return result;
}

} // namespace

void imageBlackAndWhite(const QImage& src, QImage& dst) { toneMap(src, dst, kBlackAndWhite); }
QImage imageBlackAndWhite(const QImage& image) { return toneMapped(image, kBlackAndWhite); }
void Whiten_Teeth(const QImage& src, QImage& dst) { toneMap(src, dst, kWhitenTeeth); }
QImage Whiten_Teeth(const QImage& image) { return toneMapped(image, kWhitenTeeth); }

QImage imageEdges(const QImage& image)
{
    if (image.isNull())
        return {};
    // Invert the straight colour, keeping alpha.
    QImage inverted;
    mapPixels(image, inverted, [](const uchar* in, uchar* out, qsizetype) {
        const UnitColour c = unpremultiplied(in);
        storePremultiplied(out, {1 - c.r, 1 - c.g, 1 - c.b}, in[3]);
    });
    // Edge magnitude per channel: Sobel gradients, scaled so that a full step
    // between neighbours measures 1 before the intensity.
    const cv::Mat colour = unitColour(inverted);
    cv::Mat dx, dy, magnitude;
    cv::Sobel(colour, dx, CV_32F, 1, 0, 3, 0.25, 0, cv::BORDER_REPLICATE);
    cv::Sobel(colour, dy, CV_32F, 0, 1, 3, 0.25, 0, cv::BORDER_REPLICATE);
    cv::magnitude(dx.reshape(1), dy.reshape(1), magnitude);
    magnitude = magnitude.reshape(4) * kEdgeIntensity;

    QImage edges;
    const float gain = std::exp2(kBlackAndWhite.exposureEV);
    mapPixels(inverted, edges, [&](const uchar* in, uchar* out, qsizetype k) {
        const cv::Vec4f e = magnitude.ptr<cv::Vec4f>()[k / 4];
        const UnitColour grey = toned({e[0], e[1], e[2]}, kBlackAndWhite, gain);
        auto inverse = [](float v) { return 1.0f - std::clamp(v, 0.0f, 1.0f); };
        storePremultiplied(out, {inverse(grey.r), inverse(grey.g), inverse(grey.b)}, in[3]);
    });
    return edges;
}

QImage Subtract_Image(const QImage& first, const QImage& second)
{
    const QImage a = toPicture(first), b = toPicture(second);
    QImage result = makePicture(a.size().expandedTo(b.size()));
    const int width = result.width(), height = result.height();
    for (int y = 0; y < height; ++y) {
        uchar* out = result.scanLine(y);
        for (int x = 0; x < width; ++x, out += 4) {
            const bool inA = a.rect().contains(x, y), inB = b.rect().contains(x, y);
            const uchar* pa = inA ? a.constScanLine(y) + 4 * x : nullptr;
            const uchar* pb = inB ? b.constScanLine(y) + 4 * x : nullptr;
            for (int c = 0; c < 3; ++c)
                out[c] = uchar(std::max(0, (pb ? pb[c] : 0) - (pa ? pa[c] : 0)));
            const int alphaA = pa ? pa[3] : 0, alphaB = pb ? pb[3] : 0;
            out[3] = uchar(alphaA + alphaB - (alphaA * alphaB + 127) / 255);
            for (int c = 0; c < 3; ++c)
                out[c] = std::min(out[c], out[3]);
        }
    }
    return result;
}
