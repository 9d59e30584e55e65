#include "PreviewKeys.h"

#include "View_Picture.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

PreviewKeys::PreviewKeys(QWidget* mainWindow, View_Picture* view, QObject* parent)
    : QObject(parent)
    , mainWindow_(mainWindow)
    , view_(view)
{
    qApp->installEventFilter(this);
}

// Keys typed into a text field are text; elsewhere in the main window and
// its panels they are the preview's.
namespace {

bool takesText(const QWidget* widget)
{
    return widget
           && (widget->inherits("QLineEdit") || widget->inherits("QTextEdit") || widget->inherits("QPlainTextEdit")
               || widget->inherits("QAbstractSpinBox"));
}

} // namespace

bool PreviewKeys::ours(QObject* watched) const
{
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || !mainWindow_ || !view_)
        return false;
    // A key a text field left alone travels on to its parents: still text.
    if (takesText(widget) || takesText(QApplication::focusWidget()))
        return false;
    const QWidget* window = widget->window();
    return window == mainWindow_ || window->parentWidget() == mainWindow_;
}

bool PreviewKeys::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        return ours(watched) && pressed(static_cast<const QKeyEvent&>(*event));
    case QEvent::KeyRelease:
        return ours(watched) && released(static_cast<const QKeyEvent&>(*event));
    case QEvent::ApplicationDeactivate:
        letGo(); // the release would go to another program
        return false;
    default:
        return false;
    }
}

bool PreviewKeys::pressed(const QKeyEvent& key)
{
    const bool shifted = key.modifiers() & Qt::ShiftModifier;
    if (key.key() == Qt::Key_Bar || (key.key() == Qt::Key_Backslash && shifted)) {
        if (!key.isAutoRepeat())
            view_->setSplitView(!view_->splitView());
        return true;
    }
    if (key.key() == Qt::Key_Backslash) {
        view_->setShowingUntouched(true);
        return true;
    }
    // Space pans only over the preview, so it still presses a focused button
    // elsewhere.
    if (key.key() == Qt::Key_Space && (panKeyHeld_ || view_->underMouse())) {
        if (!panKeyHeld_)
            view_->setPanKeyHeld(true);
        panKeyHeld_ = true;
        return true;
    }
    return false;
}

bool PreviewKeys::released(const QKeyEvent& key)
{
    if (key.isAutoRepeat())
        return key.key() == Qt::Key_Backslash || (key.key() == Qt::Key_Space && panKeyHeld_);
    if (key.key() == Qt::Key_Backslash) {
        view_->setShowingUntouched(false);
        return true;
    }
    if (key.key() == Qt::Key_Space && panKeyHeld_) {
        panKeyHeld_ = false;
        view_->setPanKeyHeld(false);
        return true;
    }
    return false;
}

void PreviewKeys::letGo()
{
    if (!view_)
        return;
    view_->setShowingUntouched(false);
    if (panKeyHeld_)
        view_->setPanKeyHeld(false);
    panKeyHeld_ = false;
}
