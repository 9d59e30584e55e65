#include "FaceSkin.h"

#include "ImageSpace.h"
#include "Picture.h"

#include <QPainter>
#include <QPainterPath>

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace {

// The band of a brow: its points and the same points lifted by its height.
QPainterPath browBand(const FaceLandmarks& p, int first, double height)
{
    QPainterPath band(p[first]);
    for (int i = first + 1; i <= first + 4; ++i)
        band.lineTo(p[i]);
    for (int i = first + 4; i >= first; --i)
        band.lineTo(p[i] - QPointF(0, height));
    band.closeSubpath();
    return band;
}

cv::Mat skinMask(const OpenedPhoto& photo, const FaceSkin& skin, double faceWidth, double workingWidth)
{
    QImage mask(skin.rgb.cols, skin.rgb.rows, QImage::Format_Grayscale8);
    mask.fill(Qt::black);
    const FaceRegions& r = photo.regions;
    const double h = photo.imgSize.height();
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(skin.scale, skin.scale);
    painter.translate(-skin.area.x, -skin.area.y);
    painter.fillPath(flipped(r.path_Face, h), Qt::white);
    for (const QPainterPath* feature : {&r.path_Eye_Left, &r.path_Eye_Right, &r.path_Space_Between_Eye_Eyebrow_Left,
                                        &r.path_Space_Between_Eye_Eyebrow_Right, &r.path_Nose, &r.path_Lips,
                                        &r.path_Inside_Mouth})
        painter.fillPath(flipped(*feature, h), Qt::black);
    const FaceLandmarks& landmarks = photo.facePointsRelativeToImageSize;
    painter.fillPath(browBand(landmarks, 17, 0.07 * faceWidth), Qt::black);
    painter.fillPath(browBand(landmarks, 22, 0.07 * faceWidth), Qt::black);
    painter.end();
    // Only what is wholly white counts, kept clear of the rest by 2 % of the face.
    cv::Mat allowed = cv::Mat(mask.height(), mask.width(), CV_8UC1, mask.bits(), size_t(mask.bytesPerLine())) == 255;
    const int margin = int(std::lround(0.02 * workingWidth));
    cv::erode(allowed, allowed, cv::getStructuringElement(cv::MORPH_ELLIPSE, {2 * margin + 1, 2 * margin + 1}));
    return allowed;
}

} // namespace

bool FaceSkin::allows(QPointF photoPoint) const
{
    const int x = int(std::floor((photoPoint.x() - area.x) * scale));
    const int y = int(std::floor((photoPoint.y() - area.y) * scale));
    return x >= 0 && y >= 0 && x < allowed.cols && y < allowed.rows && allowed.at<uchar>(y, x) != 0;
}

FaceSkin FaceSkin::of(const OpenedPhoto& photo, double workingWidth)
{
    FaceSkin skin;
    const FaceLandmarks& p = photo.facePointsRelativeToImageSize;
    if (p.size() < kLandmarkCount || photo.isEmpty())
        return skin;
    const double faceWidth = std::hypot(p[16].x() - p[0].x(), p[16].y() - p[0].y());
    const QRect area = flipped(photo.regions.rect_Face_Skin, photo.imgSize.height()).toAlignedRect()
                       & QRect(QPoint(0, 0), photo.img_Basic.size());
    if (faceWidth < 8 || area.width() < 8 || area.height() < 8)
        return skin;
    skin.area = cv::Rect(area.x(), area.y(), area.width(), area.height());
    skin.scale = workingWidth / faceWidth;
    const QImage picture = toPicture(photo.img_Basic);
    // Only read: a view of the picture's own rows.
    const cv::Mat pixels(picture.height(), picture.width(), CV_8UC4, const_cast<uchar*>(picture.constBits()),
                         size_t(picture.bytesPerLine()));
    const cv::Size size(std::max(1, int(std::lround(area.width() * skin.scale))),
                        std::max(1, int(std::lround(area.height() * skin.scale))));
    cv::Mat rgba;
    cv::resize(pixels(skin.area), rgba, size, 0, 0, skin.scale < 1 ? cv::INTER_AREA : cv::INTER_LINEAR);
    cv::cvtColor(rgba, skin.rgb, cv::COLOR_RGBA2RGB);
    skin.allowed = skinMask(photo, skin, faceWidth, workingWidth);
    return skin;
}
