#include "Window_Whiten_Teeth.h"

#include "AppDelegate.h"
#include "ui_Window_Whiten_Teeth.h"

Window_Whiten_Teeth::Window_Whiten_Teeth(AppDelegate& app)
    : EffectPanel(app)
    , ui_(std::make_unique<Ui::Window_Whiten_Teeth>())
{
    ui_->setupUi(this);
    bindApply(ui_->checkApply, state().b_Whiten_Teeth, app.labels.s_IDD_WHITE_TEETH);
    setWindowTitle(ui_->checkApply->text());
}

Window_Whiten_Teeth::~Window_Whiten_Teeth() = default;
