#include "TRCIHighPassSkinSmoothing.h"

#include "Contract.h"
#include "FastPaths.h"
#include "GaussianBlur.h"
#include "PixelKernels.h"
#include "SkinBlend.h"
#include "FilterPrimitives.h"
#include "SkinSmoothingKernels.h"

#include <opencv2/imgproc.hpp>

#if defined(__x86_64__) && defined(__GNUC__)
#include <immintrin.h>
#endif

#include <climits>
#include <cstdint>
#include <cmath>
#include <memory>
#include <mutex>

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

// Rows smoothed at a time at most: few enough that the band's planes stay a
// few tens of megabytes, enough that the rows its blur reads around it (a
// dozen each side) add little. Every picture is cut at least once, so the
// cut is always in use.
constexpr int kBandRows = 1024;

// One stop darker halves every channel before the overlay.
constexpr float kMaskExposureGain = 0.5f;

// The alpha bytes of a row, and the alpha bits all of them have set: 255
// only when the row is opaque.
BELLAVENOR_HOT_LOOP
uchar alphaOfRow(const quint32* __restrict row, uchar* __restrict alpha, int width)
{
    uchar all = 255;
    for (int x = 0; x < width; ++x) {
        alpha[x] = uchar(row[x] >> 24);
        all &= alpha[x];
    }
    return all;
}

// The bounding box of the translucent pixels, merged from rows and parts.
struct TranslucentBounds {
    int top = INT_MAX, bottom = -1, left = INT_MAX, right = -1;

    // Adds row y, which has a translucent pixel; returns its span.
    std::pair<int, int> addRow(int y, const uchar* alpha, int width)
    {
        int from = 0, to = width - 1;
        while (alpha[from] == 255)
            ++from;
        while (alpha[to] == 255)
            --to;
        top = std::min(top, y);
        bottom = std::max(bottom, y);
        left = std::min(left, from);
        right = std::max(right, to);
        return {from, to};
    }

    void merge(const TranslucentBounds& part)
    {
        top = std::min(top, part.top);
        bottom = std::max(bottom, part.bottom);
        left = std::min(left, part.left);
        right = std::max(right, part.right);
    }

    cv::Rect rect() const { return bottom < 0 ? cv::Rect() : cv::Rect(left, top, right - left + 1, bottom - top + 1); }
};

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

// The boosted mask, 0 black to 255 white, from the doubled overlay and its
// blur.
inline int maskByte(int doubled, int doubledBlur)
{
    return toByte(boostedMask(highPass(float(doubled) / 510.0f, float(doubledBlur) / 510.0f)));
}

// The mask depends on nothing but the difference of the two bytes (the
// high pass is their difference plus one half, and every pair with one
// difference gives one float there), so it is tabled once by difference.
using MaskTable = std::array<uchar, 511>;

const MaskTable& maskTable()
{
    static const MaskTable table = [] {
        MaskTable t;
        for (int d = 0; d < 256; ++d)
            for (int blurred = 0; blurred < 256; ++blurred) {
                const uchar value = uchar(maskByte(d, blurred));
                BELLAVENOR_CHECK(d == 0 || blurred == 0 || t[size_t(d - blurred + 255)] == value,
                                 "mask " << d << ", " << blurred << " differs from its difference's");
                t[size_t(d - blurred + 255)] = value;
            }
        return t;
    }();
    return table;
}

void maskRowsScalar(const uchar* __restrict d, const uchar* __restrict db, const uchar* __restrict table,
                    uchar* __restrict m, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        m[i] = table[255 + int(d[i]) - int(db[i])];
}

