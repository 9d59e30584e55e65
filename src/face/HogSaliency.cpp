// The filter scores of dlib's HOG detector, to the bit. dlib's separable
// filtering steps eight columns at a time through its simd8f, which its
// default build makes of two SSE halves: every lane does the same float
// multiplications and additions in the same order as one AVX lane does, so
// AVX2 gives dlib's bits at about twice the speed. Where the processor has
// no AVX2, dlib's own function runs.

#include "HogFaceDetector.h"

#include "FastPaths.h"
#if defined(__x86_64__) && defined(__GNUC__)
#include <immintrin.h>
#define BELLAVENOR_HAVE_AVX2_KERNELS 1
#endif

namespace {

#ifdef BELLAVENOR_HAVE_AVX2_KERNELS
struct Taps {
    const float* weights;
    long count;
};

// One row through the row filter into the scratch row.
__attribute__((target("avx2"))) void rowPass(const float* in, float* scratch, long firstCol, long lastCol, Taps taps)
{
    long c = firstCol;
    for (; c < lastCol - 7; c += 8) {
        __m256 sum = _mm256_setzero_ps(), sum2 = _mm256_setzero_ps(), sum3 = _mm256_setzero_ps();
        const float* at = in + c - firstCol;
        long n = 0;
        for (; n < taps.count - 2; n += 3) {
            sum = _mm256_add_ps(sum, _mm256_mul_ps(_mm256_loadu_ps(at + n), _mm256_set1_ps(taps.weights[n])));
            sum2 = _mm256_add_ps(sum2, _mm256_mul_ps(_mm256_loadu_ps(at + n + 1), _mm256_set1_ps(taps.weights[n + 1])));
            sum3 = _mm256_add_ps(sum3, _mm256_mul_ps(_mm256_loadu_ps(at + n + 2), _mm256_set1_ps(taps.weights[n + 2])));
        }
        for (; n < taps.count; ++n)
            sum = _mm256_add_ps(sum, _mm256_mul_ps(_mm256_loadu_ps(at + n), _mm256_set1_ps(taps.weights[n])));
        _mm256_storeu_ps(scratch + c, _mm256_add_ps(sum, _mm256_add_ps(sum2, sum3)));
    }
    for (; c < lastCol; ++c) {
        float sum = 0;
        for (long n = 0; n < taps.count; ++n)
            sum += in[c - firstCol + n] * taps.weights[n];
        scratch[c] = sum;
    }
}

// One output row through the column filter, from scratch rows `rows` (the
// first under the filter's first tap), stored or added.
__attribute__((target("avx2"))) void columnPass(const float* const* rows, float* out, long firstCol, long lastCol,
                                                Taps taps, bool addTo)
{
    long c = firstCol;
    for (; c < lastCol - 7; c += 8) {
        __m256 sum = _mm256_setzero_ps(), sum2 = _mm256_setzero_ps(), sum3 = _mm256_setzero_ps();
        long m = 0;
        for (; m < taps.count - 2; m += 3) {
            sum = _mm256_add_ps(sum, _mm256_mul_ps(_mm256_loadu_ps(rows[m] + c), _mm256_set1_ps(taps.weights[m])));
            sum2 = _mm256_add_ps(sum2, _mm256_mul_ps(_mm256_loadu_ps(rows[m + 1] + c), _mm256_set1_ps(taps.weights[m + 1])));
            sum3 = _mm256_add_ps(sum3, _mm256_mul_ps(_mm256_loadu_ps(rows[m + 2] + c), _mm256_set1_ps(taps.weights[m + 2])));
        }
        for (; m < taps.count; ++m)
            sum = _mm256_add_ps(sum, _mm256_mul_ps(_mm256_loadu_ps(rows[m] + c), _mm256_set1_ps(taps.weights[m])));
        sum = _mm256_add_ps(sum, _mm256_add_ps(sum2, sum3));
        if (addTo)
            sum = _mm256_add_ps(sum, _mm256_loadu_ps(out + c));
        _mm256_storeu_ps(out + c, sum);
    }
    for (; c < lastCol; ++c) {
        float sum = 0;
        for (long m = 0; m < taps.count; ++m)
            sum += rows[m][c] * taps.weights[m];
        if (addTo)
            out[c] += sum;
        else
            out[c] = sum;
    }
}
#endif

bool hasAvx2()
{
#ifdef BELLAVENOR_HAVE_AVX2_KERNELS
    static const bool has = __builtin_cpu_supports("avx2");
    return has;
#else
    return false;
#endif
}

} // namespace

