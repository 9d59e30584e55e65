#include "Window_Lips_Color.h"

Window_Lips_Color::Window_Lips_Color(PanelContext& context)
    : DesignedPanel(context)
{
    bindApplyAndTitle(state().b_Color_Lips, labels().s_IDD_COLOR_LIPS);
    bindColourAndTransparency(state().color_Color_Lips, state().f_Color_Lips_Transparency);
}
