#include "GaussianBlur.h"

#include "Contract.h"
#include "FastPaths.h"
#include "PixelKernels.h"

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace {

void exactGaussian(const cv::Mat& src, cv::Mat& dst, double sigma, int borderType)
{
    const int size = 2 * int(std::ceil(3.0 * sigma)) + 1;
    cv::GaussianBlur(src, dst, cv::Size(size, size), sigma, sigma, borderType);
}

int reductionFor(float sigma)
{
    return sigma >= 8 ? 4 : sigma >= 6 ? 2 : 1;
}

// Averaging cells of f pixels and enlarging linearly blur by themselves,
// by about (f^2 - 1) / 12 and f^2 / 6 in variance; the small blur makes up
// the rest.
double reducedSigma(float sigma, int f)
{
    const double extraVariance = (f * f - 1) / 12.0 + f * f / 6.0;
    return std::sqrt(std::max(double(sigma) * sigma - extraVariance, 0.25)) / f;
}

} // namespace

void gaussianBlur(const cv::Mat& src, cv::Mat& dst, float sigma, int borderType)
{
    const int f = reductionFor(sigma);
    if (f == 1 || src.empty()) {
        exactGaussian(src, dst, sigma, borderType);
        return;
    }
    // Pad to whole cells so the reduction is an exact 1/f: cell centres and
    // pixel centres then line up and nothing shifts.
    const int padRight = (f - src.cols % f) % f, padBottom = (f - src.rows % f) % f;
    cv::Mat padded = src;
    if (padRight || padBottom)
        cv::copyMakeBorder(src, padded, 0, padBottom, 0, padRight, borderType, cv::Scalar::all(0));
    cv::Mat small;
    cv::resize(padded, small, cv::Size(padded.cols / f, padded.rows / f), 0, 0, cv::INTER_AREA);
    exactGaussian(small, small, reducedSigma(sigma, f), borderType);
    if (!padRight && !padBottom) {
        cv::resize(small, dst, src.size(), 0, 0, cv::INTER_LINEAR);
        return;
    }
    cv::Mat enlarged;
    cv::resize(small, enlarged, padded.size(), 0, 0, cv::INTER_LINEAR);
    enlarged(cv::Rect(0, 0, src.cols, src.rows)).copyTo(dst);
}

int gaussianCell(float sigma)
{
    return reductionFor(sigma);
}

int gaussianSupport(float sigma)
{
    const int f = reductionFor(sigma);
    if (f == 1)
        return int(std::ceil(3.0 * sigma));
    // The small blur's reach in cells, the cell averaged and the linear
    // enlargement's neighbour.
    return f * (int(std::ceil(3.0 * reducedSigma(sigma, f))) + 2) + f;
}

namespace {

// The part of the picture where the weighing happens: every pixel that has a
// hole within reach, and around it as much again, so that the part blurs
// there as the whole picture would; its origin on the blur's cell grid.
cv::Rect weighingArea(const cv::Rect& holes, const cv::Size& size, int reach, int cell)
{
    const int margin = 2 * reach + cell;
    const int x = std::max(0, (holes.x - margin) / cell * cell), y = std::max(0, (holes.y - margin) / cell * cell);
    const int right = std::min(size.width, holes.x + holes.width + margin);
    const int bottom = std::min(size.height, holes.y + holes.height + margin);
    return {x, y, right - x, bottom - y};
}

// The alpha over `area`: the holes' own, opaque around them.
cv::Mat alphaOver(const cv::Mat& holesAlpha, const cv::Rect& holes, const cv::Rect& area)
{
    cv::Mat alpha(area.size(), CV_8UC1, cv::Scalar(255));
    const cv::Rect common = holes & area;
    if (!common.empty())
        holesAlpha(common - holes.tl()).copyTo(alpha(common - area.tl()));
    return alpha;
}

// Where the blurred alpha is not full, the weighed blur of the values
// replaces the plain one.
void weighNearHoles(const cv::Mat& values, const cv::Mat& holesAlpha, const cv::Rect& holes, const cv::Rect& area,
                    const cv::Rect& inner, cv::Mat& dst, float sigma)
{
    const cv::Mat alpha = alphaOver(holesAlpha, holes, area);
    cv::Mat weighted, weights;
    cv::multiply(values(area), alpha, weighted, 1.0, CV_16U);
    alpha.convertTo(weights, CV_16U, 256.0);
    gaussianBlur(weighted, weighted, sigma, cv::BORDER_REPLICATE);
    gaussianBlur(weights, weights, sigma, cv::BORDER_REPLICATE);
    constexpr int kFull = 255 * 256;
    for (int y = inner.y; y < inner.y + inner.height; ++y) {
        const auto* w = weighted.ptr<quint16>(y - area.y) - area.x;
        const auto* a = weights.ptr<quint16>(y - area.y) - area.x;
        const uchar* v = values.ptr<uchar>(y);
        uchar* out = dst.ptr<uchar>(y);
        for (int x = inner.x; x < inner.x + inner.width; ++x) {
            if (a[x] >= kFull)
                continue;
            out[x] = a[x] ? uchar(std::min(255, (int(w[x]) * 256 + a[x] / 2) / a[x])) : v[x];
        }
    }
}

} // namespace

void gaussianBlurOverOpaque(const cv::Mat& values, const cv::Mat& alpha, const cv::Rect& holes, cv::Mat& dst,
                            float sigma)
{
    BELLAVENOR_CHECK(values.type() == CV_8UC1 && dst.data != values.data
                         && (holes.empty() || (alpha.type() == CV_8UC1 && holes.size() == alpha.size())),
                     "values " << values.cols << "x" << values.rows << " type " << values.type() << ", alpha "
                               << alpha.cols << "x" << alpha.rows << " type " << alpha.type());
    gaussianBlur(values, dst, sigma, cv::BORDER_REPLICATE);
    if (holes.empty())
        return;
    const int reach = gaussianSupport(sigma);
    const cv::Rect whole(cv::Point(), values.size());
    if (!fastPaths()) { // weighed everywhere, kept where the blurred alpha is not full
        weighNearHoles(values, alpha, holes, whole, whole, dst, sigma);
        return;
    }
    const cv::Rect inner =
        cv::Rect(holes.x - reach, holes.y - reach, holes.width + 2 * reach, holes.height + 2 * reach) & whole;
    if (inner.empty())
        return; // the holes lie beyond reach of these rows
    weighNearHoles(values, alpha, holes, weighingArea(holes, values.size(), reach, gaussianCell(sigma)), inner, dst,
                   sigma);
}
