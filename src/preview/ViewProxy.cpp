#include "ViewProxy.h"

#include "ImageSpace.h"
#include "Picture.h"

#include <QTransform>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace {

// Photo pixels beyond the view that a frame still composes: more than the
// widest blur reaches (three times the largest wrinkle blur, the skin
// smoothing radius), so the edge of the view looks as in the full picture.
constexpr int kMarginPixels = 128;

// Below this a whole composition is quick enough to follow the hand.
constexpr qint64 kLargePhotoPixels = 2'000'000;

// From photo pixels to frame pixels, both y down.
QTransform pictureToFrame(const ProxyFrame& frame)
{
    return QTransform::fromTranslate(-frame.area.x(), -frame.area.y())
        * QTransform::fromScale(double(frame.size.width()) / frame.area.width(),
                                double(frame.size.height()) / frame.area.height());
}

// The same between the image spaces (y up) of the photo and of the frame.
QTransform imageSpaceToFrame(const ProxyFrame& frame, double photoHeight)
{
    return imageSpaceToPicture(photoHeight) * pictureToFrame(frame) * imageSpaceToPicture(frame.size.height());
}

} // namespace

ProxyFrame proxyFrameFor(QSize photo, const QRectF& visible, double zoom)
{
    const double scale = std::min(zoom, 1.0);
    const QRect area =
        visible.toAlignedRect().adjusted(-kMarginPixels, -kMarginPixels, kMarginPixels, kMarginPixels) & QRect({}, photo);
    const QSize size(std::max(1, int(std::lround(area.width() * scale))),
                     std::max(1, int(std::lround(area.height() * scale))));
    return {area, size};
}

bool worthAProxy(QSize photo, const ProxyFrame& frame)
{
    const qint64 photoPixels = qint64(photo.width()) * photo.height();
    const qint64 framePixels = qint64(frame.size.width()) * frame.size.height();
    return !frame.isEmpty() && photoPixels >= kLargePhotoPixels && framePixels * 4 <= photoPixels;
}

OpenedPhoto proxyPhoto(const OpenedPhoto& photo, const ProxyFrame& frame)
{
    OpenedPhoto proxy;
    proxy.path = photo.path;
    proxy.metadata = photo.metadata;
    const QImage source = toPicture(photo.img_Basic);
    const QRect& a = frame.area;
    // A view of the area's rows, shrunk by averaging: every photo pixel
    // counts, as it would in the full picture seen from afar.
    const cv::Mat area(a.height(), a.width(), CV_8UC4, const_cast<uchar*>(source.constScanLine(a.y())) + a.x() * 4,
                       size_t(source.bytesPerLine()));
    proxy.img_Basic = makePicture(frame.size);
    cv::Mat shrunk(frame.size.height(), frame.size.width(), CV_8UC4, proxy.img_Basic.bits(),
                   size_t(proxy.img_Basic.bytesPerLine()));
    cv::resize(area, shrunk, shrunk.size(), 0, 0, cv::INTER_AREA);
    proxy.imgSize = QSizeF(frame.size);
    const QSizeF whole = photo.imgSize;
    const QRectF& part = photo.partOfOpened;
    proxy.partOfOpened = QRectF(part.x() + a.x() / whole.width() * part.width(),
                                part.y() + a.y() / whole.height() * part.height(), a.width() / whole.width() * part.width(),
                                a.height() / whole.height() * part.height());
    const QTransform map = pictureToFrame(frame);
    const auto mapped = [&](const FaceLandmarks& landmarks) {
        FaceLandmarks onFrame;
        for (const QPointF& landmark : landmarks)
            onFrame.append(map.map(landmark));
        return onFrame;
    };
    proxy.facePointsRelativeToImageSize = mapped(photo.facePointsRelativeToImageSize);
    deriveRegions(proxy);
    for (const PhotoFace& face : photo.otherFaces)
        proxy.otherFaces.push_back(faceOf(mapped(face.facePointsRelativeToImageSize), proxy.imgSize));
    return proxy;
}

PhotoEdits proxyPhotoEdits(const PhotoEdits& photoEdits, QSizeF photoSize, const ProxyFrame& frame)
{
    const QTransform picture = pictureToFrame(frame), image = imageSpaceToFrame(frame, photoSize.height());
    const auto points = [&](const PointList& list) {
        PointList mapped;
        for (const QPointF& p : list)
            mapped.append(picture.map(p));
        return mapped;
    };
    // Corner by corner: the map only moves and scales, and an area dragged
    // inside out stays inside out.
    const auto rect = [&](const QRectF& r) { return QRectF(image.map(r.topLeft()), image.map(r.bottomRight())); };
    // The rings' outlines are not carried over: the rings are drawn from
    // their points. Spots stay in percent of the opened photo, which the
    // frame's photo maps (OpenedPhoto::pixelAtOpenedPercent).
    PhotoEdits onFrame;
    onFrame.rect_Cheek_Left_Area_To_Paint = rect(photoEdits.rect_Cheek_Left_Area_To_Paint);
    onFrame.rect_Cheek_Right_Area_To_Paint = rect(photoEdits.rect_Cheek_Right_Area_To_Paint);
    onFrame.array_Eye_Darken_Left_Points = points(photoEdits.array_Eye_Darken_Left_Points);
    onFrame.array_Eye_Darken_Right_Points = points(photoEdits.array_Eye_Darken_Right_Points);
    onFrame.array_Healed_Spots = photoEdits.array_Healed_Spots;
    onFrame.array_Kept_Spots = photoEdits.array_Kept_Spots;
    onFrame.array_Heal_Strokes = photoEdits.array_Heal_Strokes;
    onFrame.array_Skin_Added_Strokes = photoEdits.array_Skin_Added_Strokes;
    onFrame.array_Skin_Removed_Strokes = photoEdits.array_Skin_Removed_Strokes;
    onFrame.facesLeftOut = photoEdits.facesLeftOut;
    for (const PhotoEdits::Shapes& shapes : photoEdits.otherFaceShapes)
        onFrame.otherFaceShapes.push_back(
            {rect(shapes.cheekLeft), rect(shapes.cheekRight), points(shapes.eyeLeft), points(shapes.eyeRight)});
    return onFrame;
}
