#include "PreviewGeometry.h"

#include "SinglePrecision.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

QSizeF grown(double w, double h, double stepX, double stepY, double ratio, double areaWidth, double areaHeight)
{
    QSizeF fits(w, h);
    for (;;) {
        const QSizeF next = ratio > 0 ? QSizeF(fits.width() + stepX, (fits.width() + stepX) / ratio)
                                      : QSizeF((fits.height() + stepY) / ratio, fits.height() + stepY);
        if (next.width() > areaWidth || next.height() > areaHeight)
            return fits;
        fits = next;
    }
}

QSizeF shrunk(double w, double h, double stepX, double ratio, double areaWidth, double areaHeight)
{
    QSizeF before(w, h);
    while (before.width() > 0) {
        const QSizeF next(before.width() - stepX, (before.width() - stepX) / ratio);
        if (next.width() <= areaWidth && next.height() <= areaHeight)
            break;
        before = next;
    }
    return before;
}

} // namespace

QRectF return_Best_Fit_Frame(double w, double h, double areaWidth, double areaHeight)
{
    if (w == 0 && h == 0)
        return {};
    const double stepX = single(w / 50), stepY = single(h / 50), ratio = single(w / h);
    QSizeF size(w, h);
    if (areaWidth > w || areaHeight > h)
        size = grown(w, h, stepX, stepY, ratio, areaWidth, areaHeight);
    else if (!(w == areaWidth && h == areaHeight))
        size = shrunk(w, h, stepX, ratio, areaWidth, areaHeight);
    return {single((areaWidth - size.width()) / 2), single((areaHeight - size.height()) / 2), size.width(),
            size.height()};
}

QRectF Return_Rect_In_Percentage(const QRectF& r, QSizeF ref)
{
    return {single(r.x() * 100 / ref.width()), single(r.y() * 100 / ref.height()),
            single(r.width() * 100 / ref.width()), single(r.height() * 100 / ref.height())};
}

QRectF Return_Rect_In_View_Coordinates(const QRectF& p, QSizeF ref)
{
    return {single(p.x() * ref.width() / 100), single(p.y() * ref.height() / 100),
            single(p.width() * ref.width() / 100), single(p.height() * ref.height() / 100)};
}

QPointF Return_Point_In_View_Coordinates(QPointF p, QSizeF ref)
{
    return {single(p.x() * ref.width() / 100), single(p.y() * ref.height() / 100)};
}

namespace {

constexpr double kZoomLevels[] = {1.0 / 16, 1.0 / 8, 1.0 / 4, 1.0 / 3, 1.0 / 2, 2.0 / 3, 1, 1.5, 2, 3, 4, 6, 8, 12, 16};

// A frame of `size` centred in `view`, moved by `pan` but never so far that
// a side larger than the view shows black beside it.
QPointF clampedPan(QPointF pan, QSizeF size, QSizeF view)
{
    const auto clamp = [](double offset, double extent, double room) {
        const double slack = std::max(0.0, (extent - room) / 2);
        return std::clamp(offset, -slack, slack);
    };
    return {clamp(pan.x(), size.width(), view.width()), clamp(pan.y(), size.height(), view.height())};
}

QSizeF zoomedSize(double zoom, QSizeF photo, double dpr)
{
    return photo * (zoom / dpr);
}

} // namespace

double steppedZoom(double zoom, int steps)
{
    const auto levels = std::size(kZoomLevels);
    // A zoom between two levels (a fitted one) steps up to the level above
    // it and down to the one below it.
    if (steps > 0) {
        const auto above = size_t(std::upper_bound(std::begin(kZoomLevels), std::end(kZoomLevels), zoom * (1 + 1e-9))
                                  - std::begin(kZoomLevels));
        return above == levels ? zoom : kZoomLevels[std::min(above + size_t(steps - 1), levels - 1)];
    }
    if (steps < 0) {
        const auto below = size_t(std::lower_bound(std::begin(kZoomLevels), std::end(kZoomLevels), zoom * (1 - 1e-9))
                                  - std::begin(kZoomLevels));
        return below == 0 ? zoom : kZoomLevels[below - std::min(below, size_t(-steps))];
    }
    return zoom;
}

QRectF framedPhoto(const Framing& framing, QSizeF photo, QSizeF view, double dpr)
{
    if (framing.fitted)
        return return_Best_Fit_Frame(photo.width(), photo.height(), view.width(), view.height());
    const QSizeF size = zoomedSize(framing.zoom, photo, dpr);
    const QPointF pan = clampedPan(framing.pan, size, view);
    const auto onDevicePixel = [dpr](double x) { return std::round(x * dpr) / dpr; };
    const double left = onDevicePixel((view.width() - size.width()) / 2 + pan.x());
    const double top = onDevicePixel((view.height() - size.height()) / 2 + pan.y());
    return {left, view.height() - top - size.height(), size.width(), size.height()}; // y up
}

double shownZoom(const Framing& framing, QSizeF photo, QSizeF view, double dpr)
{
    if (!framing.fitted || photo.isEmpty())
        return framing.zoom;
    return framedPhoto(framing, photo, view, dpr).width() * dpr / photo.width();
}

Framing zoomedAbout(const Framing& framing, double zoom, QPointF anchor, QSizeF photo, QSizeF view, double dpr)
{
    const QRectF before = framedPhoto(framing, photo, view, dpr);
    const QPointF topLeft(before.x(), view.height() - before.y() - before.height());
    const double scale = before.width() / photo.width(); // view pixels per photo pixel
    const QPointF under = (anchor - topLeft) / scale;     // the photo point under the anchor
    const QSizeF size = zoomedSize(zoom, photo, dpr);
    const QPointF newTopLeft = anchor - under * (zoom / dpr);
    const QPointF centred((view.width() - size.width()) / 2, (view.height() - size.height()) / 2);
    return {false, zoom, clampedPan(newTopLeft - centred, size, view)};
}

Framing pannedBy(const Framing& framing, QPointF delta, QSizeF photo, QSizeF view, double dpr)
{
    if (framing.fitted)
        return framing; // the best-fit frame has nowhere to go
    const QSizeF size = zoomedSize(framing.zoom, photo, dpr);
    return {false, framing.zoom, clampedPan(clampedPan(framing.pan, size, view) + delta, size, view)};
}

QPointF percentInFrame(QPointF view, const QRectF& frame)
{
    return singlePoint((view.x() - frame.x()) * 100 / frame.width(), (view.y() - frame.y()) * 100 / frame.height());
}

QPointF pixelAtPercent(QPointF percent, QSizeF photo)
{
    return singlePoint(photo.width() * percent.x() / 100, photo.height() * percent.y() / 100);
}
