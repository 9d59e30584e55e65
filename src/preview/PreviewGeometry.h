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

// How the preview frames the photo beyond the best fit: fitted (the best-fit
// frame above, the default) or at `zoom` device pixels per photo pixel,
// centred in the view and moved by `pan` (the frame centre's offset from the
// view centre, view pixels, y down).
struct Framing {
    bool fitted = true;
    double zoom = 1;
    QPointF pan;
    bool operator==(const Framing&) const = default;
};

// The zoom levels Ctrl++ and Ctrl+− step through, in device pixels per
// photo pixel; the level `steps` away from `zoom` (up when positive),
// staying at the ends.
double steppedZoom(double zoom, int steps);

// Where a `photo`-sized picture is drawn in a `view` of logical pixels on a
// screen of `dpr` device pixels each: view coordinates with the origin at the
// bottom-left, as return_Best_Fit_Frame. A zoomed frame starts on a whole
// device pixel, so 100 % shows every photo pixel on exactly one device pixel.
QRectF framedPhoto(const Framing& framing, QSizeF photo, QSizeF view, double dpr);

// The zoom of what is shown now: device pixels per photo pixel.
double shownZoom(const Framing& framing, QSizeF photo, QSizeF view, double dpr);

// `framing` at `zoom`, with the photo point under `anchor` (view pixels, y
// down) still under it where the photo can stay in view.
Framing zoomedAbout(const Framing& framing, double zoom, QPointF anchor, QSizeF photo, QSizeF view, double dpr);

// `framing` moved by `delta` view pixels (y down). A photo larger than the
// view cannot leave it; a smaller one stays centred in that direction.
Framing pannedBy(const Framing& framing, QPointF delta, QSizeF photo, QSizeF view, double dpr);

// A point of the view (y up) in percent of the frame the photo is drawn in,
// and a percent of the photo in its pixels (image space, y up): each in
// single precision, the one mapping from the pointer to the photo.
QPointF percentInFrame(QPointF view, const QRectF& frame);
QPointF pixelAtPercent(QPointF percent, QSizeF photo);
