#include "PhotoEdits.h"

#include "OpenedPhoto.h"
#include "SinglePrecision.h"

#include <algorithm>
#include <cmath>
#include <iterator>

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

PhotoEdits PhotoEdits::of(const OpenedPhoto& photo)
{
    PhotoEdits edits = of(photo.regions);
    for (const PhotoFace& face : photo.otherFaces) {
        const FaceRegions& r = face.regions;
        edits.otherFaceShapes.push_back({r.rect_Cheek_Left_Area_To_Paint, r.rect_Cheek_Right_Area_To_Paint,
                                         r.array_Eye_Darken_Left_Points, r.array_Eye_Darken_Right_Points});
    }
    return edits;
}

void PhotoEdits::swapShapes(int face)
{
    if (face < 1 || size_t(face) > otherFaceShapes.size())
        return;
    Shapes& other = otherFaceShapes[size_t(face - 1)];
    std::swap(rect_Cheek_Left_Area_To_Paint, other.cheekLeft);
    std::swap(rect_Cheek_Right_Area_To_Paint, other.cheekRight);
    std::swap(array_Eye_Darken_Left_Points, other.eyeLeft);
    std::swap(array_Eye_Darken_Right_Points, other.eyeRight);
}

PhotoEdits PhotoEdits::ofFace(const OpenedPhoto& photo, int face) const
{
    PhotoEdits edits = *this;
    if (face > 0 && size_t(face) <= otherFaceShapes.size())
        edits.swapShapes(face);
    else if (face > 0) // made for the first face only (a settings file)
        edits = of(photo.otherFaces[size_t(face - 1)].regions);
    const auto isMine = [&](QPointF percent) { return photo.faceAt(photo.pixelAtOpenedPercent(percent)) == face; };
    const auto spots = [&](const PointList& all) {
        PointList mine;
        std::copy_if(all.begin(), all.end(), std::back_inserter(mine), isMine);
        return mine;
    };
    const auto strokes = [&](const QList<PointList>& all) {
        QList<PointList> mine;
        std::copy_if(all.begin(), all.end(), std::back_inserter(mine),
                     [&](const PointList& stroke) { return !stroke.isEmpty() && isMine(stroke.front()); });
        return mine;
    };
    edits.array_Healed_Spots = spots(array_Healed_Spots);
    edits.array_Kept_Spots = spots(array_Kept_Spots);
    edits.array_Heal_Strokes = strokes(array_Heal_Strokes);
    edits.array_Skin_Added_Strokes = strokes(array_Skin_Added_Strokes);
    edits.array_Skin_Removed_Strokes = strokes(array_Skin_Removed_Strokes);
    edits.facesLeftOut.clear();
    edits.otherFaceShapes.clear();
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
