#include "View_Picture.h"

#include "EditingState.h"
#include "OpenedPhoto.h"
#include "PictureSaver.h"
#include "PreviewGeometry.h"

#include <QPainter>

View_Picture::View_Picture(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void View_Picture::setSources(const OpenedPhoto* photo, const EditingState* state, SaveRequest* saveRequest)
{
    photo_ = photo;
    state_ = state;
    saveRequest_ = saveRequest;
}

void View_Picture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (!photo_ || !state_ || photo_->isEmpty())
        return;
    const QImage& working = compositor_.compose(*photo_, *state_);
    rectDrawCamera_ = return_Best_Fit_Frame(photo_->imgSize.width(), photo_->imgSize.height(), width(), height());
    // The working picture is opaque and covers the photo completely, so the
    // photo itself need not be drawn under it. The frame is centred, so it
    // is the same rectangle with y counted from the top.
    const QRectF onScreen(rectDrawCamera_.x(), height() - rectDrawCamera_.y() - rectDrawCamera_.height(),
                          rectDrawCamera_.width(), rectDrawCamera_.height());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(onScreen, working);
    if (saveRequest_)
        fulfil(*saveRequest_, working);
}
