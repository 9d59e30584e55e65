#include "FaceRegions.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr double kHeight = 1000;

// 68 distinct landmarks on a 1000 × 1000 photo; tests move the ones they
// look at.
FaceLandmarks syntheticLandmarks()
{
    FaceLandmarks p;
    for (int i = 0; i < kLandmarkCount; ++i)
        p.append(QPointF(100 + 7 * i, 300 + 3 * (i % 11)));
    return p;
}

FaceRegions build(const FaceLandmarks& p, QSizeF size = {1000, kHeight})
{
    return FaceRegions::build(p, size);
}

QList<QPointF> vertices(const QPainterPath& path)
{
    QList<QPointF> points;
    for (int i = 0; i < path.elementCount(); ++i)
        points.append(path.elementAt(i));
    return points;
}

QPointF flip(QPointF p)
{
    return {p.x(), kHeight - p.y()};
}

} // namespace

TEST(FaceRegions, PathsAndRectanglesAreFlippedPointListsAreNot)
{
    FaceLandmarks p = syntheticLandmarks();
    p[48] = {400, 0}; // a lip corner on the photo's top row
    const FaceRegions r = build(p);

    EXPECT_EQ(r.array_Mouth_Points.first(), QPointF(400, 0));
    EXPECT_EQ(vertices(r.path_Lips).first(), QPointF(400, kHeight)) << "top row lies at height H";
    EXPECT_EQ(r.rect_Lips.bottom(), kHeight);
    EXPECT_EQ(r.path_Lips.fillRule(), Qt::WindingFill) << "outlines fill by the non-zero rule";
}

TEST(FaceRegions, EveryOutlineIsClosedBackToItsFirstPoint)
{
    const FaceRegions r = build(syntheticLandmarks());
    const QList<QPointF> eye = vertices(r.path_Eye_Left);

    ASSERT_EQ(eye.size(), 7); // six points and the closing repeat
    EXPECT_EQ(eye.last(), eye.first());
    QList<QPointF> expected;
    for (const QPointF& point : r.array_Eye_Left_Points)
        expected.append(flip(point));
    EXPECT_EQ(eye.mid(0, 6), expected);
}

TEST(FaceRegions, ForeheadArcOverALevelJawLine)
{
    FaceLandmarks p = syntheticLandmarks();
    p[0] = {200, 600};
    p[16] = {600, 600}; // d = 200
    const PointList face = build(p).array_Face_Points;

    ASSERT_EQ(face.size(), 34);
    // F33 ends on P16; the angle's single-precision radians leave it a hair
    // below, which rounding up turns into one pixel.
    EXPECT_EQ(face[33].x(), 600);
    EXPECT_NEAR(face[33].y(), 600, 1);
    EXPECT_GT(face[17].x(), 200);
    EXPECT_LT(face[17].x(), 210) << "F17 lies just right of P0";
    EXPECT_NEAR(600 - face[17].y(), 0.18 * 200, 2) << "and about 0.18 |d| above it";
    EXPECT_NEAR(600 - face[24].y(), 0.996 * 200, 1.5);
    EXPECT_NEAR(600 - face[25].y(), 0.996 * 200, 1.5);
    for (int i = 17; i <= 33; ++i) {
        EXPECT_EQ(face[i].x(), std::ceil(face[i].x())) << "whole pixels, rounded up";
        EXPECT_LE(face[i].y(), 601) << "the arc bulges up over the forehead";
    }
}

TEST(FaceRegions, FacePathWalksTheJawThenTheArcBackwards)
{
    const FaceRegions r = build(syntheticLandmarks());
    const QList<QPointF> path = vertices(r.path_Face);

    ASSERT_EQ(path.size(), 35);
    EXPECT_EQ(path[16], flip(r.array_Face_Points[16]));
    EXPECT_EQ(path[17], flip(r.array_Face_Points[33])) << "F33 comes right after F16";
    EXPECT_EQ(path[33], flip(r.array_Face_Points[17]));
    EXPECT_EQ(path[34], path[0]);
}

