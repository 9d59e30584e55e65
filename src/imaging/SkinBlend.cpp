#include "SkinBlend.h"

#include "FastPaths.h"
#include "PixelKernels.h"

#include <algorithm>

#if defined(__x86_64__) && defined(__GNUC__)
#include <immintrin.h>
#define BELLAVENOR_HAVE_AVX2_KERNELS 1
#endif

namespace {

inline int blendChannel(int original, int lifted, int mask)
{
    return (original * mask + lifted * (255 - mask) + 127) / 255;
}

inline quint32 luma709Byte(quint32 px)
{
    return ((px & 0xff) * 54 + ((px >> 8) & 0xff) * 183 + ((px >> 16) & 0xff) * 19 + 128) >> 8;
}

// Adds `gain` times the luminance detail (8 fractional bits) to every
// colour channel, premultiplied by the pixel's alpha and kept within it.
inline quint32 sharpenedPixel(quint32 p, int y, int yb, int gain)
{
    const int alpha = int(p >> 24);
    const int add = (gain * (y - yb) * alpha / 255 + 128) >> 8;
    const auto channel = [&](int shift) { return quint32(std::clamp(int((p >> shift) & 0xff) + add, 0, alpha)); };
    return channel(0) | channel(8) << 8 | channel(16) << 16 | (p & 0xff000000u);
}

// The source-over of drawOver, for one pixel.
inline quint32 over(quint32 s, quint32 d)
{
    const quint32 keep = 255 - (s >> 24);
    quint32 out = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const quint32 channel = ((s >> shift) & 0xff) + (((d >> shift) & 0xff) * keep + 127) / 255;
        out |= std::min<quint32>(channel, 255) << shift;
    }
    return out;
}

} // namespace

// For an opaque channel value v with lifted value L through mask m the blend
// is (v m + L (255 - m) + 127) / 255. A table of 256 × 256 per channel holds
// it (one table when the curve lifts all channels alike). When the lift
// never darkens, D = L - v ≥ 0 and the blend is v + (D (255 - m) + 127) / 255,
// which the vector kernels compute from D alone.
struct SkinBlend::Tables {
    std::array<std::array<uchar, 256 * 256>, 3> blend;
    const uchar* red;
    const uchar* green;
    const uchar* blue;
    std::array<std::array<std::int32_t, 256>, 3> lift;
    bool vectors;

    explicit Tables(const ToneCurveLookup& lifted)
    {
        const std::array<const std::array<uchar, 256>*, 3> curves{&lifted.red, &lifted.green, &lifted.blue};
        const bool shared = lifted.red == lifted.green && lifted.green == lifted.blue;
        bool neverDarker = true;
        for (size_t c = 0; c < 3; ++c)
            for (int v = 0; v < 256; ++v) {
                lift[c][size_t(v)] = (*curves[c])[size_t(v)] - v;
                neverDarker = neverDarker && lift[c][size_t(v)] >= 0;
            }
        for (size_t c = 0; c < (shared ? 1 : 3); ++c)
            for (int m = 0; m < 256; ++m)
                for (int v = 0; v < 256; ++v)
                    blend[c][size_t(m * 256 + v)] = uchar(blendChannel(v, (*curves[c])[size_t(v)], m));
        red = blend[0].data();
        green = blend[shared ? 0 : 1].data();
        blue = blend[shared ? 0 : 2].data();
#ifdef BELLAVENOR_HAVE_AVX2_KERNELS
        vectors = neverDarker && fastPaths() && __builtin_cpu_supports("avx2");
#else
        vectors = false;
#endif
    }

    quint32 blended(quint32 px, int m) const
    {
        const size_t row = size_t(m) * 256;
        return quint32(red[row + (px & 0xff)]) | quint32(green[row + ((px >> 8) & 0xff)]) << 8
               | quint32(blue[row + ((px >> 16) & 0xff)]) << 16 | (px & 0xff000000u);
    }
};

namespace {

void luminanceScalar(const quint32* __restrict pixels, const uchar* __restrict mask, const SkinBlend::Tables& t,
                     qsizetype first, qsizetype end, uchar* __restrict luma);

} // namespace

#ifdef BELLAVENOR_HAVE_AVX2_KERNELS
namespace {

// Sixteen opaque pixels blended, one channel a 16-bit lane: each channel c
// becomes c + (D[c] (255 - m) + 127) / 255, which stays below 65536 before
// the division, done exactly as (x × 0x8081) >> 23.
//
// The lanes hold the pixels in the order two 8-pixel halves pack into:
// 0-3, 8-11 in the low 128 bits, 4-7, 12-15 in the high ones. Unpacking
// two such vectors low and high gives pixels 0-7 and 8-15 in order.
struct SixteenBlended {
    __m256i red, green, blue, alpha;
};

// Eight bytes or eight 16-bit values in pixel order to the packed order.
__attribute__((target("avx2"))) inline __m256i packedOrder(__m256i natural)
{
    return _mm256_permute4x64_epi64(natural, 0xD8);
}

__attribute__((target("avx2"))) inline __m256i sixteenBytes(const uchar* bytes)
{
    return packedOrder(_mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes))));
}

