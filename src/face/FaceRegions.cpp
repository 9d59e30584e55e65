#include "FaceRegions.h"

#include "ImageSpace.h"
#include "SinglePrecision.h"

#include <QtMath>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace {

// The bounding box of a region starts from these values, so a photo point
// beyond 10000 pixels leaves the minimum at 10000; kept as designed.
constexpr float kBoxStart = 10000.0f;

// One outline in image space, built point by point: the path is closed back
// to its first point, and the bounding box is gathered over the added points
// in single precision.
class Outline {
public:
    explicit Outline(float height)
        : height_(height)
    {
    }

    QPointF flippedPoint(QPointF photoPoint) const { return flipped(photoPoint, double(height_)); }

    void addFlipped(QPointF p)
    {
        if (started_)
            path_.lineTo(p);
        else
            path_.moveTo(p);
        started_ = true;
        minX_ = std::min(minX_, float(p.x()));
        minY_ = std::min(minY_, float(p.y()));
        maxX_ = std::max(maxX_, float(p.x()));
        maxY_ = std::max(maxY_, float(p.y()));
    }

    void addPhotoPoints(const PointList& points)
    {
        for (const QPointF& p : points)
            addFlipped(flippedPoint(p));
    }

    QPainterPath closed() const
    {
        QPainterPath path = path_;
        if (started_) {
            path.lineTo(path.elementAt(0));
            path.closeSubpath();
        }
        path.setFillRule(Qt::WindingFill);
        return path;
    }

    QPointF minCorner() const { return {minX_, minY_}; }
    QPointF maxCorner() const { return {maxX_, maxY_}; }
    QRectF bounds() const { return {minCorner(), QSizeF(maxX_ - minX_, maxY_ - minY_)}; }

private:
    float height_;
    QPainterPath path_;
    bool started_ = false;
    float minX_ = kBoxStart, minY_ = kBoxStart;
    float maxX_ = -kBoxStart, maxY_ = -kBoxStart;
};

PointList pick(const FaceLandmarks& p, std::initializer_list<int> indices)
{
    PointList points;
    for (int i : indices)
        points.append(p[i]);
    return points;
}

// F17-F33: a half circle over the forehead with the jaw ends P0 and P16 as
// its diameter, sampled every 180/17 degrees and rounded up to whole pixels.
PointList foreheadArc(const FaceLandmarks& p)
{
    const QPointF a = p[0], b = p[16];
    const double d = (b.x() - a.x()) * 0.5;
    const QPointF m(a.x() + d, std::min(a.y(), b.y()) + std::abs(b.y() - a.y()) * 0.5);
    PointList arc;
    for (int k = 1; k <= 17; ++k) {
        const float degrees = float(k) * 10.588234901428223f + 180.0f;
        const QPointF q = rotate_point(float(a.x()), float(a.y()), degrees, m.x(), m.y());
        arc.append(QPointF(std::ceil(q.x() + d), std::ceil(q.y())));
    }
    return arc;
}

// A lid point lifted a quarter of the way towards an eyebrow point; the
// quarter is rounded to single precision before it is added. `xSign` is -1
// where the horizontal offset is subtracted (L2, L3): those two move away from
// the eyebrow's inner end on purpose.
QPointF liftedLid(QPointF lid, QPointF brow, double xSign = 1.0)
{
    const double dx = single(0.25 * (brow.x() - lid.x()));
    const double dy = single(0.25 * (brow.y() - lid.y()));
    return {lid.x() + xSign * dx, lid.y() + dy};
}

PointList leftEyelid(const FaceLandmarks& p)
{
    return {p[36], liftedLid(p[36], p[17]), liftedLid(p[37], p[18]), liftedLid(p[38], p[20], -1.0),
            liftedLid(p[39], p[21], -1.0), p[39], p[38], p[37]};
}

PointList rightEyelid(const FaceLandmarks& p)
{
    return {p[42], liftedLid(p[42], p[22]), liftedLid(p[43], p[23]), liftedLid(p[44], p[25]),
            liftedLid(p[45], p[26]), p[45], p[44], p[43]};
}

// A closed outline and its bounding box.
using PathAndBox = std::pair<QPainterPath, QRectF>;

PathAndBox outlineOf(const PointList& points, float height)
{
    Outline outline(height);
    outline.addPhotoPoints(points);
    return {outline.closed(), outline.bounds()};
}

// The face outline walks the jaw F0-F16, then the arc backwards F33-F17, so
// it does not cross itself.
PathAndBox faceOutline(const PointList& face, float height)
{
    Outline outline(height);
    for (int i = 0; i <= 16; ++i)
        outline.addFlipped(outline.flippedPoint(face[i]));
    for (int i = 33; i >= 17; --i)
        outline.addFlipped(outline.flippedPoint(face[i]));
    return {outline.closed(), outline.bounds()};
}

// The eye outline with every point pulled a sixth of the way towards the
// centre of the eye's rectangle.
PathAndBox insideEyeOutline(const PointList& eye, const QRectF& fullEye, float height)
{
    const QPointF centre(float(fullEye.x()) + 0.5f * float(fullEye.width()),
                         float(fullEye.y()) + 0.5f * float(fullEye.height()));
    Outline outline(height);
    for (const QPointF& photoPoint : eye) {
        const QPointF p = outline.flippedPoint(photoPoint);
        const QPointF pulled = p + (centre - p) / 6.0;
        outline.addFlipped(singlePoint(pulled.x(), pulled.y()));
    }
    return {outline.closed(), outline.bounds()};
}

// A cheek's outline, its rectangle (maximum corner in the size), the centre
// of its bounding box and the area to paint.
using CheekGeometry = std::tuple<QPainterPath, QRectF, QPointF, QRectF>;

