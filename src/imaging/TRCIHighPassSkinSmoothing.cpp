#include "TRCIHighPassSkinSmoothing.h"

#include "GaussianBlur.h"
#include "PixelKernels.h"
#include "FilterPrimitives.h"
#include "SkinSmoothingKernels.h"

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace {

// The sharpen stage must stay light: it keeps hair and lashes crisp without
// bringing back the skin grain the blend just smoothed. A luminance blur of
// 2 lifts strands more than single-pixel grain, and one unit of sharpness
// adds a quarter of the detail. Chosen by measuring fine detail (mean
// |luma - its 3x3 mean|) on real cheeks and hair at levels 5 and 10, at the
// photo's size and enlarged: cheeks end at 76-92 % of their detail, hair at
// 93-99 %. (Radius 1 at full gain raised the cheeks' detail by 14-17 %.)
constexpr float kSharpenRadius = 2.0f;
constexpr float kSharpenGainPerUnit = 0.25f;

// One stop darker halves every channel before the overlay.
constexpr float kMaskExposureGain = 0.5f;

// The Gaussian blur of a one-byte plane over the opaque part of the picture
// only: each value weighs by its pixel's alpha, and the sum is divided by
// the blurred alpha. The holes of a cut-out picture (eyes, lips) then lend
// their neighbours no darkness, so no rim forms along them. Edge pixels
// repeat outward. Where no opaque pixel is in reach the value stays.
cv::Mat blurOverOpaque(const cv::Mat& values, const cv::Mat& alpha, float sigma)
{
    if (alpha.empty()) {
        cv::Mat blurred;
        gaussianBlur(values, blurred, sigma, cv::BORDER_REPLICATE);
        return blurred;
    }
    cv::Mat weighted, weights;
    cv::multiply(values, alpha, weighted, 1.0, CV_16U);
    alpha.convertTo(weights, CV_16U, 256.0);
    gaussianBlur(weighted, weighted, sigma, cv::BORDER_REPLICATE);
    gaussianBlur(weights, weights, sigma, cv::BORDER_REPLICATE);
    cv::Mat blurred(values.size(), CV_8UC1);
    parallelRows(values.rows, [&](int begin, int end) {
        for (int y = begin; y < end; ++y) {
            const auto* w = weighted.ptr<quint16>(y);
            const auto* a = weights.ptr<quint16>(y);
            const uchar* v = values.ptr<uchar>(y);
            uchar* out = blurred.ptr<uchar>(y);
            for (int x = 0; x < values.cols; ++x)
                out[x] = a[x] ? uchar(std::min(255, (int(w[x]) * 256 + a[x] / 2) / a[x])) : v[x];
        }
    });
    return blurred;
}

// The alpha plane of a picture, or none when every pixel is opaque.
cv::Mat alphaPlane(const QImage& picture)
{
    if (isOpaque(picture))
        return {};
    cv::Mat alpha;
    cv::extractChannel(matView(picture), alpha, 3);
    return alpha;
}

// The overlay of green over blue one stop darker, at twice its value, as a
// byte: the darker blue is never above one half, so the overlay is
// 2 (g / 2)(b / 2) and twice that uses a byte's whole range. For straight
// colour bytes that is g b / 255.
uchar doubledOverlay(const uchar* px)
{
    const UnitColour c = unpremultiplied(px);
    return toByte(2.0f * greenBlueOverlay(c.g * kMaskExposureGain, c.b * kMaskExposureGain));
}

BELLAVENOR_HOT_LOOP
void doubledOverlayOpaque(const quint32* __restrict in, uchar* __restrict out, qsizetype count)
{
    for (qsizetype i = 0; i < count; ++i) {
        const quint32 g = (in[i] >> 8) & 0xff, b = (in[i] >> 16) & 0xff;
        out[i] = uchar((g * b + 127) / 255);
    }
}

cv::Mat doubledOverlayOf(const QImage& picture)
{
    cv::Mat overlay(picture.height(), picture.width(), CV_8UC1);
    uchar* values = overlay.ptr<uchar>();
    const auto* pixels = reinterpret_cast<const quint32*>(picture.constBits());
    const qsizetype width = picture.width();
    parallelRows(picture.height(), [&](int begin, int end) {
        const qsizetype first = begin * width, count = (end - begin) * width;
        doubledOverlayOpaque(pixels + first, values + first, count);
        for (qsizetype i = first; i < first + count; ++i)
            if ((pixels[i] >> 24) != 255)
                values[i] = doubledOverlay(reinterpret_cast<const uchar*>(pixels + i));
    });
    return overlay;
}

// The boosted mask, 0 black to 255 white, from the doubled overlay and its
// blur.
inline int maskByte(int doubled, int doubledBlur)
{
    return toByte(boostedMask(highPass(float(doubled) / 510.0f, float(doubledBlur) / 510.0f)));
}

// The mask depends on nothing but the two bytes, so it is tabled once.
using MaskTable = std::array<uchar, 256 * 256>;

const MaskTable& maskTable()
{
    static const MaskTable table = [] {
        MaskTable t;
        for (int d = 0; d < 256; ++d)
            for (int blurred = 0; blurred < 256; ++blurred)
                t[size_t(d * 256 + blurred)] = uchar(maskByte(d, blurred));
        return t;
    }();
    return table;
}

cv::Mat maskOf(const cv::Mat& doubled, const cv::Mat& doubledBlur)
{
    const MaskTable& table = maskTable();
    cv::Mat mask(doubled.size(), CV_8UC1);
    const uchar* d = doubled.ptr<uchar>();
    const uchar* db = doubledBlur.ptr<uchar>();
    uchar* m = mask.ptr<uchar>();
    for (size_t i = 0; i < mask.total(); ++i)
        m[i] = table[size_t(d[i]) * 256 + db[i]];
    return mask;
}

inline int blendChannel(int original, int lifted, int mask)
{
    return (original * mask + lifted * (255 - mask) + 127) / 255;
}

inline quint32 luma709Byte(quint32 px)
{
    return ((px & 0xff) * 54 + ((px >> 8) & 0xff) * 183 + ((px >> 16) & 0xff) * 19 + 128) >> 8;
}

// The blend of opaque pixels; the others are redone afterwards.
void blendOpaque(const quint32* __restrict in, const uchar* __restrict d, const uchar* __restrict db,
                 const ToneCurveLookup& lift, quint32* __restrict out, uchar* __restrict luma, qsizetype count)
{
    const MaskTable& masks = maskTable();
    for (qsizetype i = 0; i < count; ++i) {
        const quint32 px = in[i];
        const int r = int(px & 0xff), g = int((px >> 8) & 0xff), b = int((px >> 16) & 0xff);
        const int m = masks[size_t(d[i]) * 256 + db[i]];
        const quint32 blended = quint32(blendChannel(r, lift.red[size_t(r)], m))
                                | quint32(blendChannel(g, lift.green[size_t(g)], m)) << 8
                                | quint32(blendChannel(b, lift.blue[size_t(b)], m)) << 16 | (px & 0xff000000u);
        out[i] = blended;
        luma[i] = uchar(luma709Byte(blended));
    }
}

// Blend of the picture and its tone-lifted copy through the mask: white
// keeps the original, black takes the lifted pixel. Also writes the blend's
// luminance (of straight colour), which sharpening works on.
void blendThroughMask(const QImage& input, const cv::Mat& doubled, const cv::Mat& doubledBlur,
                      const ToneCurveTexture& texture, float amount, QImage& out, cv::Mat& luma)
{
    const ToneCurveLookup lift(texture, amount);
    const uchar* d = doubled.ptr<uchar>();
    const uchar* db = doubledBlur.ptr<uchar>();
    uchar* y = luma.ptr<uchar>();
    mapRows(input, out, [&](const quint32* in, quint32* px, qsizetype count, qsizetype first) {
        blendOpaque(in, d + first, db + first, lift, px, y + first, count);
        for (qsizetype i = 0; i < count; ++i) {
            if ((in[i] >> 24) == 255)
                continue;
            const auto* original = reinterpret_cast<const uchar*>(in + i);
            auto* blended = reinterpret_cast<uchar*>(px + i);
            uchar lifted[4];
            applyToneCurve(original, lifted, texture, amount);
            const int m = maskByte(d[first + i], db[first + i]);
            for (int c = 0; c < 3; ++c)
                blended[c] = uchar(blendChannel(original[c], lifted[c], m));
            blended[3] = original[3];
            const UnitColour straight = unpremultiplied(blended);
            y[first + i] = toByte(luminance709(straight.r, straight.g, straight.b));
        }
    });
}

// Adds `gain` times the luminance detail (8 fractional bits) to every
// colour channel, premultiplied by the pixel's alpha and kept within it.
BELLAVENOR_HOT_LOOP
void sharpenRun(quint32* __restrict px, const uchar* __restrict y, const uchar* __restrict yb, int gain,
                qsizetype count)
{
    for (qsizetype i = 0; i < count; ++i) {
        const quint32 p = px[i];
        const int alpha = int(p >> 24);
        const int add = (gain * (int(y[i]) - int(yb[i])) * alpha / 255 + 128) >> 8;
        const auto channel = [&](int shift) { return quint32(std::clamp(int((p >> shift) & 0xff) + add, 0, alpha)); };
        px[i] = channel(0) | channel(8) << 8 | channel(16) << 16 | (p & 0xff000000u);
    }
}

// Sharpens brightness and leaves the colour as it was: the luminance detail
// is added to every channel alike. Transparent pixels take no part in the
// luminance blur.
void sharpenLuminance(QImage& picture, const cv::Mat& luma, const cv::Mat& alpha, float sharpness)
{
    const cv::Mat blurred = blurOverOpaque(luma, alpha, kSharpenRadius);
    const int fixedSharpness = int(std::lround(sharpness * kSharpenGainPerUnit * 256.0f));
    const uchar* y = luma.ptr<uchar>();
    const uchar* yb = blurred.ptr<uchar>();
    mapRows(picture, picture, [&](const quint32*, quint32* px, qsizetype count, qsizetype first) {
        sharpenRun(px, y + first, yb + first, fixedSharpness, count);
    });
}

} // namespace

