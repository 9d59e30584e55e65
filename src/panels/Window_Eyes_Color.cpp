#include "Window_Eyes_Color.h"

using S = EditingState;

Window_Eyes_Color::Window_Eyes_Color(PanelContext& context)
    : DesignedPanel(context)
{
    bindApplyAndTitle(state().b_Color_Eyes, labels().s_IDD_COLOR_EYES);
    bindColourAndTransparency<&S::color_Color_Eyes, &S::f_Color_Eyes_Transparency>();
}
