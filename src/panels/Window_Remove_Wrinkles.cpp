#include "Window_Remove_Wrinkles.h"

Window_Remove_Wrinkles::Window_Remove_Wrinkles(PanelContext& context)
    : DesignedPanel(context)
{
    bindApplyAndTitle(state().b_Remove_Wrinkles, labels().s_IDD_WRINKLE_REMOVER);
    bindLevel(state().u_Remove_Wrinkles_Level);
}
