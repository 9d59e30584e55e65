#pragma once

#include "EditingState.h"

#include <QWidget>

#include <functional>

class AppDelegate;
class ColourWell;
class QCheckBox;
class QLabel;
class QSlider;

// The base of the nine effect panels: a small floating window that shows the
// current settings of one effect when it opens and writes every change back
// into the editing state, then redraws the preview. It holds no values of
// its own and deletes itself when closed, which drops the application's
// reference so the next opening shows the state afresh.
class EffectPanel : public QWidget {
    Q_OBJECT

public:
    explicit EffectPanel(AppDelegate& app);

    // The width a window needs to show `title` whole in its title bar.
    static int widthForTitle(const QString& title);

protected:
    void changeEvent(QEvent* event) override;
    EditingState& state();
    void redraw();

    // Apply box: shows `effect`, sets it, redraws.
    void bindApply(QCheckBox* box, bool& effect, const QString& title);
    // Slider: starts at `shown`; every move writes through `write`, shows the
    // value beside the slider and redraws.
    void bindSlider(QSlider* slider, QLabel* value, int shown, std::function<void(int)> write);
    // Slider writing value / 100 into a float shown as field × 100.
    void bindHundredths(QSlider* slider, QLabel* value, float& field);
    void bindColour(ColourWell* well, RgbaColor& field);

    // The two effects with a mouse mode of their own (cheeks, under-eye
    // rings): the mode needs the effect on, leaving the effect ends it, the
    // value controls rest while it is on, and it cannot start while the other
    // effect's mode is on (the box may tick, the mode stays off).
    struct ModeControls {
        QCheckBox* apply;
        QCheckBox* modeBox;
        bool& effect;
        bool& mode;
        const bool& otherMode;
        std::function<void(bool)> enableValues;
    };
    void showMode(const ModeControls& controls);
    void applyWithMode(const ModeControls& controls, bool on);
    void switchMode(const ModeControls& controls, bool on);

    AppDelegate& app;
};