#if defined(__x86_64__) && defined(__GNUC__)
// Eight lookups a gather: no library looks a table up by a difference.
__attribute__((target("avx2"))) void maskRowsAvx2(const uchar* d, const uchar* db, const std::int32_t* table,
                                                   uchar* m, size_t count)
{
    const __m256i lowBytes = _mm256_setr_epi8(0, 4, 8, 12, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, 0, 4, 8,
                                              12, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1);
    size_t i = 0;
    for (; i + 8 <= count; i += 8) {
        const __m256i values = _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(d + i)));
        const __m256i blurred = _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(db + i)));
        const __m256i masks = _mm256_i32gather_epi32(table + 255, _mm256_sub_epi32(values, blurred), 4);
        const __m256i bytes = _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(masks, lowBytes),
                                                          _mm256_setr_epi32(0, 4, 1, 1, 1, 1, 1, 1));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(m + i), _mm256_castsi256_si128(bytes));
    }
    for (; i < count; ++i)
        m[i] = uchar(table[255 + int(d[i]) - int(db[i])]);
}
#endif

void maskOf(const cv::Mat& doubled, const cv::Mat& doubledBlur, cv::Mat& mask)
{
    const MaskTable& table = maskTable();
    static const std::array<std::int32_t, 511> wide = [&] {
        std::array<std::int32_t, 511> w;
        std::copy(table.begin(), table.end(), w.begin());
        return w;
    }();
    mask.create(doubled.size(), CV_8UC1);
    const size_t width = size_t(doubled.cols);
    parallelRows(doubled.rows, [&](int begin, int end) {
        const size_t first = size_t(begin) * width, count = size_t(end - begin) * width;
        const uchar* d = doubled.ptr<uchar>() + first;
        const uchar* db = doubledBlur.ptr<uchar>() + first;
        uchar* m = mask.ptr<uchar>() + first;
#if defined(__x86_64__) && defined(__GNUC__)
        if (fastPaths() && __builtin_cpu_supports("avx2")) {
            maskRowsAvx2(d, db, wide.data(), m, count);
            return;
        }
#endif
        maskRowsScalar(d, db, table.data(), m, count);
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
    const SkinSmoothingPlanes planes = SkinSmoothingPlanes::of(toPicture(inputImage));
    cv::Mat mask;
    skinMask(planes, float(inputRadius), mask);
    mask.convertTo(mask, CV_32F, 1.0 / 255.0);
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
    const SkinSmoothingPlanes planes = SkinSmoothingPlanes::of(input);
    SkinSmoothingScratch scratch;
    QImage result;
    cv::Mat mask;
    skinMask(planes, float(inputRadius()), mask);
    smoothSkin(input, mask, planes, float(inputAmount()),
               float(inputSharpnessFactor() * inputAmount()), skinToneCurveFilter().toneCurveTexture(), scratch,
               nullptr, result);
    return result;
}

// One pass, row by row while the row is in cache: the alpha bytes, the
// translucent span and the doubled overlay.
SkinSmoothingPlanes SkinSmoothingPlanes::of(const PatchedPicture& picture)
{
    const int width = picture.width();
    SkinSmoothingPlanes planes;
    planes.doubled.create(picture.height(), width, CV_8UC1);
    TranslucentBounds holes;
    std::mutex merging;
    parallelRows(picture.height(), [&](int begin, int end) {
        TranslucentBounds part;
        std::vector<quint32> patched;
        std::vector<uchar> alpha(static_cast<size_t>(width));
        for (int y = begin; y < end; ++y) {
            const quint32* row = picture.row(y, patched);
            uchar* doubled = planes.doubled.ptr<uchar>(y);
            doubledOverlayOpaque(row, doubled, width);
            if (alphaOfRow(row, alpha.data(), width) == 255)
                continue;
            const auto [from, to] = part.addRow(y, alpha.data(), width);
            for (int x = from; x <= to; ++x)
                if (alpha[size_t(x)] != 255)
                    doubled[x] = doubledOverlay(reinterpret_cast<const uchar*>(row + x));
        }
        const std::lock_guard lock(merging);
        holes.merge(part);
    });
    // Only the holes' alpha is kept: everywhere else it is 255.
    planes.holes = holes.rect();
    if (!planes.holes.empty()) {
        planes.alpha.create(planes.holes.size(), CV_8UC1);
        for (int y = 0; y < planes.holes.height; ++y)
            for (int x = 0; x < planes.holes.width; ++x)
                planes.alpha.at<uchar>(y, x) = uchar(picture.pixel(planes.holes.x + x, planes.holes.y + y) >> 24);
    }
    return planes;
}

void skinMask(const SkinSmoothingPlanes& planes, float radius, cv::Mat& mask)
{
    cv::Mat blurred;
    gaussianBlurOverOpaque(planes.doubled, planes.alpha, planes.holes, blurred, radius);
    maskOf(planes.doubled, blurred, mask);
}

void smoothSkin(const PatchedPicture& picture, const cv::Mat& mask, const SkinSmoothingPlanes& planes, float amount,
                float sharpness, const ToneCurveTexture& texture, SkinSmoothingScratch& scratch, const QImage* under,
                QImage& out, QImage* also, float photoPixelsPerPixel)
{
    // Band by band, two passes: the blend's luminance, blurred; then the
    // blend made again, sharpened and laid over `under`. A band's luminance
    // covers the rows its blur reads around it, weighing near the holes
    // included, so each band gives what the whole picture at once would,
    // and the two planes are never held for the whole picture (an eighth of
    // a gigabyte at 64 megapixels).
    const SkinBlend blend(picture, planes.holes, mask, texture, amount);
    const int width = picture.width(), height = picture.height();
    const int gain = sharpness > 0 ? int(std::lround(sharpness * kSharpenGainPerUnit * 256.0f)) : 0;
    const float sharpenRadius = kSharpenRadius / photoPixelsPerPixel;
    const int margin = gain ? 2 * gaussianSupport(sharpenRadius) + gaussianCell(sharpenRadius) : 0;
    ensurePicture(out, picture.size());
    if (also)
        ensurePicture(*also, picture.size());
    const int bands = std::max(2, (height + kBandRows - 1) / kBandRows);
    const int bandRows = std::max(1, (height + bands - 1) / bands);
    for (int top = 0; top < height; top += bandRows) {
        const int bottom = std::min(height, top + bandRows);
        const int from = std::max(0, top - margin), to = std::min(height, bottom + margin);
        const SkinBlend band = blend.fromRow(from);
        scratch.luma.create(to - from, width, CV_8UC1);
        uchar* luma = scratch.luma.ptr<uchar>();
        parallelRows(to - from, [&](int begin, int end) {
            band.luminance(qsizetype(begin) * width, qsizetype(end - begin) * width, luma);
        });
        if (gain)
            gaussianBlurOverOpaque(scratch.luma, planes.alpha, planes.holes - cv::Point(0, from), scratch.lumaBlur,
                                   sharpenRadius);
        const uchar* lumaBlur = gain ? scratch.lumaBlur.ptr<uchar>() : luma;
        const auto* below = under ? reinterpret_cast<const quint32*>(under->constScanLine(from)) : nullptr;
        auto* result = reinterpret_cast<quint32*>(out.scanLine(top));
        auto* copy = also ? reinterpret_cast<quint32*>(also->scanLine(top)) : nullptr;
        const qsizetype first = qsizetype(top - from) * width;
        parallelRows(bottom - top, [&](int begin, int end) {
            const qsizetype at = qsizetype(begin) * width;
            band.sharpened(luma, lumaBlur, gain, below, first + at, qsizetype(end - begin) * width, result + at,
                           copy ? copy + at : nullptr);
        });
    }
}

const ToneCurveTexture& defaultSkinToneTexture()
{
    static const ToneCurveTexture texture = [] {
        TRCIHighPassSkinSmoothing defaults;
        return defaults.skinToneCurveFilter().toneCurveTexture();
    }();
    return texture;
}

SkinSmoothingAmounts skinSmoothingAmounts(std::uint64_t level, std::uint64_t radius)
{
    const double amount = float(double(level) / 10.0);
    return {float(amount), float(TRCIHighPassSkinSmoothing::kDefaultSharpnessFactor * amount), float(radius)};
}

QImage trc_Face_Smooth(const QImage& face, std::uint64_t level, std::uint64_t radius)
{
    const SkinSmoothingAmounts settings = skinSmoothingAmounts(level, radius);
    TRCIHighPassSkinSmoothing filter;
    filter.inputImage = face;
    filter.setInputAmount(settings.amount);
    filter.setInputRadius(settings.radius);
    return filter.outputImage();
}
