#include "Window_Eye_Shadow.h"

using S = EditingState;

Window_Eye_Shadow::Window_Eye_Shadow(PanelContext& context)
    : DesignedPanel(context)
{
    bindApplyAndTitle(state().b_Eye_Eyeshadow, labels().s_IDD_EYELID);
    bindColourAndTransparency<&S::color_Eyeshadow, &S::f_Color_Eyeshadow_Transparency>();
    bindSetting<&S::f_Eyeshadow_Blur_Level>(ui_->slider_Blur, ui_->label_Blur_Value);
    ui_->label_Blur->setText(labels().s_IDD_BLUR);
}
