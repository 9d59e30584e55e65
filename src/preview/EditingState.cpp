#include "EditingState.h"

void EditingState::Reset_Variables()
{
    b_Face_Skin_Smooth = false;
    b_Color_Eyes = false;
    b_Color_Lips = false;
    b_Whiten_Teeth = false;
    b_Widen_Eyes = false;
    b_Remove_Wrinkles = false;
    b_Eye_Eyeshadow = false;
    b_Apply_Cheeks = false;
    b_Eyes_Darken = false;
}

const SettingRange* settingRange(std::string_view field)
{
    for (const SettingRange& range : kSettingRanges)
        if (field == range.field)
            return &range;
    return nullptr;
}