__attribute__((target("avx2"))) inline __m256i blendChannel16(__m256i first, __m256i second, int shift, __m256i keep,
                                                               const std::int32_t* lift)
{
    const __m256i byte = _mm256_set1_epi32(0xff);
    const __m256i v0 = _mm256_and_si256(_mm256_srli_epi32(first, shift), byte);
    const __m256i v1 = _mm256_and_si256(_mm256_srli_epi32(second, shift), byte);
    const __m256i v = _mm256_packus_epi32(v0, v1);
    const __m256i d = _mm256_packus_epi32(_mm256_i32gather_epi32(lift, v0, 4), _mm256_i32gather_epi32(lift, v1, 4));
    const __m256i x = _mm256_add_epi16(_mm256_mullo_epi16(d, keep), _mm256_set1_epi16(127));
    return _mm256_add_epi16(v, _mm256_srli_epi16(_mm256_mulhi_epu16(x, _mm256_set1_epi16(short(0x8081))), 7));
}

__attribute__((target("avx2"))) inline SixteenBlended blendSixteen(const quint32* pixels, const uchar* mask,
                                                                    const SkinBlend::Tables& t)
{
    const __m256i first = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pixels));
    const __m256i second = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pixels + 8));
    const __m256i keep = _mm256_sub_epi16(_mm256_set1_epi16(255), sixteenBytes(mask));
    return {blendChannel16(first, second, 0, keep, t.lift[0].data()),
            blendChannel16(first, second, 8, keep, t.lift[1].data()),
            blendChannel16(first, second, 16, keep, t.lift[2].data()),
            _mm256_packus_epi32(_mm256_srli_epi32(first, 24), _mm256_srli_epi32(second, 24))};
}

__attribute__((target("avx2"))) void luminanceAvx2(const quint32* pixels, const uchar* mask,
                                                    const SkinBlend::Tables& t, qsizetype first, qsizetype end,
                                                    uchar* luma)
{
    // Bytes of the packed order: 0-3, 8-11 | 4-7, 12-15 (twice) to 0-15.
    const __m256i inOrder = _mm256_setr_epi32(0, 4, 1, 5, 0, 0, 0, 0);
    qsizetype i = first;
    for (; i + 16 <= end; i += 16) {
        const SixteenBlended b = blendSixteen(pixels + i, mask + i, t);
        __m256i y = _mm256_add_epi16(_mm256_mullo_epi16(b.red, _mm256_set1_epi16(54)),
                                     _mm256_mullo_epi16(b.green, _mm256_set1_epi16(183)));
        y = _mm256_add_epi16(y, _mm256_mullo_epi16(b.blue, _mm256_set1_epi16(19)));
        y = _mm256_srli_epi16(_mm256_add_epi16(y, _mm256_set1_epi16(128)), 8);
        y = _mm256_permutevar8x32_epi32(_mm256_packus_epi16(y, y), inOrder);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(luma + i), _mm256_castsi256_si128(y));
    }
    luminanceScalar(pixels, mask, t, i, end, luma);
}

__attribute__((target("avx2"))) inline __m256i addWithin(__m256i channel, __m256i add)
{
    return _mm256_min_epi16(_mm256_max_epi16(_mm256_add_epi16(channel, add), _mm256_setzero_si256()),
                            _mm256_set1_epi16(255));
}

// Requires gain below 128: the detail times the gain stays within 16 bits.
__attribute__((target("avx2"))) void sharpenedAvx2(const quint32* pixels, const uchar* mask, const SkinBlend::Tables& t,
                                                    const uchar* y, const uchar* yb, int gain, qsizetype first,
                                                    qsizetype end, quint32* out, quint32* also, qsizetype& done)
{
    qsizetype i = first;
    for (; i + 16 <= end; i += 16) {
        const SixteenBlended b = blendSixteen(pixels + i, mask + i, t);
        const __m256i detail = _mm256_sub_epi16(sixteenBytes(y + i), sixteenBytes(yb + i));
        const __m256i add = _mm256_srai_epi16(
            _mm256_add_epi16(_mm256_mullo_epi16(detail, _mm256_set1_epi16(short(gain))), _mm256_set1_epi16(128)), 8);
        const __m256i redGreen = _mm256_or_si256(addWithin(b.red, add), _mm256_slli_epi16(addWithin(b.green, add), 8));
        const __m256i blueAlpha = _mm256_or_si256(addWithin(b.blue, add), _mm256_slli_epi16(b.alpha, 8));
        const __m256i low = _mm256_unpacklo_epi16(redGreen, blueAlpha), high = _mm256_unpackhi_epi16(redGreen, blueAlpha);
        quint32* to = out + (i - first);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), low);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to + 8), high);
        if (also) {
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(also + (i - first)), low);
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(also + (i - first) + 8), high);
        }
    }
    done = i;
}

} // namespace
#endif

