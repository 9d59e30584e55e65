#include "PhotoEdits.h"

#include "SinglePrecision.h"

#include <algorithm>
#include <cmath>

PhotoEdits PhotoEdits::of(const FaceRegions& r)
{
    PhotoEdits edits;
    edits.rect_Cheek_Left_Area_To_Paint = r.rect_Cheek_Left_Area_To_Paint;
    edits.rect_Cheek_Right_Area_To_Paint = r.rect_Cheek_Right_Area_To_Paint;
    edits.array_Eye_Darken_Left_Points = r.array_Eye_Darken_Left_Points;
    edits.array_Eye_Darken_Right_Points = r.array_Eye_Darken_Right_Points;
    edits.path_Eye_Darken_Left = r.path_Eye_Darken_Left;
    edits.path_Eye_Darken_Right = r.path_Eye_Darken_Right;
    return edits;
}

void PhotoEdits::resetUnderEyeRings(const FaceRegions& regions, double imageHeight)
{
    array_Eye_Darken_Left_Points = regions.array_Eye_Left_Points;
    array_Eye_Darken_Right_Points = regions.array_Eye_Right_Points;
    path_Eye_Darken_Left = outlineThrough(array_Eye_Darken_Left_Points, imageHeight);
    path_Eye_Darken_Right = outlineThrough(array_Eye_Darken_Right_Points, imageHeight);
}

QPointF percentOf(QPointF imagePoint, QSizeF imgSize)
{
    return singlePoint(imagePoint.x() * 100 / imgSize.width(), imagePoint.y() * 100 / imgSize.height());
}

bool inHandleCell(QPointF percent, QPointF handle)
{
    return std::floor(percent.x()) == std::floor(handle.x()) && std::floor(percent.y()) == std::floor(handle.y());
}

QRectF handleSquare(QPointF centre, QSizeF imgSize)
{
    const double s = std::max(imgSize.width(), imgSize.height()) / 300;
    return {centre.x() - s, centre.y() - s, 2 * s, 2 * s};
}
