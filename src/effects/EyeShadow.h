#pragma once

#include "EffectPass.h"
#include "PanelDescription.h"

// Eye shadow: the lids filled with a colour and blurred.
struct EyeShadow {
#define BELLAVENOR_EYE_SHADOW_FIELDS(SWITCH, SETTING, MODE)                                          \
    SWITCH(b_Eye_Eyeshadow)                                                                          \
    SETTING(RgbaColor, color_Eyeshadow, kBlue, 0, 1, None, "Eye Shadow Colour")                      \
    SETTING(float, f_Color_Eyeshadow_Transparency, 0.2f, 0, 1, Hundredths, "Eye Shadow Transparency") \
    SETTING(float, f_Eyeshadow_Blur_Level, 7.0f, 0, 15, Hundredths, "Eye Shadow Blur")
    struct Settings {
        BELLAVENOR_SETTINGS_BLOCK(Settings, BELLAVENOR_EYE_SHADOW_FIELDS)
    };
    static constexpr auto effectSwitch = &Settings::b_Eye_Eyeshadow;
    static constexpr CatalogueRow row{Category::Eye, 2, "IDD_EYELID", true};
    static const PanelDescription& panel();
    struct Memos {};

    // "eye shadow".
    static void paint(EffectPass& pass, const Settings& s);
};
