#pragma once

#include "FaceLandmarks.h"

#include <QList>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

// Every region of the face the effects work on, derived from the 68
// landmarks once per photo.
//
// Point lists are in photo pixels with the origin top-left, y down, like the
// landmarks. Paths, rectangles and centres are in image space: origin at the
// bottom-left corner, y up, every point flipped as (x, H - y) with H the
// photo's height.
struct FaceRegions {
    // Jaw (F0-F16) and the forehead arc over it (F17-F33).
    PointList array_Face_Points;
    QPainterPath path_Face;
    QRectF rect_Face_Skin;

    PointList array_Eye_Left_Points; // P36-P41
    QPainterPath path_Eye_Left;
    QRectF rect_Full_Eye_Left;
    // The eye outline pulled a sixth of the way towards its rectangle's
    // centre: the iris area without the corners.
    QPainterPath path_Inside_Eye_Left;
    QRectF rect_Eye_Left;

    PointList array_Eye_Right_Points; // P42-P47
    QPainterPath path_Eye_Right;
    QRectF rect_Full_Eye_Right;
    QPainterPath path_Inside_Eye_Right;
    QRectF rect_Eye_Right;

    // The under-eye rings start as the eye outlines; the mouse reshapes them.
    // Their paths are drawn from the lists when the effect is rendered.
    PointList array_Eye_Darken_Left_Points;
    PointList array_Eye_Darken_Right_Points;
    QPainterPath path_Eye_Darken_Left;
    QPainterPath path_Eye_Darken_Right;

    PointList array_Eye_Lid_Left;
    PointList array_Eye_Lid_Right;
    QPainterPath path_Eye_Lid_Left;
    QPainterPath path_Eye_Lid_Right;

    PointList array_Space_Between_Eye_Eyebrow_Left_Points;
    PointList array_Space_Between_Eye_Eyebrow_Right_Points;
    QPainterPath path_Space_Between_Eye_Eyebrow_Left;
    QPainterPath path_Space_Between_Eye_Eyebrow_Right;

    PointList array_Nose_Points; // nostrils P31-P35, then the tip P30
    QPainterPath path_Nose;
    QRectF rect_Nose;

    PointList array_Mouth_Points; // outer lip contour P48-P59
    QPainterPath path_Lips;
    QRectF rect_Lips;

    PointList array_Inside_Mouth_Points; // inner lip contour P60-P67
    QPainterPath path_Inside_Mouth;
    QRectF rect_Inside_Mouth;

    // The cheek triangles are deliberately not mirror images: P2, P30, P40
    // on the left, P34, P46, P13 on the right.
    PointList array_Cheek_Left_Points;
    PointList array_Cheek_Right_Points;
    QPainterPath path_Cheek_Left;
    QPainterPath path_Cheek_Right;
    // Origin is the minimum corner and the *size holds the maximum corner*,
    // not the extent: the layout the rest of the program expects.
    QRectF rect_Cheek_Left;
    QRectF rect_Cheek_Right;
    QPointF pt_Center_Cheek_Left;
    QPointF pt_Center_Cheek_Right;
    // The middle half of each triangle's bounding box: where blush goes.
    QRectF rect_Cheek_Left_Area_To_Paint;
    QRectF rect_Cheek_Right_Area_To_Paint;

    // Builds every region from 68 landmarks of a photo of `imgSize` pixels.
    static FaceRegions build(const FaceLandmarks& landmarks, QSizeF imgSize);

    // Calls visit(name, field) for every field above, in declaration order.
    template <typename Visitor>
    void forEachField(Visitor&& visit) const;
};

// The closed image-space outline through photo points (y from the top):
// each point flipped, in order, and back to the first. Every region path
// but the face's is made this way.
QPainterPath outlineThrough(const PointList& photoPoints, double imageHeight);

