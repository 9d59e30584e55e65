#include "Window_Eyes_Darken.h"


Window_Eyes_Darken::Window_Eyes_Darken(PanelContext& context)
    : DesignedPanel(context, &EditingState::b_Eyes_Darken)
{
    ui_->btnReset->setText(labels().s_IDD_RESET);
    connect(ui_->btnReset, &QPushButton::clicked, this, &Window_Eyes_Darken::OnReset);
}

void Window_Eyes_Darken::Enable_Color_Controls(bool enabled)
{
    enableResting(enabled);
}

void Window_Eyes_Darken::OnReset()
{
    context_.document.resetUnderEyeRings(tr("Reset Under-Eye Rings"));
}
