#include "Window_Eyes_Color.h"

Window_Eyes_Color::Window_Eyes_Color(PanelContext& context)
    : DesignedPanel(context)
{
    bindApplyAndTitle(state().b_Color_Eyes, labels().s_IDD_COLOR_EYES);
    bindColourAndTransparency(state().color_Color_Eyes, state().f_Color_Eyes_Transparency);
}
