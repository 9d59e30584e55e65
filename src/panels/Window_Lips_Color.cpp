#include "Window_Lips_Color.h"

using S = EditingState;

Window_Lips_Color::Window_Lips_Color(PanelContext& context)
    : DesignedPanel(context)
{
    bindApplyAndTitle(state().b_Color_Lips, labels().s_IDD_COLOR_LIPS);
    bindColourAndTransparency<&S::color_Color_Lips, &S::f_Color_Lips_Transparency>();
}
