#include "PanelDock.h"

#include "PanelFactory.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>

PanelDock::PanelDock(QMainWindow* window, PanelContext& context)
    : window_(window)
    , context_(context)
    , panels_(effects().size())
{
}

QPointer<QWidget>& PanelDock::panelOf(const EffectInfo& effect)
{
    return panels_[std::size_t(&effect - effects().data())];
}

QPointer<QWidget>& PanelDock::panelOf(bool EditingState::*effectSwitch)
{
    return panelOf(*effectWithSwitch(effectSwitch));
}

void PanelDock::open(const EffectInfo& effect)
{
    QPointer<QWidget>& panel = panelOf(effect);
    if (!panel) {
        EffectPanel* made = makePanel(effect, context_); // deletes itself when closed, which empties the reference
        made->offerDefaults();
        panel = made;
        dockFor(made, effect);
    }
    panel->show();
    QWidget* dock = panel->parentWidget();
    while (dock && !qobject_cast<QDockWidget*>(dock))
        dock = dock->parentWidget();
    if (dock) {
        dock->show();
        dock->raise(); // a panel tabbed behind another comes to the front
    }
    // The keyboard goes to the panel just opened: its first control.
    for (QWidget* control : panel->findChildren<QWidget*>())
        if ((control->focusPolicy() & Qt::TabFocus) && control->isEnabled()) {
            control->setFocus(Qt::OtherFocusReason);
            break;
        }
}

// A panel taller than its share of the column scrolls.
QDockWidget* PanelDock::dockFor(EffectPanel* panel, const EffectInfo& effect)
{
    auto* dock = new QDockWidget(panel->windowTitle(), window_);
    dock->setObjectName(QString("panel-") + nameOfSwitch(effect.effectSwitch));
    dock->setAttribute(Qt::WA_DeleteOnClose);
    dock->setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    auto* scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(panel);
    // Panels too tall for the column become tabs, so no room is kept for a
    // vertical scroll bar beside them.
    scroll->setMinimumWidth(panel->minimumSizeHint().width());
    scroll->setMaximumHeight(panel->sizeHint().height()); // no taller than the panel: the rest stays free
    dock->setWidget(scroll);
    connect(panel, &QObject::destroyed, dock, &QWidget::close); // closing the panel closes its dock
    QDockWidget* room = roomFor(dock);
    if (!window_->restoreDockWidget(dock))
        window_->addDockWidget(Qt::RightDockWidgetArea, dock, Qt::Vertical);
    if (room && !dock->isFloating() && window_->dockWidgetArea(dock) == Qt::RightDockWidgetArea) {
        window_->tabifyDockWidget(room, dock);
        dock->show();
        dock->raise();
    }
    return dock;
}

// The column shows each panel whole: a panel that would not fit below
// those in view becomes a tab of the last of them instead of squeezing all
// into inner scroll bars (a small window, many panels). None: it fits.
QDockWidget* PanelDock::roomFor(QDockWidget* dock) const
{
    const int titleBar = dock->style()->pixelMetric(QStyle::PM_TitleBarHeight) + 8;
    const auto heightOf = [&](const QDockWidget* d) { return d->widget()->maximumHeight() + titleBar; };
    int used = heightOf(dock);
    QDockWidget* last = nullptr;
    for (QDockWidget* other : window_->findChildren<QDockWidget*>()) {
        if (other == dock || other->isFloating() || !other->isVisible()
            || window_->dockWidgetArea(other) != Qt::RightDockWidgetArea || other->visibleRegion().isEmpty())
            continue;
        used += heightOf(other);
        if (!last || other->y() > last->y())
            last = other;
    }
    const int column = window_->centralWidget() ? window_->centralWidget()->height() : window_->height();
    return last && used > column ? last : nullptr;
}

void PanelDock::showChangedOnPhoto(const char* field)
{
    const SettingRange* range = settingRange(field);
    auto* panel = range && range->effect ? qobject_cast<EffectPanel*>(panelOf(range->effect).data()) : nullptr;
    if (!panel)
        return;
    panel->showChangedOnPhoto(field);
    // A panel floating away from the window was hidden while it waited.
    if (QWidget* floating = panel->window(); floating != window_) {
        floating->show();
        floating->raise();
    }
}

void PanelDock::showState(bool writingSlidersToo)
{
    for (const QPointer<QWidget>& panel : panels_)
        if (auto* effectPanel = qobject_cast<EffectPanel*>(panel.data()))
            effectPanel->showState(writingSlidersToo);
}

void PanelDock::closeAll()
{
    for (QPointer<QWidget>& panel : panels_)
        if (panel) {
            panel->close();
            panel = nullptr;
        }
}
