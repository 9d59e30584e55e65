#include "FrequencyHeal.h"

#include <QLineF>

#include <opencv2/imgproc.hpp>
#include <opencv2/photo.hpp>

#include <algorithm>
#include <cmath>
#include <vector>
#include <numbers>

namespace {

// The texture moved in keeps the skin's grain, never a mark that happened
// to lie where it was taken: each value is held within three robust spreads
// (1.4826 × the median distance from 0) of the patch's own.
void limitToGrain(cv::Mat& texture)
{
    std::vector<float> all;
    all.reserve(texture.total() * 3);
    for (auto it = texture.begin<cv::Vec3f>(); it != texture.end<cv::Vec3f>(); ++it)
        for (int k = 0; k < 3; ++k)
            all.push_back(std::abs((*it)[k]));
    if (all.empty())
        return;
    std::nth_element(all.begin(), all.begin() + std::ptrdiff_t(all.size() / 2), all.end());
    const float limit = std::max(3 * 1.4826f * all[all.size() / 2], 1.0f);
    texture = cv::max(cv::min(texture, cv::Scalar::all(limit)), cv::Scalar::all(-limit));
}

// The shading under an area: filled in from its border by OpenCV's
// inpainting, then blurred by `sigma` (inpainting alone leaves a flat,
// smudged patch). The blur keeps nothing finer than sigma, so a wide one
// is filled in on the box shrunk to about four pixels a sigma: a spot on a
// 40 MP photo costs what it does on a 3 MP one.
cv::Mat shadingOf(const cv::Mat& rgb, const cv::Mat& area, double sigma)
{
    const double shrink = std::max(1.0, std::floor(sigma / 4));
    cv::Mat small = rgb, smallArea = area, filled, low;
    if (shrink > 1) {
        const cv::Size size(std::max(1, int(rgb.cols / shrink)), std::max(1, int(rgb.rows / shrink)));
        cv::resize(rgb, small, size, 0, 0, cv::INTER_AREA);
        cv::resize(area, smallArea, size, 0, 0, cv::INTER_AREA);
        smallArea = smallArea > 0;
    }
    cv::inpaint(small, smallArea, filled, 3, cv::INPAINT_TELEA);
    filled.convertTo(low, CV_32F);
    cv::GaussianBlur(low, low, {0, 0}, sigma / shrink);
    if (shrink > 1)
        cv::resize(low, low, rgb.size(), 0, 0, cv::INTER_LINEAR);
    return low;
}

// What both heals share, inside `box` of the picture: the area (non-zero
// in `area`) given its shading, plus the
// texture finer than `grain` of the box moved by `offset`, laid over each opaque pixel
// the caller allows with the weight `weight(x, y)` gives (0 leaves it).
// The blend is written by hand: the fade, the opaque-only rule and the
// caller's mask decide per pixel, which no OpenCV call combines.
template <typename Weight>
void healInBox(QImage& picture, const cv::Rect& box, const cv::Mat& area, double sigma, double grain,
               std::optional<cv::Point> offset, Weight&& weight, const std::function<bool(QPointF)>& allows)
{
    const cv::Rect whole(0, 0, picture.width(), picture.height());
    const cv::Mat all(picture.height(), picture.width(), CV_8UC4, picture.bits(), size_t(picture.bytesPerLine()));
    cv::Mat pixels = all(box), target, texture = cv::Mat::zeros(box.size(), CV_32FC3);
    cv::cvtColor(pixels, target, cv::COLOR_RGBA2RGB);
    const cv::Mat low = shadingOf(target, area, sigma);
    cv::Mat own, ownLow;
    target.convertTo(own, CV_32F);
    cv::GaussianBlur(own, ownLow, {0, 0}, grain);
    own -= ownLow;
    bool moved = false; // texture from elsewhere: it and the own cross-fade keeping their strength
    if (offset) {
        const cv::Rect from = box + *offset;
        if ((from & whole) == from) {
            cv::Mat patch, smooth;
            cv::cvtColor(all(from), patch, cv::COLOR_RGBA2RGB);
            patch.convertTo(patch, CV_32F);
            cv::GaussianBlur(patch, smooth, {0, 0}, grain);
            texture = patch - smooth;
            limitToGrain(texture);
            moved = *offset != cv::Point(0, 0);
        }
    }
    for (int y = 0; y < box.height; ++y)
        for (int x = 0; x < box.width; ++x) {
            uchar* p = pixels.ptr<uchar>(y, x);
            const double alpha = p[3] == 255 ? weight(x, y) : 0;
            if (alpha <= 0 || !allows(QPointF(box.x + x, box.y + y)))
                continue;
            // Two unrelated textures mixed half and half keep 0.7 of their
            // grain: weights whose squares sum to 1 keep all of it.
            const double norm = moved ? std::hypot(alpha, 1 - alpha) : 1;
            const cv::Vec3f shade = ownLow.at<cv::Vec3f>(y, x) + alpha * (low.at<cv::Vec3f>(y, x) - ownLow.at<cv::Vec3f>(y, x));
            const cv::Vec3f want = shade + (alpha / norm) * texture.at<cv::Vec3f>(y, x)
                                   + ((1 - alpha) / norm) * own.at<cv::Vec3f>(y, x);
            for (int k = 0; k < 3; ++k)
                p[k] = cv::saturate_cast<uchar>(want[k]);
        }
}

// 1 inside, a cosine from 1 to 0 over the fade, 0 beyond.
double faded(double beyondEdge, double fade)
{
    if (beyondEdge >= fade)
        return 0;
    return beyondEdge <= 0 ? 1 : 0.5 + 0.5 * std::cos(std::numbers::pi * beyondEdge / fade);
}

} // namespace

