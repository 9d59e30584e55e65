#include "Window_Whiten_Teeth.h"

Window_Whiten_Teeth::Window_Whiten_Teeth(PanelContext& context)
    : DesignedPanel(context, &EditingState::b_Whiten_Teeth)
{
}
