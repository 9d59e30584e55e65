#include "View_Picture.h"

#include "OpenedPhoto.h"

#include <QPainter>

View_Picture::View_Picture(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void View_Picture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (!photo_ || photo_->isEmpty())
        return;
    const QSizeF fitted = photo_->imgSize.scaled(size(), Qt::KeepAspectRatio);
    rectDrawCamera_ = QRectF(QPointF((width() - fitted.width()) / 2, (height() - fitted.height()) / 2), fitted);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(rectDrawCamera_, photo_->img_Basic);
}