CheekGeometry cheekOf(const PointList& triangle, float height)
{
    Outline outline(height);
    outline.addPhotoPoints(triangle);
    const QPointF lo = outline.minCorner(), hi = outline.maxCorner();
    const float ex = float(hi.x()) - float(lo.x()), ey = float(hi.y()) - float(lo.y());
    const float cx = float(lo.x()) + 0.5f * ex, cy = float(lo.y()) + 0.5f * ey;
    return {outline.closed(), QRectF(lo, QSizeF(hi.x(), hi.y())), QPointF(cx, cy),
            QRectF(cx - 0.25f * ex, cy - 0.25f * ey, 0.5f * ex, 0.5f * ey)};
}

} // namespace

QPainterPath outlineThrough(const PointList& photoPoints, double imageHeight)
{
    return outlineOf(photoPoints, float(imageHeight)).first;
}

QPointF rotate_point(float cx, float cy, float degrees, double px, double py)
{
    const double radians = single(double(degrees) * M_PI / 180.0);
    const double dx = px - cx, dy = py - cy;
    return {cx + dx * std::cos(radians) - dy * std::sin(radians), cy + dx * std::sin(radians) + dy * std::cos(radians)};
}

QPointF Get_Triangle_Center(QPointF p1, QPointF p2, QPointF p3)
{
    return {(float(p1.x()) + float(p2.x()) + float(p3.x())) / 3.0f,
            (float(p1.y()) + float(p2.y()) + float(p3.y())) / 3.0f};
}

QPointF toPercentOfImage(QPointF point, QSizeF imgSize)
{
    const float width = float(imgSize.width()), height = float(imgSize.height());
    return {100.0f * float(point.x()) / width, 100.0f - 100.0f * float(point.y()) / height};
}

PointList toPercentOfImage(const PointList& points, QSizeF imgSize)
{
    PointList percent;
    percent.reserve(points.size());
    for (const QPointF& p : points)
        percent.append(toPercentOfImage(p, imgSize));
    return percent;
}

FaceRegions FaceRegions::build(const FaceLandmarks& p, QSizeF imgSize)
{
    FaceRegions r;
    if (p.size() != kLandmarkCount)
        return r;
    const float height = float(imgSize.height());

    r.array_Face_Points = pick(p, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}) + foreheadArc(p);
    r.array_Eye_Left_Points = pick(p, {36, 37, 38, 39, 40, 41});
    r.array_Eye_Darken_Left_Points = r.array_Eye_Left_Points;
    r.array_Eye_Right_Points = pick(p, {42, 43, 44, 45, 46, 47});
    r.array_Eye_Darken_Right_Points = r.array_Eye_Right_Points;
    r.array_Mouth_Points = pick(p, {48, 49, 50, 51, 52, 53, 54, 55, 56, 57, 58, 59});
    r.array_Inside_Mouth_Points = pick(p, {60, 61, 62, 63, 64, 65, 66, 67});
    r.array_Nose_Points = pick(p, {31, 32, 33, 34, 35, 30});
    r.array_Space_Between_Eye_Eyebrow_Left_Points = pick(p, {36, 17, 18, 19, 20, 21, 39, 38, 37});
    r.array_Space_Between_Eye_Eyebrow_Right_Points = pick(p, {42, 22, 23, 24, 25, 26, 45, 44, 43});
    r.array_Eye_Lid_Left = leftEyelid(p);
    r.array_Eye_Lid_Right = rightEyelid(p);
    r.array_Cheek_Left_Points = pick(p, {2, 30, 40});
    r.array_Cheek_Right_Points = pick(p, {34, 46, 13});

    std::tie(r.path_Eye_Left, r.rect_Full_Eye_Left) = outlineOf(r.array_Eye_Left_Points, height);
    std::tie(r.path_Inside_Eye_Left, r.rect_Eye_Left) =
        insideEyeOutline(r.array_Eye_Left_Points, r.rect_Full_Eye_Left, height);
    std::tie(r.path_Eye_Right, r.rect_Full_Eye_Right) = outlineOf(r.array_Eye_Right_Points, height);
    std::tie(r.path_Inside_Eye_Right, r.rect_Eye_Right) =
        insideEyeOutline(r.array_Eye_Right_Points, r.rect_Full_Eye_Right, height);
    std::tie(r.path_Inside_Mouth, r.rect_Inside_Mouth) = outlineOf(r.array_Inside_Mouth_Points, height);
    std::tie(r.path_Lips, r.rect_Lips) = outlineOf(r.array_Mouth_Points, height);
    std::tie(r.path_Nose, r.rect_Nose) = outlineOf(r.array_Nose_Points, height);
    r.path_Space_Between_Eye_Eyebrow_Left = outlineOf(r.array_Space_Between_Eye_Eyebrow_Left_Points, height).first;
    r.path_Space_Between_Eye_Eyebrow_Right = outlineOf(r.array_Space_Between_Eye_Eyebrow_Right_Points, height).first;
    r.path_Eye_Lid_Left = outlineOf(r.array_Eye_Lid_Left, height).first;
    r.path_Eye_Lid_Right = outlineOf(r.array_Eye_Lid_Right, height).first;
    std::tie(r.path_Cheek_Left, r.rect_Cheek_Left, r.pt_Center_Cheek_Left, r.rect_Cheek_Left_Area_To_Paint) =
        cheekOf(r.array_Cheek_Left_Points, height);
    std::tie(r.path_Cheek_Right, r.rect_Cheek_Right, r.pt_Center_Cheek_Right, r.rect_Cheek_Right_Area_To_Paint) =
        cheekOf(r.array_Cheek_Right_Points, height);
    std::tie(r.path_Face, r.rect_Face_Skin) = faceOutline(r.array_Face_Points, height);
    return r;
}
