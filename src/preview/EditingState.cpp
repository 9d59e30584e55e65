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

namespace {

using S = EditingState;

// The fields an effect's panel sets back to their starting values.
template <auto... fields>
void restore(EditingState& state)
{
    const EditingState starting;
    ((state.*fields = starting.*fields), ...);
}

struct EffectSettings {
    bool EditingState::*effectSwitch;
    void (*restore)(EditingState&);
};

// Teeth whitening has no settings.
const EffectSettings kEffectSettings[] = {
    {&S::b_Face_Skin_Smooth, restore<&S::u_Face_Skin_Smooth_Level, &S::u_Face_Skin_Smooth_Radius>},
    {&S::b_Remove_Wrinkles, restore<&S::u_Remove_Wrinkles_Level>},
    {&S::b_Color_Eyes, restore<&S::color_Color_Eyes, &S::f_Color_Eyes_Transparency>},
    {&S::b_Widen_Eyes, restore<&S::u_Widen_Eyes_Level>},
    {&S::b_Eye_Eyeshadow,
     restore<&S::color_Eyeshadow, &S::f_Color_Eyeshadow_Transparency, &S::f_Eyeshadow_Blur_Level>},
    {&S::b_Eyes_Darken,
     restore<&S::f_Darken_Eyes_Transparency, &S::f_Darken_Eyes_Line_Width, &S::f_Darken_Eyes_Blur_Level>},
    {&S::b_Apply_Cheeks,
     restore<&S::color_Color_Cheeks_1, &S::color_Color_Cheeks_1_Right, &S::color_Color_Cheeks_2,
             &S::f_Color_Cheeks_Transparency, &S::f_Cheeks_Blur_Level_Left, &S::f_Cheeks_Blur_Level_Right,
             &S::pt_MakeUp_Center_Left, &S::pt_MakeUp_Center_Right>},
    {&S::b_Color_Lips, restore<&S::color_Color_Lips, &S::f_Color_Lips_Transparency>},
};

} // namespace

void EditingState::restoreDefaultsOf(bool EditingState::*effectSwitch)
{
    for (const EffectSettings& effect : kEffectSettings)
        if (effect.effectSwitch == effectSwitch)
            effect.restore(*this);
}

const SettingRange* settingRange(std::string_view field)
{
    for (const SettingRange& range : kSettingRanges)
        if (field == range.field)
            return &range;
    return nullptr;
}
