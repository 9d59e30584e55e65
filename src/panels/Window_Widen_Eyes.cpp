#include "Window_Widen_Eyes.h"

using S = EditingState;

Window_Widen_Eyes::Window_Widen_Eyes(PanelContext& context)
    : DesignedPanel(context)
{
    bindApplyAndTitle(state().b_Widen_Eyes, labels().s_IDD_WIDEN_EYES);
    bindLevel<&S::u_Widen_Eyes_Level>();
}
