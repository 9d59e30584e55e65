#include "Window_Widen_Eyes.h"

#include "AppDelegate.h"
#include "ui_Window_Widen_Eyes.h"

Window_Widen_Eyes::Window_Widen_Eyes(AppDelegate& app)
    : EffectPanel(app)
    , ui_(std::make_unique<Ui::Window_Widen_Eyes>())
{
    ui_->setupUi(this);
    bindApply(ui_->checkApply, state().b_Widen_Eyes, app.labels.s_IDD_WIDEN_EYES);
    bindSlider(ui_->slider_Level, ui_->labelLevelValue, int(state().u_Widen_Eyes_Level),
               [this](int value) { state().u_Widen_Eyes_Level = std::uint64_t(value); });
    ui_->labelLevel->setText(app.labels.s_IDD_LEVEL);
    setWindowTitle(ui_->checkApply->text());
}

Window_Widen_Eyes::~Window_Widen_Eyes() = default;
