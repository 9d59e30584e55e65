#pragma once

#include "EffectPass.h"
#include "PanelDescription.h"
#include "RegionImages.h"

// Eye colour: the iris grey, the colour over it, and the bright parts (the
// white of the eye, reflections) given back their own colour.
struct EyeColour {
#define BELLAVENOR_EYE_COLOUR_FIELDS(SWITCH, SETTING, MODE)                     \
    SWITCH(b_Color_Eyes)                                                        \
    SETTING(RgbaColor, color_Color_Eyes, kBlue, 0, 1, None, "Eye Colour")       \
    SETTING(float, f_Color_Eyes_Transparency, 0.2f, 0, 1, Hundredths, "Eye Colour Transparency")
    struct Settings {
        BELLAVENOR_SETTINGS_BLOCK(Settings, BELLAVENOR_EYE_COLOUR_FIELDS)
    };
    static constexpr auto effectSwitch = &Settings::b_Color_Eyes;
    static constexpr CatalogueRow row{Category::Eye, 0, "IDD_COLOR_EYES", true};
    static const PanelDescription& panel();

    struct Eyes {
        RegionImages::Eye left, right;
    };
    struct Memos {
        Memo<qint64, Eyes> eyes;
    };

    // "eye colour": the grey iris and the colour over it.
    static void paintColour(EffectPass& pass, const Settings& s, Memos& memos);
    // "eye colour finishing": where the grey eye is bright the colour gives
    // way to the eye's own colour again.
    static void finish(EffectPass& pass, const Settings& s, Memos& memos);
};
