#include "Window_Face_Skin_Smooth.h"

#include "AppDelegate.h"
#include "ui_Window_Face_Skin_Smooth.h"

Window_Face_Skin_Smooth::Window_Face_Skin_Smooth(AppDelegate& app)
    : EffectPanel(app)
    , ui_(std::make_unique<Ui::Window_Face_Skin_Smooth>())
{
    ui_->setupUi(this);
    bindApply(ui_->checkApply, state().b_Face_Skin_Smooth, app.labels.s_IDD_SMOOTH_SKIN);
    bindSlider(ui_->slider_Level, ui_->labelLevelValue, int(state().u_Face_Skin_Smooth_Level),
               [this](int value) { state().u_Face_Skin_Smooth_Level = std::uint64_t(value); });
    bindSlider(ui_->slider_Ratio, ui_->labelRadiusValue, int(state().u_Face_Skin_Smooth_Radius),
               [this](int value) { state().u_Face_Skin_Smooth_Radius = std::uint64_t(value); });
    ui_->labelLevel->setText(app.labels.s_IDD_LEVEL);
    ui_->labelRadius->setText(app.labels.s_IDD_RADIUS);
    setWindowTitle(ui_->checkApply->text());
}

Window_Face_Skin_Smooth::~Window_Face_Skin_Smooth() = default;
