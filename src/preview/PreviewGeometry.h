#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

// Where a picture of w × h is drawn inside an area of Wv × Hv: its size
// moves in steps of one fiftieth of the picture and is never scaled
// continuously. A smaller picture grows while the next step still fits; a
// larger one shrinks until the next step would fit and stops one step
// before it, so it overhangs the area by up to one step; one larger in only
// one direction stays at its own size. Centred; negative origin when it
// overhangs. Values pass through single precision as the mouse mapping
// expects.
QRectF return_Best_Fit_Frame(double w, double h, double areaWidth, double areaHeight);

// Percent of a reference size and back; no offset is added.
QRectF Return_Rect_In_Percentage(const QRectF& rect, QSizeF reference);
QRectF Return_Rect_In_View_Coordinates(const QRectF& percent, QSizeF reference);
QPointF Return_Point_In_View_Coordinates(QPointF percent, QSizeF reference);
