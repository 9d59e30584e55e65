#include "FilterPrimitives.h"

#include "Contract.h"
#include "FastPaths.h"
#include "GaussianBlur.h"
#include "PixelKernels.h"

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace {

int gaussianReach(float radius)
{
    return int(std::ceil(3.0f * radius));
}

// Blurs premultiplied RGBA: colour spreads in proportion to its alpha, so
// transparent surroundings fade it out instead of darkening it.
void gaussian(const cv::Mat& src, cv::Mat& dst, float radius)
{
    gaussianBlur(src, dst, radius, cv::BORDER_CONSTANT);
}

// OpenCV filters 8-bit pictures with kernels of at least this many taps
// through the DFT, and only whole pictures so.
constexpr size_t kSmallestDftKernel = 130;

// A normalised kernel of the pixels whose centres lie within `radius` of
// the centre pixel.
cv::Mat discKernel(float radius)
{
    const int reach = int(std::ceil(radius));
    cv::Mat kernel(2 * reach + 1, 2 * reach + 1, CV_32F);
    for (int y = -reach; y <= reach; ++y)
        for (int x = -reach; x <= reach; ++x)
            kernel.at<float>(y + reach, x + reach) = float(x * x + y * y) <= radius * radius ? 1.0f : 0.0f;
    return kernel / cv::sum(kernel)[0];
}

// The input padded with transparent pixels by `reach` on every side, as a
// filter image whose extent has grown accordingly.
FilterImage grown(const FilterImage& image, int reach)
{
    QImage padded = makePicture(image.image.size() + QSize(2 * reach, 2 * reach));
    cv::copyMakeBorder(matView(image.image), matView(padded), reach, reach, reach, reach, cv::BORDER_CONSTANT,
                       cv::Scalar::all(0));
    return {padded, image.extent.adjusted(-reach, -reach, reach, reach)};
}

} // namespace

FilterImage gaussianBlur(const FilterImage& image, float radius)
{
    BELLAVENOR_CHECK(std::isfinite(radius), "radius " << radius);
    if (radius <= 0 || image.extent.isEmpty())
        return image;
    FilterImage spread = grown(image, gaussianReach(radius));
    cv::Mat pixels = matView(spread.image);
    gaussian(pixels, pixels, radius);
    return spread;
}

QImage imageBlur(const QImage& image, float radius)
{
    return imageFromCIImage(gaussianBlur(FilterImage::fromPicture(image), radius));
}

void gaussianBlurCropped(const QImage& src, QImage& dst, float radius)
{
    // Blurring at the input's own size with transparent borders gives exactly
    // the crop of the whole spread, without computing the margins.
    BELLAVENOR_CHECK(std::isfinite(radius), "radius " << radius);
    if (radius <= 0 || src.isNull()) {
        dst = toPicture(src);
        return;
    }
    const QImage input = toPicture(src);
    if (&src != &dst)
        ensurePicture(dst, input.size());
    cv::Mat out = matView(dst);
    gaussian(matView(input), out, radius);
}

QImage imageBlurDarkenEyes(const QImage& image, float radius)
{
    QImage blurred;
    gaussianBlurCropped(image, blurred, radius);
    return blurred;
}

QImage imageBlurEyeshadow(const QImage& image, float radius)
{
    return imageBlurDarkenEyes(image, radius);
}

QImage imageBlurCheek(const QImage& image, float radius)
{
    BELLAVENOR_CHECK(std::isfinite(radius), "radius " << radius);
    if (radius <= 0 || image.isNull())
        return toPicture(image);
    FilterImage spread = grown(FilterImage::fromPicture(image), int(std::ceil(radius)));
    const cv::Mat kernel = discKernel(radius);
    cv::Mat pixels = matView(spread.image);
    if (kernel.total() >= kSmallestDftKernel || !fastPaths()) {
        cv::filter2D(pixels, pixels, -1, kernel, cv::Point(-1, -1), 0, cv::BORDER_CONSTANT);
        return imageFromCIImage(spread);
    }
    // OpenCV filters a kernel this small pixel by pixel, reading the rows
    // around a band from the whole picture: bands on both cores give the
    // same bytes as one call.
    QImage blurred = makePicture(spread.image.size());
    cv::Mat out = matView(blurred);
    parallelRows(pixels.rows, [&](int begin, int end) {
        cv::Mat band = out.rowRange(begin, end);
        cv::filter2D(pixels.rowRange(begin, end), band, -1, kernel, cv::Point(-1, -1), 0, cv::BORDER_CONSTANT);
    });
    return imageFromCIImage({blurred, spread.extent});
}
