#pragma once

#include "EffectPass.h"
#include "PanelDescription.h"
#include "PhotoTool.h"

#include <memory>
#include <vector>

// Under-eye darkening: a ring under each eye through six points the mouse
// can move, stroked black and blurred.
struct UnderEyeDarkening {
    // The ring is drawn with alpha 1 - transparency: at the starting 0 it is
    // opaque black (before its blur), at 1 invisible.
#define BELLAVENOR_UNDER_EYE_FIELDS(SWITCH, SETTING, MODE)                                             \
    SWITCH(b_Eyes_Darken)                                                                              \
    SETTING(float, f_Darken_Eyes_Transparency, 0.0f, 0, 1, Hundredths, "Under-Eye Transparency")       \
    SETTING(float, f_Darken_Eyes_Line_Width, 1.0f, 1, 10, AsIs, "Under-Eye Line Width")                \
    SETTING(float, f_Darken_Eyes_Blur_Level, 1.0f, 0, 5, Hundredths, "Under-Eye Blur")                 \
    MODE(bool, b_Activated_Darken_Eyes_Reposition, false, 0, 1, true)
    struct Settings {
        BELLAVENOR_SETTINGS_BLOCK(Settings, BELLAVENOR_UNDER_EYE_FIELDS)
    };
    static constexpr auto effectSwitch = &Settings::b_Eyes_Darken;
    static constexpr CatalogueRow row{Category::Eye, 3, "IDD_DARKEN_EYES", false};
    static const PanelDescription& panel();
    struct Memos {};

    // "under-eye darkening": the rings, stroked and blurred.
    static void darken(EffectPass& pass, const Settings& s);
    // "under-eye handles": the green squares of the six points of each side.
    static void paintHandles(EffectPass& pass, const Settings& s);

    // Where the rings' handles are while their mode is on.
    static void handles(const Reshaping& reshaping, const Settings& s, QSizeF imgSize, Handles& h);

    // Its tool on the photo: the rings' points moved one at a time.
    static void addTools(Settings& s, std::vector<std::unique_ptr<PhotoTool>>& tools);

    // The ring of one side through its six points (photo pixels, y from
    // the top), as a closed image-space outline of cubic segments.
    static QPainterPath curve(const PointList& points, double imageHeight, bool leftSide);
};