namespace {

void luminanceScalar(const quint32* __restrict pixels, const uchar* __restrict mask, const SkinBlend::Tables& t,
                     qsizetype first, qsizetype end, uchar* __restrict luma)
{
    for (qsizetype i = first; i < end; ++i)
        luma[i] = uchar(luma709Byte(t.blended(pixels[i], mask[i])));
}

void sharpenedScalar(const quint32* __restrict pixels, const uchar* __restrict mask, const SkinBlend::Tables& t,
                     const uchar* __restrict y, const uchar* __restrict yb, int gain, qsizetype first, qsizetype end,
                     quint32* __restrict out, quint32* __restrict also)
{
    for (qsizetype i = first; i < end; ++i) {
        const quint32 p = t.blended(pixels[i], mask[i]);
        const int add = (gain * (int(y[i]) - int(yb[i])) + 128) >> 8;
        const auto channel = [&](int shift) { return quint32(std::clamp(int((p >> shift) & 0xff) + add, 0, 255)); };
        out[i - first] = channel(0) | channel(8) << 8 | channel(16) << 16 | (p & 0xff000000u);
        if (also)
            also[i - first] = out[i - first];
    }
}

} // namespace

SkinBlend::SkinBlend(const PatchedPicture& picture, const cv::Rect& holes, const cv::Mat& mask,
                     const ToneCurveTexture& texture, float amount)
    : picture_(picture)
    , pixels_(reinterpret_cast<const quint32*>(picture.photo.constBits()))
    , width_(picture.width())
    , holes_(holes)
    , mask_(mask.ptr<uchar>())
    , texture_(texture)
    , amount_(amount)
    , tables_(std::make_shared<const Tables>(ToneCurveLookup(texture, amount)))
{
}

SkinBlend::~SkinBlend() = default;
SkinBlend::SkinBlend(const SkinBlend&) = default;

SkinBlend SkinBlend::fromRow(int first) const
{
    SkinBlend band(*this);
    const qsizetype offset = qsizetype(first) * width_;
    band.pixels_ += offset;
    band.mask_ += offset;
    band.holes_ = holes_ - cv::Point(0, first);
    band.firstRow_ = firstRow_ + first;
    return band;
}

// A pixel that is not opaque: lifted in straight colour and blended.
quint32 SkinBlend::translucent(qsizetype i) const
{
    const quint32 stored = pixel(i);
    const auto* original = reinterpret_cast<const uchar*>(&stored);
    uchar lifted[4];
    applyToneCurve(original, lifted, texture_, amount_);
    quint32 result = 0;
    auto* out = reinterpret_cast<uchar*>(&result);
    for (int c = 0; c < 3; ++c)
        out[c] = uchar(blendChannel(original[c], lifted[c], mask_[i]));
    out[3] = original[3];
    return result;
}

template <typename Fn>
void SkinBlend::forTranslucent(qsizetype first, qsizetype count, Fn&& fn) const
{
    if (holes_.empty())
        return;
    const qsizetype firstRow = std::max<qsizetype>(first / width_, holes_.y);
    const qsizetype endRow = std::min<qsizetype>((first + count + width_ - 1) / width_, holes_.y + holes_.height);
    std::vector<quint32> patched;
    for (qsizetype row = firstRow; row < endRow; ++row) {
        const qsizetype from = std::max(first, row * width_ + holes_.x);
        const qsizetype to = std::min(first + count, row * width_ + holes_.x + holes_.width);
        const quint32* pixels = picture_.row(int(row) + firstRow_, patched);
        for (qsizetype i = from; i < to; ++i)
            if ((pixels[i - row * width_] >> 24) != 255)
                fn(i);
    }
}

// Every pixel as if opaque first, then the few others again.
void SkinBlend::luminance(qsizetype first, qsizetype count, uchar* luma) const
{
#ifdef BELLAVENOR_HAVE_AVX2_KERNELS
    if (tables_->vectors)
        luminanceAvx2(pixels_, mask_, *tables_, first, first + count, luma);
    else
#endif
        luminanceScalar(pixels_, mask_, *tables_, first, first + count, luma);
    forTranslucent(first, count, [&](qsizetype i) {
        const quint32 px = translucent(i);
        const UnitColour straight = unpremultiplied(reinterpret_cast<const uchar*>(&px));
        luma[i] = toByte(luminance709(straight.r, straight.g, straight.b));
    });
}

void SkinBlend::sharpened(const uchar* y, const uchar* yb, int gain, const quint32* under, qsizetype first,
                          qsizetype count, quint32* out, quint32* also) const
{
    qsizetype done = first;
#ifdef BELLAVENOR_HAVE_AVX2_KERNELS
    if (tables_->vectors && gain < 128)
        sharpenedAvx2(pixels_, mask_, *tables_, y, yb, gain, first, first + count, out, also, done);
#endif
    sharpenedScalar(pixels_, mask_, *tables_, y, yb, gain, done, first + count, out + (done - first),
                    also ? also + (done - first) : nullptr);
    forTranslucent(first, count, [&](qsizetype i) {
        const quint32 p = sharpenedPixel(translucent(i), y[i], yb[i], gain);
        out[i - first] = under ? over(p, under[i]) : p;
        if (also)
            also[i - first] = out[i - first];
    });
}
