#include "Window_Remove_Wrinkles.h"

using S = EditingState;

Window_Remove_Wrinkles::Window_Remove_Wrinkles(PanelContext& context)
    : DesignedPanel(context)
{
    bindApplyAndTitle(state().b_Remove_Wrinkles, labels().s_IDD_WRINKLE_REMOVER);
    bindLevel<&S::u_Remove_Wrinkles_Level>();
}
