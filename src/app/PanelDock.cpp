#include "PanelDock.h"

#include "PanelFactory.h"

#include <QAbstractSlider>
#include <QCoreApplication>
#include <QDockWidget>
#include <QWheelEvent>
#include <QMainWindow>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QTimer>

PanelDock::PanelDock(QMainWindow* window, PanelContext& context)
    : window_(window)
    , context_(context)
    , panels_(effects().size())
    , docks_(new QMainWindow)
    , scroll_(new QScrollArea)
    , columnDock_(new QDockWidget(window))
{
    // Docks of their own window: they stack at their natural heights and
    // never become tabs; the space below them is left empty.
    docks_->setWindowFlags(Qt::Widget);
    docks_->setObjectName("panelDocks");
    docks_->setDockOptions(QMainWindow::AnimatedDocks);
    auto* below = new QWidget;
    below->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    docks_->setCentralWidget(below);
    scroll_->setObjectName("panelColumn");
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setWidgetResizable(true);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_->setWidget(docks_);
    columnDock_->setObjectName("panelColumnDock");
    columnDock_->setTitleBarWidget(new QWidget(columnDock_));
    columnDock_->setFeatures(QDockWidget::NoDockWidgetFeatures);
    columnDock_->setWidget(scroll_);
    window_->addDockWidget(Qt::RightDockWidgetArea, columnDock_);
    columnDock_->hide();
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
    if (auto* dock = qobject_cast<QDockWidget*>(panel->parentWidget())) {
        dock->show();
        dock->raise();
    }
    fitColumn();
    bringIntoView(panel);
    // The keyboard goes to the panel just opened: its first control.
    for (QWidget* control : panel->findChildren<QWidget*>())
        if ((control->focusPolicy() & Qt::TabFocus) && control->isEnabled()) {
            control->setFocus(Qt::OtherFocusReason);
            break;
        }
}

void PanelDock::addAtTop(QDockWidget* dock)
{
    docks_->addDockWidget(Qt::TopDockWidgetArea, dock, Qt::Vertical);
    takeIntoColumn(dock);
}

QDockWidget* PanelDock::dockFor(EffectPanel* panel, const EffectInfo& effect)
{
    auto* dock = new QDockWidget(panel->windowTitle(), docks_);
    dock->setObjectName(QString("panel-") + nameOfSwitch(effect.effectSwitch));
    dock->setAttribute(Qt::WA_DeleteOnClose);
    dock->setAllowedAreas(Qt::TopDockWidgetArea);
    // Its natural height, never squeezed: the column scrolls instead.
    panel->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    dock->setWidget(panel);
    for (QAbstractSlider* slider : panel->findChildren<QAbstractSlider*>()) {
        slider->setFocusPolicy(Qt::StrongFocus);
        slider->installEventFilter(this);
    }
    connect(panel, &QObject::destroyed, dock, &QWidget::close); // closing the panel closes its dock
    if (!docks_->restoreDockWidget(dock))
        docks_->addDockWidget(Qt::TopDockWidgetArea, dock, Qt::Vertical);
    takeIntoColumn(dock);
    return dock;
}

// The column follows each dock: shown, floated, docked again or closed.
void PanelDock::takeIntoColumn(QDockWidget* dock)
{
    const auto fitLater = [this] { QTimer::singleShot(0, this, &PanelDock::fitColumn); };
    connect(dock, &QDockWidget::topLevelChanged, this, fitLater);
    connect(dock, &QObject::destroyed, this, fitLater);
    // Shown or hidden while the column itself is hidden: no visibility
    // signal, but these events.
    dock->installEventFilter(this);
}

void PanelDock::fitColumn()
{
    int widest = 0;
    bool any = false;
    for (QDockWidget* dock : docks_->findChildren<QDockWidget*>(Qt::FindDirectChildrenOnly)) {
        if (dock->isFloating() || dock->isHidden())
            continue;
        any = true;
        widest = std::max(widest, dock->minimumSizeHint().width());
    }
    const int bar = scroll_->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    scroll_->setMinimumWidth(widest + bar + 2);
    columnDock_->setVisible(any);
}

bool PanelDock::eventFilter(QObject* watched, QEvent* event)
{
    if (qobject_cast<QDockWidget*>(watched) && (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent))
        QTimer::singleShot(0, this, &PanelDock::fitColumn);
    auto* slider = qobject_cast<QAbstractSlider*>(watched);
    if (event->type() != QEvent::Wheel || !slider || slider->hasFocus())
        return false;
    QCoreApplication::sendEvent(scroll_->verticalScrollBar(), event);
    return true;
}

void PanelDock::bringIntoView(QWidget* panel)
{
    if (!panel->window() || panel->window() != window_)
        return;
    QWidget* dock = panel->parentWidget();
    QTimer::singleShot(0, this, [this, dock = QPointer<QWidget>(dock)] {
        if (dock)
            scroll_->ensureWidgetVisible(dock, 0, 0);
    });
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
    } else {
        bringIntoView(panel);
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
