#include "EffectPass.h"

#include "FilterPrimitives.h"
#include "ImageSpace.h"
#include "Picture.h"

#include <cmath>

ImagePainter::ImagePainter(EffectPass& pass)
    : QPainter(&pass.working)
    , height(pass.height())
    , painted_(pass.record.painted)
{
    setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
}

void ImagePainter::drawInto(const QRectF& imageRect, const QImage& image)
{
    if (image.isNull() || imageRect.width() <= 0 || imageRect.height() <= 0)
        return;
    const QRectF target = flipped(imageRect, height);
    cover(target, 0);
    drawImage(target, image);
}

void ImagePainter::fillImagePath(const QPainterPath& path, const QColor& colour)
{
    const QPainterPath shape = flipped(path, height);
    cover(shape.boundingRect(), 0);
    fillPath(shape, colour);
}

void ImagePainter::strokeImagePath(const QPainterPath& path)
{
    const QPainterPath shape = flipped(path, height);
    cover(shape.boundingRect(), pen().widthF());
    drawPath(shape);
}

void ImagePainter::fillHandle(const QRectF& square)
{
    QPainterPath path;
    path.addRect(square);
    fillImagePath(path, Qt::green);
}

void ImagePainter::cover(const QRectF& shape, double penWidth)
{
    const double reach = penWidth / 2 + 1;
    painted_ |= shape.adjusted(-reach, -reach, reach, reach).toAlignedRect();
}

QRect layerArea(const QRectF& shapeBounds, float blur, double lineWidth, const QImage& working)
{
    const int reach = int(std::ceil(3.0f * std::max(blur, 0.0f)) + std::ceil(lineWidth)) + 2;
    return shapeBounds.toAlignedRect().adjusted(-reach, -reach, reach, reach).intersected(working.rect());
}

void drawLayer(EffectPass& pass, const QRect& area, QImage& layer, float blur)
{
    pass.record.painted |= area;
    gaussianBlurCropped(layer, layer, blur);
    QPainter(&pass.working).drawImage(area.topLeft(), layer);
}
