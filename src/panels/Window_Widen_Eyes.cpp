#include "Window_Widen_Eyes.h"

Window_Widen_Eyes::Window_Widen_Eyes(PanelContext& context)
    : DesignedPanel(context, &EditingState::b_Widen_Eyes)
{
}
