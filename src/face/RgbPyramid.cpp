// dlib's pyramid_down<6> of an RGB picture, to the byte.
//
// dlib shrinks each level with its bilinear resize: for every output row a
// top and bottom row and their weights in double, for every four output
// columns the source positions stepped in float, then per channel the four
// neighbours weighed in float and truncated; the last columns in double.
// The same operations in the same order give the same bytes; here the
// positions are worked out once per level instead of once per row, eight
// columns go through AVX2 at a time, and the rows are shared by both
// cores. dlib has no faster path for this that keeps its bytes.

#include "HogFaceDetector.h"

#include "FastPaths.h"
#include <opencv2/core/utility.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#if defined(__x86_64__) && defined(__GNUC__)
#include <immintrin.h>
#define BELLAVENOR_HAVE_AVX2_KERNELS 1
#endif

namespace {

// Where each output column reads, as dlib's four-column loop steps it.
struct ColumnPlan {
    std::vector<std::int32_t> left;
    std::vector<float> fraction, rest; // the right neighbour's weight and 1 minus it
    long floatEnd = 0;                 // columns from here on are dlib's double tail
    long vectorEnd = 0;                // columns before here read no byte past their row
};

ColumnPlan columnPlan(long inWidth, long outWidth, double xScale)
{
    ColumnPlan plan;
    const double x = -4 * xScale;
    float lanes[4] = {float(x), float(x + xScale), float(x + 2 * xScale), float(x + 3 * xScale)};
    const float step = float(4 * xScale);
    for (long c = 0;; c += 4) {
        std::int32_t left[4];
        float fraction[4];
        for (int k = 0; k < 4; ++k) {
            lanes[k] += step;
            left[k] = std::int32_t(lanes[k]);
            fraction[k] = lanes[k] - float(left[k]);
        }
        if (left[3] + 1 >= inWidth) {
            plan.floatEnd = c;
            break;
        }
        for (int k = 0; k < 4; ++k) {
            plan.left.push_back(left[k]);
            plan.fraction.push_back(fraction[k]);
            plan.rest.push_back(1 - fraction[k]);
        }
    }
    plan.floatEnd = std::min(plan.floatEnd, outWidth);
    // A gather reads four bytes at the right neighbour: it must not be the
    // row's last pixel.
    plan.vectorEnd = plan.floatEnd / 8 * 8;
    while (plan.vectorEnd > 0 && plan.left[size_t(plan.vectorEnd - 1)] + 2 >= inWidth)
        plan.vectorEnd -= 8;
    return plan;
}

struct RowPlan {
    const unsigned char* top;
    const unsigned char* bottom;
    double fraction; // the bottom row's weight
};

struct Weights {
    float bottom, top; // as dlib's float copies of tb_frac and 1 - tb_frac
};

void floatColumns(const RowPlan& row, const ColumnPlan& plan, long from, long to, unsigned char* out)
{
    const Weights w{float(row.fraction), float(1 - row.fraction)};
    for (long c = from; c < to; ++c) {
        const long left = plan.left[size_t(c)] * 3, right = left + 3;
        const float topLeft = w.top * plan.rest[size_t(c)], topRight = w.top * plan.fraction[size_t(c)];
        const float bottomLeft = w.bottom * plan.rest[size_t(c)], bottomRight = w.bottom * plan.fraction[size_t(c)];
        for (int channel = 0; channel < 3; ++channel) {
            const float value = topLeft * float(row.top[left + channel]) + topRight * float(row.top[right + channel])
                                + bottomLeft * float(row.bottom[left + channel])
                                + bottomRight * float(row.bottom[right + channel]);
            out[c * 3 + channel] = static_cast<unsigned char>(std::int32_t(value));
        }
    }
}

// dlib's last columns, in double through its own pixel vectors.
void doubleColumns(const RowPlan& row, long inWidth, double xScale, long from, long to, unsigned char* out)
{
    const double tb = row.fraction;
    double x = -xScale + double(from) * xScale;
    for (long c = from; c < to; ++c) {
        x += xScale;
        const long left = long(std::floor(x));
        const long right = std::min(left + 1, inWidth - 1);
        const double lr = x - double(left);
        const auto pixel = [](const unsigned char* p) { return dlib::rgb_pixel(p[0], p[1], p[2]); };
        const auto v = [&](const unsigned char* line, long at) { return dlib::pixel_to_vector<double>(pixel(line + at * 3)); };
        dlib::rgb_pixel result;
        dlib::assign_pixel(result, 0);
        dlib::vector_to_pixel(result, (1 - tb) * ((1 - lr) * v(row.top, left) + lr * v(row.top, right))
                                          + tb * ((1 - lr) * v(row.bottom, left) + lr * v(row.bottom, right)));
        out[c * 3] = result.red;
        out[c * 3 + 1] = result.green;
        out[c * 3 + 2] = result.blue;
    }
}

#ifdef BELLAVENOR_HAVE_AVX2_KERNELS
__attribute__((target("avx2"))) inline __m256 channelOf(__m256i pixels, int channel)
{
    return _mm256_cvtepi32_ps(_mm256_and_si256(_mm256_srli_epi32(pixels, 8 * channel), _mm256_set1_epi32(0xff)));
}

// Rows of three-byte pixels give no alignment; memcpy is the defined way
// to store four bytes anywhere (it compiles to one move).
inline void storeFourBytes(unsigned char* to, std::int32_t value)
{
    std::memcpy(to, &value, sizeof value);
}

__attribute__((target("avx2"))) void vectorColumns(const RowPlan& row, const ColumnPlan& plan, unsigned char* out)
{
    const __m256 top = _mm256_set1_ps(float(1 - row.fraction)), bottom = _mm256_set1_ps(float(row.fraction));
    // Four pixels of 32-bit lanes (R, G, B, next) to their twelve bytes.
    const __m128i packed = _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
    for (long c = 0; c < plan.vectorEnd; c += 8) {
        const __m256i at = _mm256_mullo_epi32(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(&plan.left[size_t(c)])),
                                              _mm256_set1_epi32(3));
        const __m256i tl = _mm256_i32gather_epi32(reinterpret_cast<const int*>(row.top), at, 1);
        const __m256i tr = _mm256_i32gather_epi32(reinterpret_cast<const int*>(row.top + 3), at, 1);
        const __m256i bl = _mm256_i32gather_epi32(reinterpret_cast<const int*>(row.bottom), at, 1);
        const __m256i br = _mm256_i32gather_epi32(reinterpret_cast<const int*>(row.bottom + 3), at, 1);
        const __m256 fraction = _mm256_loadu_ps(&plan.fraction[size_t(c)]);
        const __m256 rest = _mm256_loadu_ps(&plan.rest[size_t(c)]);
        const __m256 wtl = _mm256_mul_ps(top, rest), wtr = _mm256_mul_ps(top, fraction);
        const __m256 wbl = _mm256_mul_ps(bottom, rest), wbr = _mm256_mul_ps(bottom, fraction);
        __m256i bytes = _mm256_setzero_si256();
        for (int channel = 0; channel < 3; ++channel) {
            __m256 value = _mm256_add_ps(_mm256_mul_ps(wtl, channelOf(tl, channel)), _mm256_mul_ps(wtr, channelOf(tr, channel)));
            value = _mm256_add_ps(value, _mm256_mul_ps(wbl, channelOf(bl, channel)));
            value = _mm256_add_ps(value, _mm256_mul_ps(wbr, channelOf(br, channel)));
            const __m256i channelBytes = _mm256_and_si256(_mm256_cvttps_epi32(value), _mm256_set1_epi32(0xff));
            bytes = _mm256_or_si256(bytes, _mm256_slli_epi32(channelBytes, 8 * channel));
        }
        const __m128i low = _mm_shuffle_epi8(_mm256_castsi256_si128(bytes), packed);
        const __m128i high = _mm_shuffle_epi8(_mm256_extracti128_si256(bytes, 1), packed);
        unsigned char* to = out + c * 3;
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to), low);
        storeFourBytes(to + 8, _mm_extract_epi32(low, 2));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to + 12), high);
        storeFourBytes(to + 20, _mm_extract_epi32(high, 2));
    }
}
#endif

} // namespace