TEST(FaceRegions, EyelidsLiftTowardsTheBrowWithTheirDeliberateAsymmetry)
{
    FaceLandmarks p = syntheticLandmarks();
    p[38] = {300, 400};
    p[20] = {340, 360}; // brow to the right of and above the lid point
    p[44] = {600, 400};
    p[25] = {640, 360};
    const FaceRegions r = build(p);

    EXPECT_EQ(r.array_Eye_Lid_Left[3], QPointF(290, 390)) << "L2 moves away horizontally";
    EXPECT_EQ(r.array_Eye_Lid_Right[3], QPointF(610, 390)) << "R2 moves towards the brow";
    EXPECT_EQ(r.array_Eye_Lid_Left.size(), 8);
    EXPECT_EQ(r.array_Eye_Lid_Left[0], p[36]);
    EXPECT_EQ(r.array_Eye_Lid_Left.mid(5), (PointList{p[39], p[38], p[37]}));
}

// Landmark i of the synthetic face is (100 + 7i, 300 + 3(i mod 11)); every
// list below is written out from that by hand.
TEST(FaceRegions, EveryPointListHoldsItsPointsInTheStatedOrder)
{
    const FaceRegions r = build(syntheticLandmarks());

    EXPECT_EQ(r.array_Eye_Left_Points, (PointList{{352, 309}, {359, 312}, {366, 315}, {373, 318}, {380, 321}, {387, 324}}));
    EXPECT_EQ(r.array_Eye_Right_Points, (PointList{{394, 327}, {401, 330}, {408, 300}, {415, 303}, {422, 306}, {429, 309}}));
    EXPECT_EQ(r.array_Mouth_Points, (PointList{{436, 312}, {443, 315}, {450, 318}, {457, 321}, {464, 324}, {471, 327}, {478, 330}, {485, 300}, {492, 303}, {499, 306}, {506, 309}, {513, 312}}));
    EXPECT_EQ(r.array_Inside_Mouth_Points, (PointList{{520, 315}, {527, 318}, {534, 321}, {541, 324}, {548, 327}, {555, 330}, {562, 300}, {569, 303}}));
    EXPECT_EQ(r.array_Nose_Points, (PointList{{317, 327}, {324, 330}, {331, 300}, {338, 303}, {345, 306}, {310, 324}}));
    EXPECT_EQ(r.array_Space_Between_Eye_Eyebrow_Left_Points, (PointList{{352, 309}, {219, 318}, {226, 321}, {233, 324}, {240, 327}, {247, 330}, {373, 318}, {366, 315}, {359, 312}}));
    EXPECT_EQ(r.array_Space_Between_Eye_Eyebrow_Right_Points, (PointList{{394, 327}, {254, 300}, {261, 303}, {268, 306}, {275, 309}, {282, 312}, {415, 303}, {408, 300}, {401, 330}}));
    EXPECT_EQ(r.array_Cheek_Left_Points, (PointList{{114, 306}, {310, 324}, {380, 321}}));
    EXPECT_EQ(r.array_Cheek_Right_Points, (PointList{{338, 303}, {422, 306}, {191, 306}}));
    EXPECT_EQ(r.array_Eye_Darken_Left_Points, r.array_Eye_Left_Points);
    EXPECT_EQ(r.array_Eye_Darken_Right_Points, r.array_Eye_Right_Points);
    // Lid points a quarter of the way to the brow (L2 and L3 move away from
    // it horizontally; the left lid skips brow point 19, the right one 24).
    EXPECT_EQ(r.array_Eye_Lid_Left, (PointList{{352, 309}, {318.75, 311.25}, {325.75, 314.25}, {397.5, 318},
                                               {404.5, 321}, {373, 318}, {366, 315}, {359, 312}}));
    EXPECT_EQ(r.array_Eye_Lid_Right, (PointList{{394, 327}, {359, 320.25}, {366, 323.25}, {374.75, 302.25},
                                                {381.75, 305.25}, {415, 303}, {408, 300}, {401, 330}}));
    // The jaw, then the forehead arc over the tilted jaw line P0 (100, 300)
    // to P16 (212, 315): radius 56 about (156, 307.5), rounded up.
    EXPECT_EQ(r.array_Face_Points,
              (PointList{{100, 300}, {107, 303}, {114, 306}, {121, 309}, {128, 312}, {135, 315}, {142, 318},
                         {149, 321}, {156, 324}, {163, 327}, {170, 330}, {177, 300}, {184, 303}, {191, 306},
                         {198, 309}, {205, 312}, {212, 315}, {103, 283}, {107, 273}, {113, 265}, {120, 257},
                         {129, 251}, {138, 247}, {148, 245}, {159, 244}, {169, 245}, {179, 249}, {188, 254},
                         {196, 260}, {203, 268}, {208, 277}, {211, 287}, {213, 298}, {212, 308}}));
}

