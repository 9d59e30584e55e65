#include "GaussianBlur.h"

#include <QImage>

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

namespace {

cv::Mat exactGaussian(const cv::Mat& src, float sigma, int border)
{
    const int size = 2 * int(std::ceil(3 * sigma)) + 1;
    cv::Mat blurred;
    cv::GaussianBlur(src, blurred, cv::Size(size, size), sigma, sigma, border);
    return blurred;
}

} // namespace

// Wide blurs are computed on a reduced copy; they must still match a true
// Gaussian closely and must not shift, whatever the size.
TEST(GaussianBlur, WideBlursMatchTheExactOneWithoutShifting)
{
    QImage portrait = QImage(QString(BELLAVENOR_TEST_DATA) + "/portrait.png")
                          .convertToFormat(QImage::Format_RGBA8888)
                          .scaled(1001, 755); // sizes that are not whole cells
    const cv::Mat pixels(portrait.height(), portrait.width(), CV_8UC4, portrait.bits(), size_t(portrait.bytesPerLine()));
    for (float sigma : {6.0f, 10.0f, 20.0f})
        for (int border : {cv::BORDER_CONSTANT, cv::BORDER_REPLICATE}) {
            cv::Mat fast;
            gaussianBlur(pixels, fast, sigma, border);
            ASSERT_EQ(fast.size(), pixels.size());
            EXPECT_GT(cv::PSNR(fast, exactGaussian(pixels, sigma, border)), 48) << sigma << " " << border;
        }
}
