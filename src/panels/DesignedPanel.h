#pragma once

#include "EffectPanel.h"

#include <memory>

// An effect panel laid out by its interface file (`Form`, the class Qt's
// uic makes of it): the controls of the effect's description are found
// there by their names.
template <typename Form>
class DesignedPanel : public EffectPanel {
public:
    const Form& ui() const { return *ui_; }

protected:
    DesignedPanel(PanelContext& context, bool EditingState::*effectSwitch)
        : EffectPanel(context, *effectWithSwitch(effectSwitch), Designed{})
        , ui_(std::make_unique<Form>())
    {
        ui_->setupUi(this);
        bind();
    }

    std::unique_ptr<Form> ui_;
};
