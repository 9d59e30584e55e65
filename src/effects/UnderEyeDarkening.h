#pragma once

#include "EffectPass.h"
#include "EffectSettings.h"
#include "PanelDescription.h"
#include "PhotoTool.h"

#include <memory>
#include <vector>

// Under-eye darkening: a ring under each eye through six points the mouse
// can move, stroked black and blurred.
struct UnderEyeDarkening {
    using Settings = UnderEyeDarkeningSettings;
    static constexpr auto effectSwitch = Settings::effectSwitch;
    static constexpr CatalogueRow row{Category::Eye, 3, "IDD_DARKEN_EYES", false};
    static const PanelDescription& panel();
    struct Memos {};

    // "under-eye darkening": the rings, stroked and blurred.
    static void darken(EffectPass& pass, const Settings& s);
    // "under-eye handles": the green squares of the six points of each side.
    static void paintHandles(EffectPass& pass, const Settings& s);

    // Where the rings' handles are while their mode is on.
    static void handles(const PhotoEdits& photoEdits, const Settings& s, QSizeF imgSize, Handles& h);

    // Its tool on the photo: the rings' points moved one at a time.
    static void addTools(Settings& s, std::vector<std::unique_ptr<PhotoTool>>& tools);

    // The ring of one side through its six points (photo pixels, y from
    // the top), as a closed image-space outline of cubic segments.
    static QPainterPath curve(const PointList& points, double imageHeight, bool leftSide);
};
