#pragma once

#include "EffectPass.h"
#include "EffectSettings.h"
#include "PanelDescription.h"

// Wrinkle removal: the face's skin blurred and laid over the face.
struct WrinkleRemoval {
    using Settings = WrinkleRemovalSettings;
    static constexpr auto effectSwitch = Settings::effectSwitch;
    static constexpr CatalogueRow row{Category::Face, 1, "IDD_WRINKLE_REMOVER", true};
    static const PanelDescription& panel();

    struct BlurKey {
        qint64 skinCut;
        std::uint64_t level;
        bool operator==(const BlurKey&) const = default;
    };
    struct Memos {
        Memo<qint64> skinCut; // image_Face_Skin_Cut
        Memo<BlurKey> wrinkleFreeSkin;
    };

    // "wrinkle removal": the face skin blurred, the blur's spread trimmed
    // equally on both sides (the blur cropped to the cut).
    static void removeWrinkles(EffectPass& pass, const Settings& s, Memos& memos);
};