QImage TRCIGreenBlueChannelOverlayBlend::outputImage()
{
    if (inputImage.isNull())
        return {};
    QImage result;
    mapPixels(inputImage, result, [](const uchar* in, uchar* out, qsizetype) {
        const UnitColour c = unpremultiplied(in);
        const float v = greenBlueOverlay(c.g, c.b);
        storePremultiplied(out, {v, v, v}, in[3]);
    });
    return result;
}

QImage TRCIHighPassSkinSmoothingMaskBoost::outputImage()
{
    if (inputImage.isNull())
        return {};
    QImage result;
    mapPixels(inputImage, result, [](const uchar* in, uchar* out, qsizetype) {
        const UnitColour c = unpremultiplied(in);
        storePremultiplied(out, {boostedMask(c.r), boostedMask(c.g), boostedMask(c.b)}, in[3]);
    });
    return result;
}

cv::Mat TRCIHighPassSkinSmoothingMaskGenerator::outputMask()
{
    if (inputImage.isNull())
        return {};
    const QImage input = toPicture(inputImage);
    const cv::Mat doubled = doubledOverlayOf(input);
    cv::Mat mask;
    maskOf(doubled, blurOverOpaque(doubled, alphaPlane(input), float(inputRadius)))
        .convertTo(mask, CV_32F, 1.0 / 255.0);
    return mask;
}

