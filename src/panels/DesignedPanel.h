#pragma once

#include "EffectPanel.h"

#include <QCheckBox>
#include <QLabel>

#include <memory>

// An effect panel laid out by its interface file (`Form`, the class
// Qt's uic makes of it), with the pieces most panels share, found by the
// names their interface files give the controls.
template <typename Form>
class DesignedPanel : public EffectPanel {
public:
    const Form& ui() const { return *ui_; }

protected:
    explicit DesignedPanel(PanelContext& context)
        : EffectPanel(context)
        , ui_(std::make_unique<Form>())
    {
        ui_->setupUi(this);
    }

    // The Apply box (checkApply) for `effect`; its title is the window's.
    void bindApplyAndTitle(bool& effect, const QString& title)
    {
        bindApply(ui_->checkApply, effect, title);
        setWindowTitle(title);
    }

    // The Level slider (slider_Level, labelLevel, labelLevelValue).
    template <auto level>
    void bindLevel()
    {
        bindSetting<level>(ui_->slider_Level, ui_->labelLevelValue);
        ui_->labelLevel->setText(labels().s_IDD_LEVEL);
    }

    // The colour well (colorwellColor, labelColor) and the transparency
    // slider (slider_Transparency, labelTransparency, labelTransparencyValue).
    template <auto colour, auto transparency>
    void bindColourAndTransparency()
    {
        bindColour(ui_->colorwellColor, state().*colour);
        bindSetting<transparency>(ui_->slider_Transparency, ui_->labelTransparencyValue);
        ui_->labelColor->setText(labels().s_IDD_COLOR);
        ui_->labelTransparency->setText(labels().s_IDD_TRANSPARENCY);
    }

    std::unique_ptr<Form> ui_;
};