void pyramidDown(const RgbPixels& photo, dlib::array2d<dlib::rgb_pixel>& smaller)
{
    constexpr long N = 6; // dlib's pyramid_down<6>: each level 5/6 of the last
    smaller.set_size(((N - 1) * photo.height) / N, ((N - 1) * photo.width) / N);
    if (smaller.size() == 0 || photo.width == 0 || photo.height == 0)
        return;
    const long width = smaller.nc(), height = smaller.nr();
    const double xScale = double(photo.width - 1) / double(std::max<long>(width - 1, 1));
    const double yScale = double(photo.height - 1) / double(std::max<long>(height - 1, 1));
    const ColumnPlan columns = columnPlan(photo.width, width, xScale);
    std::vector<RowPlan> rows(static_cast<size_t>(height));
    double y = -yScale;
    for (long r = 0; r < height; ++r) {
        y += yScale;
        const long top = long(std::floor(y));
        const long bottom = std::min(top + 1, photo.height - 1);
        rows[size_t(r)] = {photo.bytes + top * long(photo.bytesPerLine), photo.bytes + bottom * long(photo.bytesPerLine),
                           y - double(top)};
    }
#ifdef BELLAVENOR_HAVE_AVX2_KERNELS
    const bool vectors = fastPaths() && __builtin_cpu_supports("avx2");
#else
    const bool vectors = false;
#endif
    cv::parallel_for_(cv::Range(0, int(height)), [&](const cv::Range& range) {
        for (long r = range.start; r < range.end; ++r) {
            auto* out = reinterpret_cast<unsigned char*>(&smaller[r][0]);
            long done = 0;
#ifdef BELLAVENOR_HAVE_AVX2_KERNELS
            if (vectors) {
                vectorColumns(rows[size_t(r)], columns, out);
                done = columns.vectorEnd;
            }
#endif
            floatColumns(rows[size_t(r)], columns, done, columns.floatEnd, out);
            doubleColumns(rows[size_t(r)], photo.width, xScale, columns.floatEnd, width, out);
        }
    });
}
