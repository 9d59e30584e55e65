#pragma once

#include "EffectPass.h"
#include "PanelDescription.h"

// Widen eyes: each eye stretched horizontally by the level in percent,
// centred on its rectangle.
struct WidenEyes {
#define BELLAVENOR_WIDEN_EYES_FIELDS(SWITCH, SETTING, MODE) \
    SWITCH(b_Widen_Eyes)                                    \
    SETTING(std::uint64_t, u_Widen_Eyes_Level, 0, 0, 30, AsIs, "Widen Eyes Level")
    struct Settings {
        BELLAVENOR_SETTINGS_BLOCK(Settings, BELLAVENOR_WIDEN_EYES_FIELDS)
    };
    static constexpr auto effectSwitch = &Settings::b_Widen_Eyes;
    static constexpr CatalogueRow row{Category::Eye, 1, "IDD_WIDEN_EYES", true};
    static const PanelDescription& panel();
    struct Memos {};

    // "widen eyes".
    static void widen(EffectPass& pass, const Settings& s);
};
