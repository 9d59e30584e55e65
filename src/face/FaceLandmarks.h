#pragma once

#include <QList>
#include <QPointF>

// The 68 landmarks of the one face on a photo, in dlib's 68-point order, as
// whole pixel positions of the photo with the origin at its top-left pixel
// and y downwards. "Left" in the names of the regions built from them means
// the image-left side: points 36-41 (eye) and 17-21 (eyebrow).
using FaceLandmarks = QList<QPointF>;

inline constexpr int kLandmarkCount = 68;

// A list of points: a region's outline points, the under-eye rings' points.
using PointList = QList<QPointF>;