// Rotates (px, py) about (cx, cy) by `degrees`. Centre and angle arrive in
// single precision, the angle is turned into radians in single precision, the
// rotation is done in double.
QPointF rotate_point(float cx, float cy, float degrees, double px, double py);

// The centroid of three points, in single precision.
QPointF Get_Triangle_Center(QPointF p1, QPointF p2, QPointF p3);

// (100 x / W, 100 - 100 y / H) in single precision: percent of the photo with
// the origin at the bottom-left.
QPointF toPercentOfImage(QPointF point, QSizeF imgSize);
PointList toPercentOfImage(const PointList& points, QSizeF imgSize);

template <typename Visitor>
void FaceRegions::forEachField(Visitor&& visit) const
{
#define BELLAVENOR_FIELD(name) visit(#name, name)
    BELLAVENOR_FIELD(array_Face_Points);
    BELLAVENOR_FIELD(path_Face);
    BELLAVENOR_FIELD(rect_Face_Skin);
    BELLAVENOR_FIELD(array_Eye_Left_Points);
    BELLAVENOR_FIELD(path_Eye_Left);
    BELLAVENOR_FIELD(rect_Full_Eye_Left);
    BELLAVENOR_FIELD(path_Inside_Eye_Left);
    BELLAVENOR_FIELD(rect_Eye_Left);
    BELLAVENOR_FIELD(array_Eye_Right_Points);
    BELLAVENOR_FIELD(path_Eye_Right);
    BELLAVENOR_FIELD(rect_Full_Eye_Right);
    BELLAVENOR_FIELD(path_Inside_Eye_Right);
    BELLAVENOR_FIELD(rect_Eye_Right);
    BELLAVENOR_FIELD(array_Eye_Darken_Left_Points);
    BELLAVENOR_FIELD(array_Eye_Darken_Right_Points);
    BELLAVENOR_FIELD(path_Eye_Darken_Left);
    BELLAVENOR_FIELD(path_Eye_Darken_Right);
    BELLAVENOR_FIELD(array_Eye_Lid_Left);
    BELLAVENOR_FIELD(array_Eye_Lid_Right);
    BELLAVENOR_FIELD(path_Eye_Lid_Left);
    BELLAVENOR_FIELD(path_Eye_Lid_Right);
    BELLAVENOR_FIELD(array_Space_Between_Eye_Eyebrow_Left_Points);
    BELLAVENOR_FIELD(array_Space_Between_Eye_Eyebrow_Right_Points);
    BELLAVENOR_FIELD(path_Space_Between_Eye_Eyebrow_Left);
    BELLAVENOR_FIELD(path_Space_Between_Eye_Eyebrow_Right);
    BELLAVENOR_FIELD(array_Nose_Points);
    BELLAVENOR_FIELD(path_Nose);
    BELLAVENOR_FIELD(rect_Nose);
    BELLAVENOR_FIELD(array_Mouth_Points);
    BELLAVENOR_FIELD(path_Lips);
    BELLAVENOR_FIELD(rect_Lips);
    BELLAVENOR_FIELD(array_Inside_Mouth_Points);
    BELLAVENOR_FIELD(path_Inside_Mouth);
    BELLAVENOR_FIELD(rect_Inside_Mouth);
    BELLAVENOR_FIELD(array_Cheek_Left_Points);
    BELLAVENOR_FIELD(array_Cheek_Right_Points);
    BELLAVENOR_FIELD(path_Cheek_Left);
    BELLAVENOR_FIELD(path_Cheek_Right);
    BELLAVENOR_FIELD(rect_Cheek_Left);
    BELLAVENOR_FIELD(rect_Cheek_Right);
    BELLAVENOR_FIELD(pt_Center_Cheek_Left);
    BELLAVENOR_FIELD(pt_Center_Cheek_Right);
    BELLAVENOR_FIELD(rect_Cheek_Left_Area_To_Paint);
    BELLAVENOR_FIELD(rect_Cheek_Right_Area_To_Paint);
#undef BELLAVENOR_FIELD
}
