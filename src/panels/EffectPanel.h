#pragma once

#include "EffectCatalogue.h"
#include "PanelDescription.h"
#include "PanelContext.h"

#include <QWidget>

#include <functional>
#include <vector>

class QCheckBox;
class QLabel;
class QSlider;

// The panel of one effect, docked beside the preview: it shows the current
// settings of the effect and writes every change of a control back into the
// document, saying which field it changed. Its controls are those of the
// effect's panel description, found by their names when an interface file
// laid them out, else made here in the description's order. It holds no
// values of its own and deletes itself when closed, which drops the
// application's reference so the next opening shows the state afresh.
class EffectPanel : public QWidget {
    Q_OBJECT

public:
    // A panel built from the effect's description alone.
    EffectPanel(PanelContext& context, const EffectInfo& effect);

    // The width a window needs to show `title` whole in its title bar.
    static int widthForTitle(const QString& title);

    const EffectInfo& effect() const { return effect_; }

    // Every control shows the editing state as it is now, without running
    // any control's action or changing the state. A slider that only writes
    // keeps its position unless `writingSlidersToo`.
    void showState(bool writingSlidersToo = false);

    // A tool on the photo changed `field` of this effect (a colour picked,
    // a spot clicked): the panel shows it.
    virtual void showChangedOnPhoto(const char* field);

    // Adds the "Defaults" button below the controls: it puts this effect's
    // settings back to their starting values as one step of the Edit menu.
    void offerDefaults();

protected:
    // For a panel laid out by an interface file: bind() once it is set up.
    struct Designed {};
    EffectPanel(PanelContext& context, const EffectInfo& effect, Designed);
    void bind();

    void changeEvent(QEvent* event) override;
    EditingState& state() { return context_.document.state; }
    const LocalisedLabels& labels() const { return context_.labels; }
    // After a control wrote `field`: the picture follows, the Edit menu records.
    void changed(const char* field);
    // The controls a mouse mode rests, enabled or not.
    void enableResting(bool enabled);
    // How a control of the panel's own shows the state.
    void addShow(QWidget* control, std::function<void()> show, bool writesOnly = false);

    PanelContext& context_;

private:
    void build();
    QString caption(const PanelControl& control) const;
    void bindApply(const PanelControl& control);
    void bindMode(const PanelControl& control);
    void bindSlider(const PanelControl& control);
    void bindColour(const PanelControl& control);
    void bindToggle(const PanelControl& control);
    const PanelControl* modeControl() const;

    const EffectInfo& effect_;
    // How each bound control shows the state; run with the control's
    // signals blocked. A slider that only writes shows it when asked to.
    struct Show {
        QWidget* control;
        std::function<void()> show;
        bool writesOnly;
    };
    std::vector<Show> shows_;
};
