#include "Window_Eye_Shadow.h"

Window_Eye_Shadow::Window_Eye_Shadow(PanelContext& context)
    : DesignedPanel(context, &EditingState::b_Eye_Eyeshadow)
{
}
