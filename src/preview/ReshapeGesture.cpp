#include "ReshapeGesture.h"

#include "Compositor.h"
#include "ImageSpace.h"
#include "SinglePrecision.h"

#include <QCoreApplication>

#include <cmath>

namespace {

using Dragging = ReshapeGesture::Dragging;

// The new area of a cheek while one of its handles is dragged to `m`
// (photo pixels, y up), relative to the area `r` at mouse-down. The
// right-up handle follows the right-bottom rule and the left-up handle
// moves the top edge while the width changes as for the left edge: both
// are the program's own rules. Nothing is limited; sizes may go negative.
QRectF draggedArea(const Dragging& d, const QRectF& r, QPointF m)
{
    const double x0 = r.x(), y0 = r.y(), w0 = r.width(), h0 = r.height();
    const double mx = m.x(), my = m.y();
    if (d.LB)
        return {mx, my, single(w0 + x0 - mx), single(h0 + y0 - my)};
    if (d.RB || d.RU)
        return {x0, my, single(mx - x0), single(h0 + y0 - my)};
    if (d.LU)
        return {x0, y0, single(w0 + x0 - mx), single(my - y0)};
    return {single(mx - w0 * 0.5), single(my - h0 * 0.5), w0, h0};
}

bool sameCell(QPointF a, QPointF b)
{
    return std::floor(a.x()) == std::floor(b.x()) && std::floor(a.y()) == std::floor(b.y());
}

// A handle is hit when the pointer is in the same one-percent cell of the
// photo as the handle; corners: left-bottom, right-bottom, left-top,
// right-top.
void hitCheekHandles(QPointF percent, Dragging& flags, const std::array<QPointF, 4>& corners)
{
    if (sameCell(percent, corners[0]))
        flags.LB = true;
    else if (sameCell(percent, corners[1]))
        flags.RB = true;
    else if (sameCell(percent, corners[2]))
        flags.LU = true;
    else if (sameCell(percent, corners[3]))
        flags.RU = true;
    else if (QRectF(corners[1], corners[2]).normalized().contains(percent))
        flags.Crop = true;
}

void hitUnderEyePoint(QPointF percent, Dragging& flags, const std::array<QPointF, 6>& points)
{
    for (size_t i = 0; i < 6; ++i)
        if (sameCell(percent, points[i])) {
            flags.point[i] = true;
            return;
        }
}

bool holds(const Dragging& d)
{
    return d.LB || d.RB || d.RU || d.LU || d.Crop;
}

} // namespace

void ReshapeGesture::press(QPointF percent, const EditingState& state, const Reshaping& reshaping, QSizeF imgSize)
{
    rect_Cheek_Left_Area_To_Paint_Mouse_Down = reshaping.rect_Cheek_Left_Area_To_Paint;
    rect_Cheek_Right_Area_To_Paint_Mouse_Down = reshaping.rect_Cheek_Right_Area_To_Paint;
    const Handles h = handlesOf(reshaping, state, imgSize);
    if (state.b_Activated_Cheeks_Reposition) {
        hitCheekHandles(percent, draggingLeft, h.pointPercenteLeft);
        hitCheekHandles(percent, draggingRight, h.pointPercenteRight);
    }
    if (state.b_Activated_Darken_Eyes_Reposition) {
        hitUnderEyePoint(percent, draggingLeft, h.pointPercenteEyeLeft);
        hitUnderEyePoint(percent, draggingRight, h.pointPercenteEyeRight);
    }
}

bool ReshapeGesture::drag(QPointF pixel, const EditingState& state, Reshaping& reshaping, QSizeF imgSize)
{
    bool moved = false;
    if (state.b_Activated_Cheeks_Reposition)
        moved = dragCheeks(pixel, reshaping);
    if (state.b_Activated_Darken_Eyes_Reposition)
        moved = dragUnderEyePoints(pixel, reshaping, imgSize.height()) || moved;
    moved_ = moved_ || moved;
    return moved;
}

bool ReshapeGesture::hover(QPointF percent, const EditingState& state, const Reshaping& reshaping, QSizeF imgSize)
{
    const Handles h = handlesOf(reshaping, state, imgSize);
    hitCheekHandles(percent, draggingLeft, h.pointPercenteLeft);
    if (QRectF(h.pointPercenteRight[0], h.pointPercenteRight[3]).normalized().contains(percent))
        draggingRight.Crop = true;
    return QRectF(h.pointPercenteLeft[0], h.pointPercenteLeft[3]).normalized().contains(percent);
}

QString ReshapeGesture::release()
{
    const char* step = holds(draggingLeft) || holds(draggingRight) ? "Move Blush Area" : "Move Under-Eye Ring";
    const QString made = moved_ ? QCoreApplication::translate("EditHistory", step) : QString();
    b_Mouse_Down = moved_ = false;
    draggingLeft = draggingRight = {};
    return made;
}

bool ReshapeGesture::dragCheeks(QPointF pixel, Reshaping& r) const
{
    if (holds(draggingLeft))
        r.rect_Cheek_Left_Area_To_Paint = draggedArea(draggingLeft, rect_Cheek_Left_Area_To_Paint_Mouse_Down, pixel);
    if (holds(draggingRight))
        r.rect_Cheek_Right_Area_To_Paint = draggedArea(draggingRight, rect_Cheek_Right_Area_To_Paint_Mouse_Down, pixel);
    return holds(draggingLeft) || holds(draggingRight);
}

bool ReshapeGesture::dragUnderEyePoints(QPointF pixel, Reshaping& reshaping, double imageHeight) const
{
    // The points are kept with y from the top of the photo.
    const QPointF point = flipped(pixel, imageHeight);
    const auto replaceHighest = [&](const Dragging& d, PointList& points) {
        for (size_t i = 6; i-- > 0;)
            if (d.point[i] && qsizetype(i) < points.size()) {
                points[qsizetype(i)] = point;
                return true;
            }
        return false;
    };
    const bool left = replaceHighest(draggingLeft, reshaping.array_Eye_Darken_Left_Points);
    const bool right = replaceHighest(draggingRight, reshaping.array_Eye_Darken_Right_Points);
    return left || right;
}
