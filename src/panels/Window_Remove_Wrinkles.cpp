#include "Window_Remove_Wrinkles.h"

#include "AppDelegate.h"
#include "ui_Window_Remove_Wrinkles.h"

Window_Remove_Wrinkles::Window_Remove_Wrinkles(AppDelegate& app)
    : EffectPanel(app)
    , ui_(std::make_unique<Ui::Window_Remove_Wrinkles>())
{
    ui_->setupUi(this);
    bindApply(ui_->checkApply, state().b_Remove_Wrinkles, app.labels.s_IDD_WRINKLE_REMOVER);
    bindSlider(ui_->slider_Level, ui_->labelLevelValue, int(state().u_Remove_Wrinkles_Level),
               [this](int value) { state().u_Remove_Wrinkles_Level = std::uint64_t(value); });
    ui_->labelLevel->setText(app.labels.s_IDD_LEVEL);
    setWindowTitle(ui_->checkApply->text());
}

Window_Remove_Wrinkles::~Window_Remove_Wrinkles() = default;
