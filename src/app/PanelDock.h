#pragma once

#include "EffectPanel.h"

#include <QObject>
#include <QPointer>

#include <vector>

class QDockWidget;
class QMainWindow;
class QScrollArea;

// The effects' panels: each made when first opened (with its Defaults
// button) and dropped when it closes. Open panels stack at their natural
// height, in the order opened, in one column at the right of the preview
// that scrolls as a whole when they are taller than the window; the column
// closes up when one closes and is gone when none is open. A panel is
// pulled out to float (and docked again) by its title, and can be dragged
// to another place in the column.
class PanelDock : public QObject {
    Q_OBJECT

public:
    PanelDock(QMainWindow* window, PanelContext& context);

    // The panel of an effect; empty until first opened, dropped when closed.
    QPointer<QWidget>& panelOf(const EffectInfo& effect);
    QPointer<QWidget>& panelOf(bool EditingState::*effectSwitch);

    // Opens an effect's panel, or scrolls it into view, and gives the
    // keyboard to its first control.
    void open(const EffectInfo& effect);

    // Puts a dock of another kind at the top of the column (the faces).
    void addAtTop(QDockWidget* dock);

    // A tool on the photo changed `field`: the panel of its effect, if open,
    // shows it and comes into view.
    void showChangedOnPhoto(const char* field);

    // Every open panel shows the state as it is now.
    void showState(bool writingSlidersToo = false);

    // Closes the open panels in the effects' close order.
    void closeAll();

    // The scrolling column.
    QScrollArea* column() const { return scroll_; }

protected:
    // The wheel scrolls the column, not a slider it passes over: a slider
    // takes it only once clicked or tabbed to.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QDockWidget* dockFor(EffectPanel* panel, const EffectInfo& effect);
    void takeIntoColumn(QDockWidget* dock);
    // Shows the column while a dock is in it, as wide as its widest.
    void fitColumn();
    void bringIntoView(QWidget* panel);

    QMainWindow* window_;
    PanelContext& context_;
    std::vector<QPointer<QWidget>> panels_;
    QMainWindow* docks_;       // the panels' docks, inside the scrolling column
    QScrollArea* scroll_;      // the column
    QDockWidget* columnDock_;  // the column at the window's right
};
