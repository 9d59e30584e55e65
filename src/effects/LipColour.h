#pragma once

#include "EffectPass.h"
#include "EffectSettings.h"
#include "PanelDescription.h"

// Lip colour: a grey, brighter copy of the lips under a colour fill.
struct LipColour {
    using Settings = LipColourSettings;
    static constexpr auto effectSwitch = Settings::effectSwitch;
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