void healDisc(QImage& picture, QPointF centre, double radius, double fade, std::optional<QPointF> source,
              const std::function<bool(QPointF)>& allows)
{
    const double sigma = std::max(1.0, radius / 2);
    const int half = int(std::ceil(radius + fade + 3 * sigma));
    const cv::Point c(int(std::lround(centre.x())), int(std::lround(centre.y())));
    const cv::Rect box = cv::Rect(c.x - half, c.y - half, 2 * half + 1, 2 * half + 1)
                         & cv::Rect(0, 0, picture.width(), picture.height());
    cv::Mat disk = cv::Mat::zeros(box.size(), CV_8U);
    cv::circle(disk, c - box.tl(), int(std::ceil(radius)), 255, cv::FILLED);
    std::optional<cv::Point> offset;
    if (source)
        offset = cv::Point(int(std::lround(source->x())), int(std::lround(source->y()))) - c;
    healInBox(picture, box, disk, sigma, sigma, offset, [&](int x, int y) {
        return faded(QLineF(QPointF(box.x + x, box.y + y), centre).length() - radius, fade);
    }, allows);
}

void healArea(QImage& picture, const cv::Mat& mask, QPoint origin, double fade, double sigma,
              std::optional<QPoint> sourceOffset, const std::function<bool(QPointF)>& allows, double grain)
{
    const int margin = int(std::ceil(fade + 3 * sigma));
    const cv::Rect placed(origin.x(), origin.y(), mask.cols, mask.rows);
    const cv::Rect box = cv::Rect(placed.x - margin, placed.y - margin, placed.width + 2 * margin,
                                  placed.height + 2 * margin)
                         & cv::Rect(0, 0, picture.width(), picture.height());
    if (box.empty())
        return;
    cv::Mat area = cv::Mat::zeros(box.size(), CV_8U), distance;
    const cv::Rect inBox = (placed & box) - box.tl();
    mask(inBox + (box.tl() - placed.tl())).copyTo(area(inBox));
    area = area != 0;
    cv::distanceTransform(area == 0, distance, cv::DIST_L2, cv::DIST_MASK_PRECISE);
    std::optional<cv::Point> offset;
    if (sourceOffset)
        offset = cv::Point(sourceOffset->x(), sourceOffset->y());
    healInBox(picture, box, area, sigma, grain > 0 ? grain : sigma, offset, [&](int x, int y) { return faded(distance.at<float>(y, x), fade); },
              allows);
}
