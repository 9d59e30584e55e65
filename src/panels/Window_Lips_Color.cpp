#include "Window_Lips_Color.h"

Window_Lips_Color::Window_Lips_Color(PanelContext& context)
    : DesignedPanel(context, &EditingState::b_Color_Lips)
{
}
