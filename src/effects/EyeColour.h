#pragma once

#include "EffectPass.h"
#include "EffectSettings.h"
#include "PanelDescription.h"
#include "RegionImages.h"

// Eye colour: the iris grey, the colour over it, and the bright parts (the
// white of the eye, reflections) given back their own colour.
struct EyeColour {
    using Settings = EyeColourSettings;
    static constexpr auto effectSwitch = Settings::effectSwitch;
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