dlib::rectangle filterSeparable(const dlib::array2d<float>& in, dlib::array2d<float>& out,
                                const dlib::matrix<float, 0, 1>& rowFilter, const dlib::matrix<float, 0, 1>& colFilter,
                                dlib::array2d<float>& scratch, bool addTo)
{
    if (!fastPaths() || !hasAvx2() || in.size() == 0)
        return dlib::float_spatially_filter_image_separable(in, out, rowFilter, colFilter, scratch, addTo);
#ifdef BELLAVENOR_HAVE_AVX2_KERNELS
    out.set_size(in.nr(), in.nc());
    const long firstRow = colFilter.size() / 2, firstCol = rowFilter.size() / 2;
    const long lastRow = in.nr() - ((colFilter.size() - 1) / 2), lastCol = in.nc() - ((rowFilter.size() - 1) / 2);
    const dlib::rectangle nonBorder(firstCol, firstRow, lastCol - 1, lastRow - 1);
    if (!addTo)
        dlib::zero_border_pixels(out, nonBorder);
    scratch.set_size(in.nr(), in.nc());
    const Taps rowTaps{&rowFilter(0), rowFilter.size()}, colTaps{&colFilter(0), colFilter.size()};
    for (long r = 0; r < in.nr(); ++r)
        rowPass(&in[r][0], &scratch[r][0], firstCol, lastCol, rowTaps);
    std::vector<const float*> rows(size_t(colFilter.size()));
    for (long r = firstRow; r < lastRow; ++r) {
        for (long m = 0; m < colFilter.size(); ++m)
            rows[size_t(m)] = &scratch[r - firstRow + m][0];
        columnPass(rows.data(), &out[r][0], firstCol, lastCol, colTaps, addTo);
    }
    return nonBorder;
#endif
}

// dlib's impl::apply_filters_to_fhog with filterSeparable in its place.
dlib::rectangle hogSaliency(const dlib::frontal_face_detector::image_scanner_type::fhog_filterbank& w,
                            const dlib::array<dlib::array2d<float>>& features, dlib::array2d<float>& saliency)
{
    const unsigned long separable = w.num_separable_filters();
    if (separable > w.filters.size() * std::min(w.filters[0].nr(), w.filters[0].nc()) / 3.0)
        return dlib::impl::apply_filters_to_fhog(w, features, saliency);
    saliency.clear();
    dlib::array2d<float> scratch;
    dlib::rectangle area;
    unsigned long i = 0;
    while (i < w.row_filters.size() && w.row_filters[i].size() == 0)
        ++i;
    for (; i < w.row_filters.size(); ++i)
        for (unsigned long j = 0; j < w.row_filters[i].size(); ++j)
            area = filterSeparable(features[i], saliency, w.row_filters[i][j], w.col_filters[i][j], scratch,
                                   saliency.size() != 0);
    if (saliency.size() == 0) {
        saliency.set_size(features[0].nr(), features[0].nc());
        dlib::assign_all_pixels(saliency, 0);
    }
    return area;
}

#if defined(__x86_64__) && defined(__GNUC__)
__attribute__((target("fma"), noinline))
#endif
float replicaMultiplyAdd(float a, float b, float c)
{
    return a * b + c;
}
