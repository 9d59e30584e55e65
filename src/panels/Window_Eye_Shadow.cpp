#include "Window_Eye_Shadow.h"

Window_Eye_Shadow::Window_Eye_Shadow(PanelContext& context)
    : DesignedPanel(context)
{
    bindApplyAndTitle(state().b_Eye_Eyeshadow, labels().s_IDD_EYELID);
    bindColourAndTransparency(state().color_Eyeshadow, state().f_Color_Eyeshadow_Transparency);
    bindHundredths(ui_->slider_Blur, ui_->label_Blur_Value, state().f_Eyeshadow_Blur_Level);
    ui_->label_Blur->setText(labels().s_IDD_BLUR);
}
