#include "Window_Eyes_Darken.h"

using S = EditingState;

Window_Eyes_Darken::Window_Eyes_Darken(PanelContext& context)
    : DesignedPanel(context)
{
    EditingState& s = state();
    modes_ = std::make_unique<ModeControls>(ModeControls{
        ui_->checkApply, ui_->checkActivateEyesDarkenReposition, s.b_Eyes_Darken,
        s.b_Activated_Darken_Eyes_Reposition, s.b_Activated_Cheeks_Reposition,
        [this](bool enabled) { Enable_Color_Controls(enabled); }});
    bindMode(*modes_);

    bindSetting<&S::f_Darken_Eyes_Transparency>(ui_->slider_Transparency, ui_->label_Transparency_Value);
    bindSetting<&S::f_Darken_Eyes_Line_Width>(ui_->slider_Line_Width, ui_->label_Line_Width_Value);
    bindSetting<&S::f_Darken_Eyes_Blur_Level>(ui_->slider_Blur, ui_->label_Blur_Value);

    const LocalisedLabels& l = labels();
    ui_->checkApply->setText(l.s_IDD_DARKEN_EYES);
    ui_->checkActivateEyesDarkenReposition->setText(l.s_IDD_EDIT_SIZE_POSITION);
    ui_->label_Transparency->setText(l.s_IDD_TRANSPARENCY);
    ui_->label_Line_Width->setText(l.s_IDD_LINE_WIDTH);
    ui_->btnReset->setText(l.s_IDD_RESET);
    ui_->label_Blur->setText(l.s_IDD_BLUR);
    setWindowTitle(l.s_IDD_DARKEN_EYES);

    connect(ui_->checkApply, &QCheckBox::toggled, this, &Window_Eyes_Darken::OnApplyDarkenEyes);
    connect(ui_->checkActivateEyesDarkenReposition, &QCheckBox::toggled, this,
            &Window_Eyes_Darken::OnActivateDarkenEyesReposition);
    connect(ui_->btnReset, &QPushButton::clicked, this, &Window_Eyes_Darken::OnReset);
}

void Window_Eyes_Darken::Enable_Color_Controls(bool enabled)
{
    ui_->slider_Transparency->setEnabled(enabled);
    ui_->slider_Line_Width->setEnabled(enabled);
    ui_->slider_Blur->setEnabled(enabled);
}

void Window_Eyes_Darken::OnApplyDarkenEyes(bool on)
{
    applyWithMode(*modes_, on);
}

void Window_Eyes_Darken::OnActivateDarkenEyesReposition(bool on)
{
    switchMode(*modes_, on);
}

void Window_Eyes_Darken::OnReset()
{
    context_.resetUnderEyeRings();
    redraw();
}
