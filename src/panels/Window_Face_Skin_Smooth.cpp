#include "Window_Face_Skin_Smooth.h"

Window_Face_Skin_Smooth::Window_Face_Skin_Smooth(PanelContext& context)
    : DesignedPanel(context, &EditingState::b_Face_Skin_Smooth)
{
}
