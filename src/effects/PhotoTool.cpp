#include "PhotoTool.h"

#include "ImageSpace.h"
#include "OpenedPhoto.h"
#include "PhotoEdits.h"

#include <QPainter>

#include <algorithm>

void paintStrokeUnderWay(QPainter& painter, const QTransform& toView, const OpenedPhoto& photo,
                         const QList<QPointF>& stroke, double width, const QColor& colour)
{
    if (stroke.isEmpty())
        return;
    QPolygonF path;
    for (QPointF percent : stroke)
        path << toView.map(photo.pixelAtOpenedPercent(percent));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, std::max(2.0, width * toView.m11()), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    path.size() == 1 ? painter.drawPoint(path.front()) : painter.drawPolyline(path);
    painter.restore();
}

int faceUnder(const ToolPointer& at, const OpenedPhoto& photo)
{
    return photo.faceCount() == 1 ? 0 : photo.faceAt(flipped(at.pixel, photo.imgSize.height()));
}

FaceInFront::FaceInFront(PhotoEdits& edits, int face)
    : edits_(edits)
    , face_(face)
{
    edits_.swapShapes(face_);
}

FaceInFront::~FaceInFront()
{
    edits_.swapShapes(face_);
}