namespace {

QImage greyPicture(const cv::Mat& unitValues, const QImage& alphaFrom)
{
    QImage grey;
    const float* values = unitValues.ptr<float>();
    mapPixels(alphaFrom, grey, [&](const uchar* in, uchar* out, qsizetype k) {
        const float v = values[k / 4];
        storePremultiplied(out, {v, v, v}, in[3]);
    });
    return grey;
}

} // namespace

QImage TRCIHighPassSkinSmoothingMaskGenerator::outputImage()
{
    if (inputImage.isNull())
        return {};
    return greyPicture(outputMask(), toPicture(inputImage));
}

ControlPoints TRCIHighPassSkinSmoothing::defaultInputRGBCompositeControlPoints()
{
    return {{0, 0}, {120.0 / 255.0, 146.0 / 255.0}, {1, 1}};
}

void TRCIHighPassSkinSmoothing::setDefaults()
{
    inputAmount_.reset();
    inputRadius_.reset();
    inputSharpnessFactor_.reset();
    setInputToneCurveControlPoints({});
}

TRCIRGBToneCurve& TRCIHighPassSkinSmoothing::skinToneCurveFilter()
{
    if (!skinToneCurveFilter_) {
        skinToneCurveFilter_ = std::make_unique<TRCIRGBToneCurve>();
        skinToneCurveFilter_->setInputRGBCompositeControlPoints(defaultInputRGBCompositeControlPoints());
    }
    return *skinToneCurveFilter_;
}

const ControlPoints& TRCIHighPassSkinSmoothing::inputToneCurveControlPoints()
{
    return skinToneCurveFilter().inputRGBCompositeControlPoints();
}

void TRCIHighPassSkinSmoothing::setInputToneCurveControlPoints(const ControlPoints& points)
{
    skinToneCurveFilter().setInputRGBCompositeControlPoints(
        points.isEmpty() ? defaultInputRGBCompositeControlPoints() : points);
}

// The steps of the chain (mask, tone lift, blend through the mask, sharpen)
// run fused over one-byte mask planes instead of as separate full-colour
// pictures: the mask is grey, so one channel carries it.
QImage TRCIHighPassSkinSmoothing::outputImage()
{
    if (inputImage.isNull())
        return {};
    const QImage input = toPicture(inputImage);
    const float amount = float(inputAmount());
    const float sharpness = float(inputSharpnessFactor() * inputAmount());

    const cv::Mat alpha = alphaPlane(input);
    const cv::Mat doubled = doubledOverlayOf(input);
    const cv::Mat doubledBlur = blurOverOpaque(doubled, alpha, float(inputRadius()));
    const ToneCurveTexture& texture = skinToneCurveFilter().toneCurveTexture();

    QImage result;
    cv::Mat luma(input.height(), input.width(), CV_8UC1);
    blendThroughMask(input, doubled, doubledBlur, texture, amount, result, luma);
    if (sharpness > 0)
        sharpenLuminance(result, luma, alpha, sharpness);
    return result;
}

QImage trc_Face_Smooth(const QImage& face, std::uint64_t level, std::uint64_t radius)
{
    TRCIHighPassSkinSmoothing filter;
    filter.inputImage = face;
    filter.setInputAmount(float(double(level) / 10.0));
    filter.setInputRadius(float(radius));
    return filter.outputImage();
}
