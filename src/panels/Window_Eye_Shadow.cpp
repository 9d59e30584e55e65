#include "Window_Eye_Shadow.h"

#include "AppDelegate.h"
#include "ui_Window_Eye_Shadow.h"

Window_Eye_Shadow::Window_Eye_Shadow(AppDelegate& app)
    : EffectPanel(app)
    , ui_(std::make_unique<Ui::Window_Eye_Shadow>())
{
    ui_->setupUi(this);
    bindApply(ui_->checkApply, state().b_Eye_Eyeshadow, app.labels.s_IDD_EYELID);
    bindColour(ui_->colorwellColor, state().color_Eyeshadow);
    bindHundredths(ui_->slider_Transparency, ui_->labelTransparencyValue, state().f_Color_Eyeshadow_Transparency);
    bindHundredths(ui_->slider_Blur, ui_->label_Blur_Value, state().f_Eyeshadow_Blur_Level);
    ui_->labelColor->setText(app.labels.s_IDD_COLOR);
    ui_->labelTransparency->setText(app.labels.s_IDD_TRANSPARENCY);
    ui_->label_Blur->setText(app.labels.s_IDD_BLUR);
    setWindowTitle(ui_->checkApply->text());
}

Window_Eye_Shadow::~Window_Eye_Shadow() = default;
