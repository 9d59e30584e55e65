#include "PreviewGeometry.h"

#include "SinglePrecision.h"

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
