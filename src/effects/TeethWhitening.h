#pragma once

#include "EffectPass.h"
#include "EffectSettings.h"
#include "PanelDescription.h"

// Teeth whitening: the inside of the mouth, untouched or whitened, laid
// back over whatever the lips' colour painted into an open mouth.
struct TeethWhitening {
    using Settings = TeethWhiteningSettings;
    static constexpr auto effectSwitch = Settings::effectSwitch;
    static constexpr CatalogueRow row{Category::Mouth, 1, "IDD_WHITE_TEETH", true};
    static const PanelDescription& panel();

    struct Memos {
        Memo<qint64> mouth; // image_Inside_Mouth_Cut
    };

    // "mouth interior": runs whatever the switch says; it chooses between
    // the untouched and the whitened interior.
    static void restoreMouthInterior(EffectPass& pass, const Settings& s, Memos& memos);
};
