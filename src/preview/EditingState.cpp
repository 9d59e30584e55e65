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

void EditingState::restoreDefaultsOf(bool EditingState::*effectSwitch)
{
    const EditingState d;
    using S = EditingState;
    if (effectSwitch == &S::b_Face_Skin_Smooth) {
        u_Face_Skin_Smooth_Level = d.u_Face_Skin_Smooth_Level;
        u_Face_Skin_Smooth_Radius = d.u_Face_Skin_Smooth_Radius;
    } else if (effectSwitch == &S::b_Remove_Wrinkles) {
        u_Remove_Wrinkles_Level = d.u_Remove_Wrinkles_Level;
    } else if (effectSwitch == &S::b_Color_Eyes) {
        color_Color_Eyes = d.color_Color_Eyes;
        f_Color_Eyes_Transparency = d.f_Color_Eyes_Transparency;
    } else if (effectSwitch == &S::b_Widen_Eyes) {
        u_Widen_Eyes_Level = d.u_Widen_Eyes_Level;
    } else if (effectSwitch == &S::b_Eye_Eyeshadow) {
        color_Eyeshadow = d.color_Eyeshadow;
        f_Color_Eyeshadow_Transparency = d.f_Color_Eyeshadow_Transparency;
        f_Eyeshadow_Blur_Level = d.f_Eyeshadow_Blur_Level;
    } else if (effectSwitch == &S::b_Eyes_Darken) {
        f_Darken_Eyes_Transparency = d.f_Darken_Eyes_Transparency;
        f_Darken_Eyes_Line_Width = d.f_Darken_Eyes_Line_Width;
        f_Darken_Eyes_Blur_Level = d.f_Darken_Eyes_Blur_Level;
    } else if (effectSwitch == &S::b_Apply_Cheeks) {
        color_Color_Cheeks_1 = d.color_Color_Cheeks_1;
        color_Color_Cheeks_1_Right = d.color_Color_Cheeks_1_Right;
        color_Color_Cheeks_2 = d.color_Color_Cheeks_2;
        f_Color_Cheeks_Transparency = d.f_Color_Cheeks_Transparency;
        f_Cheeks_Blur_Level_Left = d.f_Cheeks_Blur_Level_Left;
        f_Cheeks_Blur_Level_Right = d.f_Cheeks_Blur_Level_Right;
        pt_MakeUp_Center_Left = d.pt_MakeUp_Center_Left;
        pt_MakeUp_Center_Right = d.pt_MakeUp_Center_Right;
    } else if (effectSwitch == &S::b_Color_Lips) {
        color_Color_Lips = d.color_Color_Lips;
        f_Color_Lips_Transparency = d.f_Color_Lips_Transparency;
    } // teeth whitening has no settings
}

const SettingRange* settingRange(std::string_view field)
{
    for (const SettingRange& range : kSettingRanges)
        if (field == range.field)
            return &range;
    return nullptr;
}
