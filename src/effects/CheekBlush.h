#pragma once

#include "EffectPass.h"
#include "PanelDescription.h"
#include "PhotoTool.h"

#include <memory>
#include <vector>

// Cheek blush: on each cheek's paint area a blurred radial gradient from an
// outer colour to the make-up colour at a centre the person sets; the
// areas can be moved and resized with the mouse, and the colours picked
// from the photo.
struct CheekBlush {
#define BELLAVENOR_CHEEK_BLUSH_FIELDS(SWITCH, SETTING, MODE)                                                   \
    SWITCH(b_Apply_Cheeks)                                                                                     \
    SETTING(RgbaColor, color_Color_Cheeks_1, kOrange, 0, 1, None, "Left Outer Blush Colour")                   \
    SETTING(RgbaColor, color_Color_Cheeks_1_Right, kOrange, 0, 1, None, "Right Outer Blush Colour")            \
    SETTING(RgbaColor, color_Color_Cheeks_2, kMagenta, 0, 1, None, "Blush Colour")                             \
    SETTING(float, f_Color_Cheeks_Transparency, 0.8f, 0, 1, Hundredths, "Blush Transparency")                  \
    SETTING(float, f_Cheeks_Blur_Level_Left, 4.0f, 0, 100, AsIs, "Left Blush Blur")                            \
    SETTING(float, f_Cheeks_Blur_Level_Right, 4.0f, 0, 100, AsIs, "Right Blush Blur")                          \
    SETTING(QPointF, pt_MakeUp_Center_Left, kLeftCentre, 0, 100, None, "Left Blush Centre")                    \
    SETTING(QPointF, pt_MakeUp_Center_Right, kRightCentre, 0, 100, None, "Right Blush Centre")                 \
    MODE(bool, b_Activated_Cheeks_Reposition, false, 0, 1, true)                                               \
    MODE(bool, b_Cheeks_Picking_Color, false, 0, 1, false)                                                     \
    MODE(std::int32_t, i_Picking_Color_Index, 0, 0, 3, false) /* 1 outer left, 2 make-up, 3 outer right */
    // Blush centres in percent of each cheek's paint area, y from its top;
    // deliberately asymmetric starting positions.
    static constexpr QPointF kLeftCentre{20, 20};
    static constexpr QPointF kRightCentre{80, 20};
    struct Settings {
        BELLAVENOR_SETTINGS_BLOCK(Settings, BELLAVENOR_CHEEK_BLUSH_FIELDS)
    };
    static constexpr auto effectSwitch = &Settings::b_Apply_Cheeks;
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
    static void handles(const Reshaping& reshaping, const Settings& s, QSizeF imgSize, Handles& h);

    // Its tools on the photo: picking a colour (while a Pick button waits
    // for a click), then moving and resizing the areas.
    static void addTools(Settings& s, std::vector<std::unique_ptr<PhotoTool>>& tools);
};
