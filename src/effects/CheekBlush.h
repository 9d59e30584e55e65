#pragma once

#include "EffectPass.h"
#include "EffectSettings.h"
#include "PanelDescription.h"
#include "PhotoTool.h"

#include <memory>
#include <vector>

// Cheek blush: on each cheek's paint area a blurred radial gradient from an
// outer colour to the make-up colour at a centre the person sets; the
// areas can be moved and resized with the mouse, and the colours picked
// from the photo.
struct CheekBlush {
    using Settings = CheekBlushSettings;
    static constexpr auto effectSwitch = Settings::effectSwitch;
    static constexpr CatalogueRow row{Category::Face, 2, "IDD_CHEEKS", false};
    static const PanelDescription& panel();

    struct LayerKey {
        RgbaColor outer, inner;
        QPointF centre;
        float blur;
        int size;
        bool operator==(const LayerKey&) const = default;
    };
    struct Memos {
        Memo<LayerKey> left, right;
    };

    // "cheeks": blush over the finished face, each side with its handles
    // before the next.
    static void paint(EffectPass& pass, const Settings& s, Memos& memos);

    // A colour picked from the photo goes where the pick was asked for
    // (i_Picking_Color_Index: 1 left outer, 2 make-up, 3 right outer) and
    // the pick ends; the field it went to, or none for another index.
    static const char* takePickedColour(Settings& s, const RgbaColor& colour);

    // Where the areas' corner handles are while the mode is on.
    static void handles(const PhotoEdits& photoEdits, const Settings& s, QSizeF imgSize, Handles& h);

    // Its tools on the photo: picking a colour (while a Pick button waits
    // for a click), then moving and resizing the areas.
    static void addTools(Settings& s, std::vector<std::unique_ptr<PhotoTool>>& tools);
};
