#pragma once

#include "PanelContext.h"

#include <QWidget>

#include <functional>
#include <type_traits>
#include <vector>

class ColourWell;
class QCheckBox;
class QLabel;
class QSlider;

// The base of the nine effect panels: a small panel the main window docks
// beside the preview; it shows the current settings of one effect when it opens and writes
// every change back into the editing state, then redraws the preview. It
// holds no values of its own and deletes itself when closed, which drops
// the application's reference so the next opening shows the state afresh.
class EffectPanel : public QWidget {
    Q_OBJECT

public:
    explicit EffectPanel(PanelContext& context);

    // The width a window needs to show `title` whole in its title bar.
    static int widthForTitle(const QString& title);

    // Every control shows the editing state as it is now (as when the panel
    // opened), without running any control's action or changing the state.
    virtual void showState();

    // Adds the "Defaults" button below the controls: it runs `restore`
    // (which puts this effect's settings back to their starting values),
    // shows the state and redraws.
    void offerDefaults(std::function<void()> restore);

protected:
    void changeEvent(QEvent* event) override;
    EditingState& state() { return context_.state; }
    const LocalisedLabels& labels() const { return context_.labels; }
    void redraw() { context_.redraw(); }

    // Apply box: shows `effect`, sets it, redraws.
    void bindApply(QCheckBox* box, bool& effect, const QString& title);
    // Slider: shows what `shown` gives; every move writes through `write`,
    // shows the value beside the slider and redraws. Without `shown` the
    // slider keeps the value of its interface file and only writes.
    void bindSlider(QSlider* slider, QLabel* value, std::function<int()> shown, std::function<void(int)> write);
    // A count shown and written as it is.
    template <typename Count>
    void bindCount(QSlider* slider, QLabel* value, Count& field)
    {
        bindSlider(slider, value, [&field] { return int(field); }, [&field](int position) { field = Count(position); });
    }
    // Slider writing value / 100 into a float shown as field × 100.
    void bindHundredths(QSlider* slider, QLabel* value, float& field);
    // The slider of a setting of the editing state's lists: its range and
    // how its position maps to the value come from there.
    template <auto field>
    void bindSetting(QSlider* slider, QLabel* value)
    {
        constexpr SettingRange range = Setting<field>::range;
        static_assert(range.slider != SliderScale::None, "this setting has no slider");
        setSliderRange(slider, range);
        if constexpr (range.slider == SliderScale::Hundredths)
            bindHundredths(slider, value, state().*field);
        else
            bindCount(slider, value, state().*field);
    }
    // A setting's slider that only writes: it starts at the setting's
    // starting value and keeps its own position, whatever the state says.
    template <auto field>
    void bindWritingSetting(QSlider* slider, QLabel* value)
    {
        static_assert(Setting<field>::range.slider == SliderScale::AsIs, "a writing slider gives the value itself");
        using Value = std::remove_reference_t<decltype(EditingState{}.*field)>;
        setSliderRange(slider, Setting<field>::range);
        setSliderStart(slider, int(EditingState{}.*field));
        bindSlider(slider, value, {}, [this](int position) { state().*field = Value(position); });
    }
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
    // Opening: a mode whose effect is off ends; then the controls show it.
    void bindMode(const ModeControls& controls);
    void applyWithMode(const ModeControls& controls, bool on);
    void switchMode(const ModeControls& controls, bool on);

    PanelContext& context_;

private:
    static void setSliderRange(QSlider* slider, const SettingRange& range);
    static void setSliderStart(QSlider* slider, int position);
    // How each bound control shows the state; run with the control's
    // signals blocked.
    std::vector<std::pair<QWidget*, std::function<void()>>> shows_;
    // Sliders that only write keep their own position; Defaults puts them
    // back where the interface file starts them.
    struct WriteOnlySlider {
        QSlider* slider;
        QLabel* value;
        int start;
    };
    std::vector<WriteOnlySlider> writeOnly_;
    void addShow(QWidget* control, std::function<void()> show);
};
