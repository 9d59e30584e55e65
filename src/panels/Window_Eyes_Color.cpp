#include "Window_Eyes_Color.h"

#include "AppDelegate.h"
#include "ui_Window_Eyes_Color.h"

Window_Eyes_Color::Window_Eyes_Color(AppDelegate& app)
    : EffectPanel(app)
    , ui_(std::make_unique<Ui::Window_Eyes_Color>())
{
    ui_->setupUi(this);
    bindApply(ui_->checkApply, state().b_Color_Eyes, app.labels.s_IDD_COLOR_EYES);
    bindColour(ui_->colorwellColor, state().color_Color_Eyes);
    bindHundredths(ui_->slider_Transparency, ui_->labelTransparencyValue, state().f_Color_Eyes_Transparency);
    ui_->labelColor->setText(app.labels.s_IDD_COLOR);
    ui_->labelTransparency->setText(app.labels.s_IDD_TRANSPARENCY);
    setWindowTitle(ui_->checkApply->text());
}

Window_Eyes_Color::~Window_Eyes_Color() = default;
