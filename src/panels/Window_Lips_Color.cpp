#include "Window_Lips_Color.h"

#include "AppDelegate.h"
#include "ui_Window_Lips_Color.h"

Window_Lips_Color::Window_Lips_Color(AppDelegate& app)
    : EffectPanel(app)
    , ui_(std::make_unique<Ui::Window_Lips_Color>())
{
    ui_->setupUi(this);
    bindApply(ui_->checkApply, state().b_Color_Lips, app.labels.s_IDD_COLOR_LIPS);
    bindColour(ui_->colorwellColor, state().color_Color_Lips);
    bindHundredths(ui_->slider_Transparency, ui_->labelTransparencyValue, state().f_Color_Lips_Transparency);
    ui_->labelColor->setText(app.labels.s_IDD_COLOR);
    ui_->labelTransparency->setText(app.labels.s_IDD_TRANSPARENCY);
    setWindowTitle(ui_->checkApply->text());
}

Window_Lips_Color::~Window_Lips_Color() = default;
