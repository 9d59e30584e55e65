#pragma once

#include "EffectPass.h"
#include "EffectSettings.h"
#include "PanelDescription.h"

// Widen eyes: each eye stretched horizontally by the level in percent,
// centred on its rectangle.
struct WidenEyes {
    using Settings = WidenEyesSettings;
    static constexpr auto effectSwitch = Settings::effectSwitch;
    static constexpr CatalogueRow row{Category::Eye, 1, "IDD_WIDEN_EYES", true};
    static const PanelDescription& panel();
    struct Memos {};

    // "widen eyes".
    static void widen(EffectPass& pass, const Settings& s);
};
