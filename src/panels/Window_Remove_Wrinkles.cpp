#include "Window_Remove_Wrinkles.h"

Window_Remove_Wrinkles::Window_Remove_Wrinkles(PanelContext& context)
    : DesignedPanel(context, &EditingState::b_Remove_Wrinkles)
{
}
