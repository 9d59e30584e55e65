#include "ViewCircleCenter.h"

#include "EditingState.h"

#include <QMouseEvent>
#include <QPainter>

ViewCircleCenter::ViewCircleCenter(QWidget* parent)
    : QWidget(parent)
{
}

void ViewCircleCenter::setState(EditingState* state, std::function<void()> changed)
{
    state_ = state;
    changed_ = std::move(changed);
    update();
}

QPointF& ViewCircleCenter::centre() const
{
    return b_Left ? state_->pt_MakeUp_Center_Left : state_->pt_MakeUp_Center_Right;
}

void ViewCircleCenter::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::black);
    painter.setBrush(Qt::green);
    painter.drawEllipse(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    if (!state_)
        return;
    const QPointF c = centre(); // percent, y from the top: the widget's own direction
    painter.fillRect(QRectF(c.x() * width() / 100, c.y() * height() / 100, 3, 3), Qt::red);
}

void ViewCircleCenter::mousePressEvent(QMouseEvent* event)
{
    mouseDownPos = event->position();
    if (!state_ || !state_->b_Apply_Cheeks || state_->b_Activated_Cheeks_Reposition)
        return;
    centre() = QPointF(mouseDownPos.x() * 100 / width(), mouseDownPos.y() * 100 / height());
    update();
    if (changed_)
        changed_();
}
