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

// The forehead: from the brows up to 0.42 of the face's width, as wide as
// the brows. The face's outline stops short of the hairline, and foreheads
// break out as much as cheeks.
QPainterPath forehead(const FaceLandmarks& p, double faceWidth)
{
    QPainterPath band(p[17]);
    for (int i = 18; i <= 26; ++i)
        band.lineTo(p[i]);
    const QPointF up(0, -0.42 * faceWidth);
    band.lineTo(p[26] + up * 0.8);
    band.quadTo((p[17] + p[26]) / 2 + 1.2 * up, p[17] + up * 0.8);
    band.closeSubpath();
    return band;
}

// What has the colour of the face's skin (not a fringe of hair, a scarf,
// the background the outline strays into), its small holes (spots) filled.
cv::Mat skinColoured(const FaceSkin& skin, const cv::Mat& face)
{
    cv::Mat lab;
    cv::cvtColor(skin.rgb, lab, cv::COLOR_RGB2Lab);
    cv::Mat median;
    std::vector<cv::Mat> channels;
    cv::split(lab, channels);
    cv::Scalar typical;
    for (int c = 0; c < 3; ++c) {
        std::vector<uchar> values;
        for (int y = 0; y < face.rows; y += 2)
            for (int x = 0; x < face.cols; x += 2)
                if (face.at<uchar>(y, x))
                    values.push_back(channels[size_t(c)].at<uchar>(y, x));
        if (values.empty())
            return cv::Mat::zeros(face.size(), CV_8U);
        std::nth_element(values.begin(), values.begin() + std::ptrdiff_t(values.size() / 2), values.end());
        typical[c] = values[values.size() / 2];
    }
    cv::Mat near;
    cv::inRange(lab, typical - cv::Scalar(70, 14, 16), typical + cv::Scalar(70, 14, 16), near);
    const int fill = std::max(3, int(0.05 * skin.workingWidth)) | 1;
    cv::morphologyEx(near, near, cv::MORPH_CLOSE, cv::getStructuringElement(cv::MORPH_ELLIPSE, {fill, fill}));
    return near;
}

cv::Mat skinMask(const OpenedPhoto& photo, const FaceSkin& skin, double faceWidth, double workingWidth)
{
    QImage mask(skin.rgb.cols, skin.rgb.rows, QImage::Format_Grayscale8);
    mask.fill(Qt::black);
    const FaceRegions& r = photo.regions;
    const double h = photo.imgSize.height();
    QImage foreheadMask = mask;
    const FaceLandmarks& landmarks = photo.facePointsRelativeToImageSize;
    QPainter painter(&foreheadMask);
    painter.scale(skin.scale, skin.scale);
    painter.translate(-skin.area.x, -skin.area.y);
    painter.fillPath(forehead(landmarks, faceWidth), Qt::white);
    painter.fillPath(flipped(r.path_Face, h), Qt::black);
    painter.end();
    painter.begin(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(skin.scale, skin.scale);
    painter.translate(-skin.area.x, -skin.area.y);
    painter.fillPath(flipped(r.path_Face, h), Qt::white);
    painter.end();
    // The jaw's landmarks lie a little inside the face's edge: the face
    // reaches 2.5 % beyond them where it has the skin's colour.
    cv::Mat face = cv::Mat(mask.height(), mask.width(), CV_8UC1, mask.bits(), size_t(mask.bytesPerLine())) == 255;
    const int beyond = 2 * int(std::lround(0.025 * workingWidth)) + 1;
    cv::dilate(face, face, cv::getStructuringElement(cv::MORPH_ELLIPSE, {beyond, beyond}));
    face.copyTo(cv::Mat(mask.height(), mask.width(), CV_8UC1, mask.bits(), size_t(mask.bytesPerLine())));
    const cv::Mat foreheadOnly(foreheadMask.height(), foreheadMask.width(), CV_8UC1, foreheadMask.bits(),
                               size_t(foreheadMask.bytesPerLine()));
    const cv::Mat skinColour = skinColoured(skin, face);
    cv::Mat forehead = skinColour & (foreheadOnly == 255);
    cv::dilate(forehead, forehead, cv::getStructuringElement(cv::MORPH_ELLIPSE, {5, 5})); // over the outline's soft edge
    cv::Mat(mask.height(), mask.width(), CV_8UC1, mask.bits(), size_t(mask.bytesPerLine())).setTo(255, forehead);
    painter.begin(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(skin.scale, skin.scale);
    painter.translate(-skin.area.x, -skin.area.y);
    for (const QPainterPath* feature : {&r.path_Eye_Left, &r.path_Eye_Right, &r.path_Space_Between_Eye_Eyebrow_Left,
                                        &r.path_Space_Between_Eye_Eyebrow_Right, &r.path_Nose, &r.path_Lips,
                                        &r.path_Inside_Mouth})
        painter.fillPath(flipped(*feature, h), Qt::black);
    painter.fillPath(browBand(landmarks, 17, 0.04 * faceWidth), Qt::black);
    painter.fillPath(browBand(landmarks, 22, 0.04 * faceWidth), Qt::black);
    painter.end();
    // Only what is wholly white and of the skin's colour counts, kept clear of
    // the rest by 1.5 % of the face.
    cv::Mat allowed = cv::Mat(mask.height(), mask.width(), CV_8UC1, mask.bits(), size_t(mask.bytesPerLine())) == 255;
    allowed &= skinColour;
    const int margin = int(std::lround(0.015 * workingWidth));
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

FaceSkin FaceSkin::of(const OpenedPhoto& photo, double workingWidth, const QRect& alsoOver)
{
    FaceSkin skin;
    const FaceLandmarks& p = photo.facePointsRelativeToImageSize;
    if (p.size() < kLandmarkCount || photo.isEmpty())
        return skin;
    const double faceWidth = std::hypot(p[16].x() - p[0].x(), p[16].y() - p[0].y());
    const QRect area = (flipped(photo.regions.rect_Face_Skin, photo.imgSize.height()).toAlignedRect()
                        | forehead(p, faceWidth).boundingRect().toAlignedRect() | alsoOver)
                       & QRect(QPoint(0, 0), photo.img_Basic.size());
    if (faceWidth < 8 || area.width() < 8 || area.height() < 8)
        return skin;
    skin.area = cv::Rect(area.x(), area.y(), area.width(), area.height());
    skin.scale = workingWidth / faceWidth;
    skin.workingWidth = workingWidth;
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
