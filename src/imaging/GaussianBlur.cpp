#include "GaussianBlur.h"

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
    // Averaging cells of f pixels and enlarging linearly blur by themselves,
    // by about (f^2 - 1) / 12 and f^2 / 6 in variance; the small blur makes
    // up the rest.
    const double extraVariance = (f * f - 1) / 12.0 + f * f / 6.0;
    const double smallSigma = std::sqrt(std::max(double(sigma) * sigma - extraVariance, 0.25)) / f;
    exactGaussian(small, small, smallSigma, borderType);
    if (!padRight && !padBottom) {
        cv::resize(small, dst, src.size(), 0, 0, cv::INTER_LINEAR);
        return;
    }
    cv::Mat enlarged;
    cv::resize(small, enlarged, padded.size(), 0, 0, cv::INTER_LINEAR);
    enlarged(cv::Rect(0, 0, src.cols, src.rows)).copyTo(dst);
}
