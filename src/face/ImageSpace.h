#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QTransform>

// Region outlines and rectangles live in image space: photo pixels with the
// origin at the bottom-left corner and y up. Pictures, QPainter, the
// landmarks and widgets have y down. Over a height H the two map onto each
// other by (x, y) -> (x, H - y), which is its own inverse, so one helper per
// kind of shape serves both ways. Every flip of the program goes through
// them, so nothing drawn from image space ends upside down.

inline QPointF flipped(QPointF point, double height)
{
    return {point.x(), height - point.y()};
}

// The same rectangle on the other side of the flip, the right way up: its
// top edge becomes its bottom edge.
inline QRectF flipped(const QRectF& rect, double height)
{
    return {rect.x(), height - rect.y() - rect.height(), rect.width(), rect.height()};
}

// The painter transform that draws image-space shapes into a picture of a
// photo `height` pixels high.
inline QTransform imageSpaceToPicture(double height)
{
    return QTransform(1, 0, 0, -1, 0, height);
}

inline QPainterPath flipped(const QPainterPath& path, double height)
{
    return imageSpaceToPicture(height).map(path);
}
