#pragma once

#include "FaceRegions.h"

#include <QPainterPath>
#include <QRectF>

// What the user reshaped with the mouse on the open photo: the two cheek
// paint areas and the two under-eye rings. They start as the photo's own
// regions, and every new photo starts them afresh; the photo itself is
// never changed after it was opened.
struct Reshaping {
    // Image space (y up), as the regions' rectangles.
    QRectF rect_Cheek_Left_Area_To_Paint;
    QRectF rect_Cheek_Right_Area_To_Paint;
    // Six points each, photo pixels with y from the top.
    PointList array_Eye_Darken_Left_Points;
    PointList array_Eye_Darken_Right_Points;
    // The rings' outlines as the under-eye panel's Reset draws them; the
    // compositor draws the rings from the points.
    QPainterPath path_Eye_Darken_Left;
    QPainterPath path_Eye_Darken_Right;

    // As the photo's regions have them.
    static Reshaping of(const FaceRegions& regions);

    // The under-eye rings become the eye outlines again, with their closed
    // outlines in image space.
    void resetUnderEyeRings(const FaceRegions& regions, double imageHeight);

    bool operator==(const Reshaping&) const = default;
};
