#pragma once

#include "FaceRegions.h"

struct OpenedPhoto;

#include <QPainterPath>
#include <QRectF>

#include <array>
#include <vector>

// What the person did with the mouse on the open photo: the two cheek paint
// areas and the two under-eye rings reshaped, the spots clicked to heal or
// to keep. They belong to this photo: they start as its own regions (no
// spots), every new photo starts them afresh, and neither presets nor a
// batch carry them to another photo. The photo itself is never changed
// after it was opened.
struct PhotoEdits {
    // Image space (y up), as the regions' rectangles.
    QRectF rect_Cheek_Left_Area_To_Paint;
    QRectF rect_Cheek_Right_Area_To_Paint;
    // Six points each, photo pixels with y from the top.
    PointList array_Eye_Darken_Left_Points;
    PointList array_Eye_Darken_Right_Points;
    // The rings' outlines as the under-eye panel's Reset draws them. The
    // compositor draws the rings from the points, so frames do not carry
    // these along; they are the rings' outlines the program names.
    QPainterPath path_Eye_Darken_Left;
    QPainterPath path_Eye_Darken_Right;
    // The spots clicked, to heal and to keep, in percent of the photo with
    // y from its top.
    PointList array_Healed_Spots;
    PointList array_Kept_Spots;
    // The strokes healed along their paths (a scar, a stray hair, a line
    // of spots), each its points in percent of the photo, y from its top.
    QList<PointList> array_Heal_Strokes;
    // The strokes that add skin to the skin Natural Skin finds, and that take
    // skin away, the same way.
    QList<PointList> array_Skin_Added_Strokes;
    QList<PointList> array_Skin_Removed_Strokes;
    // With every face retouched, the faces left as they are (0 the first,
    // as OpenedPhoto::asFace counts them).
    QList<int> facesLeftOut;
    // And the other faces' blush areas and under-eye rings, as the ones
    // above are the first face's.
    struct Shapes {
        QRectF cheekLeft, cheekRight;
        PointList eyeLeft, eyeRight;
        bool operator==(const Shapes&) const = default;
    };
    std::vector<Shapes> otherFaceShapes;

    // Calls visit(name, field, unit) for what a settings file keeps of it,
    // in this order: the spots in percent of the photo, the areas and ring
    // points in its pixels. A field added here is kept with the photo.
    enum class Unit { Percent, Pixels };
    template <typename Visit>
    void forEachField(Visit&& visit)
    {
        visit("array_Healed_Spots", array_Healed_Spots, Unit::Percent);
        visit("array_Kept_Spots", array_Kept_Spots, Unit::Percent);
        visit("array_Heal_Strokes", array_Heal_Strokes, Unit::Percent);
        visit("array_Skin_Added_Strokes", array_Skin_Added_Strokes, Unit::Percent);
        visit("array_Skin_Removed_Strokes", array_Skin_Removed_Strokes, Unit::Percent);
        visit("rect_Cheek_Left_Area_To_Paint", rect_Cheek_Left_Area_To_Paint, Unit::Pixels);
        visit("rect_Cheek_Right_Area_To_Paint", rect_Cheek_Right_Area_To_Paint, Unit::Pixels);
        visit("array_Eye_Darken_Left_Points", array_Eye_Darken_Left_Points, Unit::Pixels);
        visit("array_Eye_Darken_Right_Points", array_Eye_Darken_Right_Points, Unit::Pixels);
    }

    // As the photo's regions have them.
    static PhotoEdits of(const FaceRegions& regions);
    // The same for every face of the photo.
    static PhotoEdits of(const OpenedPhoto& photo);

    // Face `face`'s areas and rings trade places with the first face's (a
    // second call puts them back): the mouse reshapes the face it is on.
    void swapShapes(int face);

    // What belongs to face `face` of `photo`: the first face's areas and
    // rings are these, another face's its own regions'; each spot and
    // stroke belongs to the face nearest it (a stroke by where it starts).
    PhotoEdits ofFace(const OpenedPhoto& photo, int face) const;

    // The under-eye rings become the eye outlines again, with their closed
    // outlines in image space.
    void resetUnderEyeRings(const FaceRegions& regions, double imageHeight);

    bool operator==(const PhotoEdits&) const = default;
};

// The handles the mouse aims at while a mode is on, and that the
// compositor draws: percent of the photo (image space, y up) and the small
// squares in photo pixels. Empty for a mode that is off.
struct Handles {
    // Cheek paint areas' corners, in the order left-bottom, right-bottom,
    // left-top, right-top (pointPercenteLBLeft, …RBLeft, …LTLeft, …RTLeft).
    std::array<QPointF, 4> pointPercenteLeft, pointPercenteRight;
    std::array<QRectF, 4> rectPointLeft, rectPointRight;
    // The six under-eye points of each side (pointPercente1Left … 6Left).
    std::array<QPointF, 6> pointPercenteEyeLeft, pointPercenteEyeRight;
    std::array<QRectF, 6> rectPointEyeLeft, rectPointEyeRight;
};

// An image-space point in percent of the photo, in single precision.
QPointF percentOf(QPointF imagePoint, QSizeF imgSize);

// Whether the pointer at `percent` of the photo aims at a handle: both
// are in the same one-percent cell of the photo.
bool inHandleCell(QPointF percent, QPointF handle);

// A handle: the small square centred on an image-space point, with half a
// side of a three-hundredth of the photo's larger side.
QRectF handleSquare(QPointF centre, QSizeF imgSize);