TEST(FaceRegions, CheekRectangleHoldsTheMaximumCornerInItsSize)
{
    FaceLandmarks p = syntheticLandmarks();
    // Flipped, the left triangle spans (100, 200) to (180, 260).
    p[2] = {100, kHeight - 200};
    p[30] = {180, kHeight - 260};
    p[40] = {140, kHeight - 230};
    const FaceRegions r = build(p);

    EXPECT_EQ(r.rect_Cheek_Left, QRectF(100, 200, 180, 260));
    EXPECT_EQ(r.pt_Center_Cheek_Left, QPointF(140, 230));
    EXPECT_EQ(r.rect_Cheek_Left_Area_To_Paint, QRectF(120, 215, 40, 30));
}

TEST(FaceRegions, InsideEyeIsPulledASixthTowardsTheEyeRectangleCentre)
{
    FaceLandmarks p = syntheticLandmarks();
    const QList<QPointF> eye{{400, 500}, {420, 490}, {440, 490}, {460, 500}, {440, 510}, {420, 510}};
    for (int i = 0; i < 6; ++i)
        p[36 + i] = eye[i];
    const FaceRegions r = build(p);

    EXPECT_EQ(r.rect_Full_Eye_Left, QRectF(400, 490, 60, 20)); // flipped, centre (430, 500)
    EXPECT_EQ(vertices(r.path_Inside_Eye_Left).first(), QPointF(405, 500)); // (400, 500) + (30, 0) / 6
    EXPECT_EQ(r.rect_Eye_Left.x(), 405);
    EXPECT_EQ(r.rect_Eye_Left.width(), 50);
    EXPECT_NEAR(r.rect_Eye_Left.y(), 490 + 10.0 / 6, 1e-4);
    EXPECT_NEAR(r.rect_Eye_Left.height(), 20 - 20.0 / 6, 1e-4);
}

TEST(FaceRegions, InsideEyePointsAreRoundedToSinglePrecision)
{
    FaceLandmarks p = syntheticLandmarks();
    const QList<QPointF> eye{{190, 500}, {210, 490}, {230, 490}, {249, 500}, {230, 511}, {210, 511}};
    for (int i = 0; i < 6; ++i)
        p[36 + i] = eye[i];
    // Flipped, the eye spans x 190-249 and y 489-510: centre (219.5, 499.5).
    // 190 + 29.5 / 6 = 194.91666… is held as the float 194.91667175….
    const QList<QPointF> inside = vertices(build(p).path_Inside_Eye_Left);
    const QList<QPointF> expected{{194.9166717529297, 499.9166564941406}, {211.5833282470703, 508.25},
                                  {228.25, 508.25},
                                  {244.0833282470703, 499.9166564941406},
                                  {228.25, 490.75},
                                  {211.5833282470703, 490.75},
                                  {194.9166717529297, 499.9166564941406}};
    EXPECT_EQ(inside, expected);
}

TEST(FaceRegions, BoundingBoxMinimumStartsAt10000)
{
    FaceLandmarks p = syntheticLandmarks();
    for (int i = 48; i < 60; ++i)
        p[i] = {12000.0 + i, 500};
    const FaceRegions r = build(p, {20000, kHeight});

    EXPECT_EQ(r.rect_Lips.x(), 10000) << "the start value wins over points beyond it";
    EXPECT_EQ(r.rect_Lips.right(), 12059);
}

TEST(FaceRegions, RotationAndTriangleCentre)
{
    const QPointF quarter = rotate_point(10, 10, 90, 20, 10);
    EXPECT_NEAR(quarter.x(), 10, 1e-5);
    EXPECT_NEAR(quarter.y(), 20, 1e-5);
    EXPECT_EQ(Get_Triangle_Center({0, 0}, {30, 0}, {0, 60}), QPointF(10, 20));
}
