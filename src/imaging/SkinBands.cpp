#include "SkinBands.h"

#include <algorithm>
#include <cmath>

#include <opencv2/imgproc.hpp>

namespace {

// A Gaussian this wide keeps nothing a picture shrunk to a third of its
// sigma could not hold: it is blurred there, at a fraction of the cost,
// and brought back.
int shrinkFor(double sigma) { return std::max(1, int(sigma / 3)); }

cv::Mat gaussianOf(const cv::Mat& values, double sigma, int shrink)
{
    cv::Mat blurred;
    if (shrink == 1) {
        cv::GaussianBlur(values, blurred, {0, 0}, sigma);
        return blurred;
    }
    cv::Mat small;
    cv::resize(values, small, {}, 1.0 / shrink, 1.0 / shrink, cv::INTER_AREA);
    // Averaging blocks of `shrink` already blurs by about shrink / √12.
    const double left = std::sqrt(std::max(0.25, sigma * sigma - shrink * shrink / 12.0)) / shrink;
    cv::GaussianBlur(small, small, {0, 0}, left);
    cv::resize(small, blurred, values.size(), 0, 0, cv::INTER_LINEAR);
    return blurred;
}

// A normalised convolution whose weight is blurred once for every picture
// blurred over it.
class BlurOver {
public:
    BlurOver(const cv::Mat& weight, double sigma)
        : sigma_(sigma)
        , shrink_(shrinkFor(sigma))
    {
        const cv::Mat three[] = {weight, weight, weight};
        cv::merge(three, 3, spread_);
        total_ = gaussianOf(spread_, sigma, shrink_);
        reached_ = total_ > 1e-4f;
        total_ = cv::max(total_, 1e-4f);
    }

    cv::Mat operator()(const cv::Mat& values) const
    {
        cv::Mat blurred = values.clone();
        cv::Mat ratio = gaussianOf(values.mul(spread_), sigma_, shrink_) / total_;
        ratio.copyTo(blurred, reached_);
        return blurred;
    }

private:
    double sigma_;
    int shrink_;
    cv::Mat spread_, total_, reached_;
};

} // namespace

cv::Mat blurOver(const cv::Mat& values, const cv::Mat& weight, double sigma)
{
    return BlurOver(weight, sigma)(values);
}

cv::Mat mediumBandOf(const cv::Mat& rgb, const cv::Mat& skin, double fine, double coarse)
{
    cv::Mat values, weight;
    rgb.convertTo(values, CV_32F);
    skin.convertTo(weight, CV_32F, 1.0 / 255);
    weight.setTo(1, weight > 0);
    const BlurOver fineBlur(weight, fine), coarseBlur(weight, coarse);
    const auto band = [&](const cv::Mat& of) { return cv::Mat(fineBlur(of) - coarseBlur(of)); };
    // A difference of blurs passes the middle sizes only in part: taken
    // away once, it leaves about half of them (what it passes of its own
    // output). Taken twice more from what is left, an eighth.
    cv::Mat taken = band(values);
    for (int again = 0; again < 2; ++again)
        taken += band(values - taken);
    return taken;
}

void applySkinChange(QImage& picture, const QRect& area, const cv::Mat& change, const cv::Mat& weight, double fine,
                     double texture)
{
    const QRect inside = area & picture.rect();
    if (inside.isEmpty() || change.empty())
        return;
    const cv::Rect box(inside.x(), inside.y(), inside.width(), inside.height());
    cv::Mat pixels = cv::Mat(picture.height(), picture.width(), CV_8UC4, picture.bits(), size_t(picture.bytesPerLine()))(box);
    // The change and its weight were made over the whole area: the part of
    // the picture's edge it may overhang is cut off after sizing.
    const cv::Rect within(inside.x() - area.x(), inside.y() - area.y(), inside.width(), inside.height());
    cv::Mat changeHere, weightHere;
    cv::resize(change, changeHere, {area.width(), area.height()}, 0, 0, cv::INTER_LINEAR);
    cv::resize(weight, weightHere, {area.width(), area.height()}, 0, 0, cv::INTER_LINEAR);
    changeHere = changeHere(within);
    weightHere = weightHere(within);
    cv::Mat detail;
    if (texture != 1) {
        cv::Mat rgb, smooth;
        cv::cvtColor(pixels, rgb, cv::COLOR_RGBA2RGB);
        rgb.convertTo(rgb, CV_32F);
        cv::GaussianBlur(rgb, smooth, {0, 0}, std::max(0.3, fine));
        detail = (rgb - smooth) * (texture - 1);
    }
    // Written by hand: the weight, the opaque-only rule and the detail
    // meet per pixel, which no OpenCV call combines.
    for (int y = 0; y < pixels.rows; ++y)
        for (int x = 0; x < pixels.cols; ++x) {
            uchar* p = pixels.ptr<uchar>(y, x);
            const float w = weightHere.at<float>(y, x);
            if (w <= 0 || p[3] != 255)
                continue;
            cv::Vec3f delta = changeHere.at<cv::Vec3f>(y, x);
            if (!detail.empty())
                delta += detail.at<cv::Vec3f>(y, x);
            for (int k = 0; k < 3; ++k)
                p[k] = cv::saturate_cast<uchar>(p[k] + w * delta[k]);
        }
}
