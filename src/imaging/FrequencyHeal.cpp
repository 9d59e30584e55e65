#include "FrequencyHeal.h"

#include <QLineF>

#include <opencv2/imgproc.hpp>
#include <opencv2/photo.hpp>

#include <cmath>
#include <numbers>

// The blend is written by hand: the fade, the opaque-only rule and the
// caller's mask decide per pixel, which no OpenCV call combines.
void healDisc(QImage& picture, QPointF centre, double radius, double fade, std::optional<QPointF> source,
              const std::function<bool(QPointF)>& allows)
{
    const double sigma = std::max(1.0, radius / 2);
    const int half = int(std::ceil(radius + fade + 3 * sigma));
    const cv::Point c(int(std::lround(centre.x())), int(std::lround(centre.y())));
    const cv::Rect whole(0, 0, picture.width(), picture.height());
    const cv::Rect box = cv::Rect(c.x - half, c.y - half, 2 * half + 1, 2 * half + 1) & whole;
    const cv::Mat all(picture.height(), picture.width(), CV_8UC4, picture.bits(), size_t(picture.bytesPerLine()));
    cv::Mat pixels = all(box), target, disk = cv::Mat::zeros(box.size(), CV_8U);
    cv::cvtColor(pixels, target, cv::COLOR_RGBA2RGB);
    cv::circle(disk, c - box.tl(), int(std::ceil(radius)), 255, cv::FILLED);
    cv::Mat filled, low, texture = cv::Mat::zeros(box.size(), CV_32FC3);
    cv::inpaint(target, disk, filled, 3, cv::INPAINT_TELEA);
    filled.convertTo(low, CV_32F);
    cv::GaussianBlur(low, low, {0, 0}, sigma);
    if (source) {
        const cv::Rect from = box + (cv::Point(int(std::lround(source->x())), int(std::lround(source->y()))) - c);
        if ((from & whole) == from) {
            cv::Mat patch, smooth;
            cv::cvtColor(all(from), patch, cv::COLOR_RGBA2RGB);
            patch.convertTo(patch, CV_32F);
            cv::GaussianBlur(patch, smooth, {0, 0}, sigma);
            texture = patch - smooth;
        }
    }
    for (int y = 0; y < box.height; ++y)
        for (int x = 0; x < box.width; ++x) {
            uchar* p = pixels.ptr<uchar>(y, x);
            const QPointF at(box.x + x, box.y + y);
            const double d = QLineF(at, centre).length();
            if (p[3] != 255 || d >= radius + fade || !allows(at))
                continue;
            const double alpha = d <= radius ? 1 : 0.5 + 0.5 * std::cos(std::numbers::pi * (d - radius) / fade);
            const cv::Vec3f want = low.at<cv::Vec3f>(y, x) + texture.at<cv::Vec3f>(y, x);
            for (int k = 0; k < 3; ++k)
                p[k] = cv::saturate_cast<uchar>(p[k] + alpha * (want[k] - p[k]));
        }
}

void healArea(QImage& picture, const cv::Mat& mask, QPoint origin, double fade, double sigma,
              std::optional<QPoint> sourceOffset, const std::function<bool(QPointF)>& allows)
{
    const int margin = int(std::ceil(fade + 3 * sigma));
    const cv::Rect whole(0, 0, picture.width(), picture.height());
    const cv::Rect placed(origin.x(), origin.y(), mask.cols, mask.rows);
    const cv::Rect box = cv::Rect(placed.x - margin, placed.y - margin, placed.width + 2 * margin,
                                  placed.height + 2 * margin)
                         & whole;
    if (box.empty())
        return;
    cv::Mat area = cv::Mat::zeros(box.size(), CV_8U);
    const cv::Rect inBox = (placed & box) - box.tl();
    mask(inBox + (box.tl() - placed.tl())).copyTo(area(inBox));
    area = area != 0;
    const cv::Mat all(picture.height(), picture.width(), CV_8UC4, picture.bits(), size_t(picture.bytesPerLine()));
    cv::Mat pixels = all(box), target, filled, low, outside, distance;
    cv::cvtColor(pixels, target, cv::COLOR_RGBA2RGB);
    cv::inpaint(target, area, filled, 3, cv::INPAINT_TELEA);
    filled.convertTo(low, CV_32F);
    cv::GaussianBlur(low, low, {0, 0}, sigma);
    cv::Mat texture = cv::Mat::zeros(box.size(), CV_32FC3);
    if (sourceOffset) {
        const cv::Rect from = box + cv::Point(sourceOffset->x(), sourceOffset->y());
        if ((from & whole) == from) {
            cv::Mat patch, smooth;
            cv::cvtColor(all(from), patch, cv::COLOR_RGBA2RGB);
            patch.convertTo(patch, CV_32F);
            cv::GaussianBlur(patch, smooth, {0, 0}, sigma);
            texture = patch - smooth;
        }
    }
    cv::distanceTransform(area == 0, distance, cv::DIST_L2, cv::DIST_MASK_PRECISE);
    for (int y = 0; y < box.height; ++y)
        for (int x = 0; x < box.width; ++x) {
            uchar* p = pixels.ptr<uchar>(y, x);
            const double d = distance.at<float>(y, x);
            if (p[3] != 255 || d >= fade || !allows(QPointF(box.x + x, box.y + y)))
                continue;
            const double alpha = d <= 0 ? 1 : 0.5 + 0.5 * std::cos(std::numbers::pi * d / fade);
            const cv::Vec3f want = low.at<cv::Vec3f>(y, x) + texture.at<cv::Vec3f>(y, x);
            for (int k = 0; k < 3; ++k)
                p[k] = cv::saturate_cast<uchar>(p[k] + alpha * (want[k] - p[k]));
        }
}
