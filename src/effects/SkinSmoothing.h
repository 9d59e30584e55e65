#pragma once

#include "EffectPass.h"
#include "EffectSettings.h"
#include "PanelDescription.h"

#include <memory>

// Skin smoothing: the face through a soft tone curve wherever it has no
// fine detail, sharpened lightly. Its step starts every picture: the photo
// over opaque black, smoothed when the switch is on.
struct SkinSmoothing {
    using Settings = SkinSmoothingSettings;
    static constexpr auto effectSwitch = Settings::effectSwitch;
    static constexpr CatalogueRow row{Category::Face, 0, "IDD_SMOOTH_SKIN", true};
    static const PanelDescription& panel();

    // What the smoothing keeps between pictures (the filter's planes, mask
    // and buffers, the smoothed base), made at its first picture.
    struct Kept;
    struct Memos {
        std::shared_ptr<Kept> kept;
    };

    // "photo and skin smoothing": the photo over opaque black, and the
    // smoothed face over all of it while the switch is on.
    static void startFromPhoto(EffectPass& pass, const Settings& s, Memos& memos);

private:
    static void startFromKept(EffectPass& pass, const Settings& s, Kept& kept);
};
