#pragma once

#include "EffectPass.h"
#include "PanelDescription.h"

// Lip colour: a grey, brighter copy of the lips under a colour fill.
struct LipColour {
#define BELLAVENOR_LIP_COLOUR_FIELDS(SWITCH, SETTING, MODE)                            \
    SWITCH(b_Color_Lips)                                                               \
    SETTING(RgbaColor, color_Color_Lips, kBlue, 0, 1, None, "Lip Colour")              \
    SETTING(float, f_Color_Lips_Transparency, 0.2f, 0, 1, Hundredths, "Lip Colour Transparency")
    struct Settings {
        BELLAVENOR_SETTINGS_BLOCK(Settings, BELLAVENOR_LIP_COLOUR_FIELDS)
    };
    static constexpr auto effectSwitch = &Settings::b_Color_Lips;
    static constexpr CatalogueRow row{Category::Mouth, 0, "IDD_LIPS", true};
    static const PanelDescription& panel();

    struct Memos {
        Memo<qint64> greyLips; // image_Lips_Black_White
    };

    // "lips mask": the grey lips, which keep their light and shade under
    // the colour.
    static void paintMask(EffectPass& pass, const Settings& s, Memos& memos);
    // "lips colour": the colour over them, the transparency as its alpha.
    static void paintColour(EffectPass& pass, const Settings& s);
};
