#include "Window_Face_Skin_Smooth.h"

using S = EditingState;

Window_Face_Skin_Smooth::Window_Face_Skin_Smooth(PanelContext& context)
    : DesignedPanel(context)
{
    bindApplyAndTitle(state().b_Face_Skin_Smooth, labels().s_IDD_SMOOTH_SKIN);
    bindLevel<&S::u_Face_Skin_Smooth_Level>();
    bindSetting<&S::u_Face_Skin_Smooth_Radius>(ui_->slider_Ratio, ui_->labelRadiusValue);
    ui_->labelRadius->setText(labels().s_IDD_RADIUS);
}
