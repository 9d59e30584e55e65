#pragma once

#include "EffectPanel.h"

#include <QObject>
#include <QPointer>

#include <vector>

class QDockWidget;
class QMainWindow;

// The effects' panels: each made when first opened (with its Defaults
// button), docked in a column at the right of the preview in the order
// opened, and dropped when it closes. A panel can be pulled out to float and
// docked again, and comes back where it was last.
class PanelDock : public QObject {
    Q_OBJECT

public:
    PanelDock(QMainWindow* window, PanelContext& context);

    // The panel of an effect; empty until first opened, dropped when closed.
    QPointer<QWidget>& panelOf(const EffectInfo& effect);
    QPointer<QWidget>& panelOf(bool EditingState::*effectSwitch);

    // Opens an effect's panel, or brings it to the front, and gives the
    // keyboard to its first control.
    void open(const EffectInfo& effect);

    // A tool on the photo changed `field`: the panel of its effect, if open,
    // shows it and comes to the front.
    void showChangedOnPhoto(const char* field);

    // Every open panel shows the state as it is now.
    void showState(bool writingSlidersToo = false);

    // Closes the open panels in the effects' close order.
    void closeAll();

private:
    QDockWidget* dockFor(EffectPanel* panel, const EffectInfo& effect);
    QDockWidget* roomFor(QDockWidget* dock) const;

    QMainWindow* window_;
    PanelContext& context_;
    std::vector<QPointer<QWidget>> panels_;
};
