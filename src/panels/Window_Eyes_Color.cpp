#include "Window_Eyes_Color.h"

Window_Eyes_Color::Window_Eyes_Color(PanelContext& context)
    : DesignedPanel(context, &EditingState::b_Color_Eyes)
{
}
