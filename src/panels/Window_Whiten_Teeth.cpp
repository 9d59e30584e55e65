#include "Window_Whiten_Teeth.h"

Window_Whiten_Teeth::Window_Whiten_Teeth(PanelContext& context)
    : DesignedPanel(context)
{
    bindApplyAndTitle(state().b_Whiten_Teeth, labels().s_IDD_WHITE_TEETH);
}
