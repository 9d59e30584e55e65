#pragma once

#include <QRectF>
#include <QTransform>

// Region outlines and rectangles live in image space: photo pixels with the
// origin at the bottom-left corner and y up. Pictures and QPainter have y
// down. These are the only places that turn one into the other, so
// nothing drawn from image space ends upside down.

// The painter transform that draws image-space shapes into a picture of a
// photo `imageHeight` pixels high.
inline QTransform imageSpaceToPicture(double imageHeight)
{
    return QTransform(1, 0, 0, -1, 0, imageHeight);
}

// The same point in picture coordinates.
inline QPointF picturePointOf(QPointF imagePoint, double imageHeight)
{
    return {imagePoint.x(), imageHeight - imagePoint.y()};
}

// The same rectangle in picture coordinates, the right way up.
inline QRectF pictureRectOf(const QRectF& imageRect, double imageHeight)
{
    return {imageRect.x(), imageHeight - imageRect.y() - imageRect.height(), imageRect.width(), imageRect.height()};
}
