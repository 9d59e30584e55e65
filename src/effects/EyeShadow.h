#pragma once

#include "EffectPass.h"
#include "EffectSettings.h"
#include "PanelDescription.h"

// Eye shadow: the lids filled with a colour and blurred.
struct EyeShadow {
    using Settings = EyeShadowSettings;
    static constexpr auto effectSwitch = Settings::effectSwitch;
    static constexpr CatalogueRow row{Category::Eye, 2, "IDD_EYELID", true};
    static const PanelDescription& panel();
    struct Memos {};

    // "eye shadow".
    static void paint(EffectPass& pass, const Settings& s);
};
