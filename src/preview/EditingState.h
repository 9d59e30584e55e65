#pragma once

#include <QPointF>
#include <QtGui/qrgbafloat.h>

#include <cstdint>
#include <string_view>

// A colour as four components in 0..1, kept exactly as set: orange is
// (1, 0.5, 0, 1), not an 8- or 16-bit approximation of it.
using RgbaColor = QRgbaFloat32;

// What the user has set in the effect panels. The panels write it, the
// compositor reads it on every redraw; nothing here redraws or validates.
struct EditingState {
    // Effect switches: an effect is drawn only while its switch is on. All go
    // off whenever a new photo is accepted.
    bool b_Face_Skin_Smooth = false;
    bool b_Remove_Wrinkles = false;
    bool b_Color_Eyes = false;
    bool b_Widen_Eyes = false;
    bool b_Eye_Eyeshadow = false;
    bool b_Eyes_Darken = false;
    bool b_Apply_Cheeks = false;
    bool b_Color_Lips = false;
    bool b_Whiten_Teeth = false;

    // Effect settings: they carry over from one photo to the next.
    std::uint64_t u_Face_Skin_Smooth_Level = 10;
    std::uint64_t u_Face_Skin_Smooth_Radius = 10;
    std::uint64_t u_Remove_Wrinkles_Level = 4;
    std::uint64_t u_Widen_Eyes_Level = 0;
    RgbaColor color_Color_Eyes{0, 0, 1, 1};
    float f_Color_Eyes_Transparency = 0.2f;
    RgbaColor color_Color_Lips{0, 0, 1, 1};
    float f_Color_Lips_Transparency = 0.2f;
    RgbaColor color_Eyeshadow{0, 0, 1, 1};
    float f_Color_Eyeshadow_Transparency = 0.2f;
    float f_Eyeshadow_Blur_Level = 7.0f;
    // The ring is drawn with alpha 1 - transparency: at the starting 0 it is
    // opaque black (before its blur), at 1 invisible.
    float f_Darken_Eyes_Transparency = 0.0f;
    float f_Darken_Eyes_Line_Width = 1.0f;
    float f_Darken_Eyes_Blur_Level = 1.0f;
    RgbaColor color_Color_Cheeks_1{1, 0.5f, 0, 1};       // orange
    RgbaColor color_Color_Cheeks_1_Right{1, 0.5f, 0, 1}; // orange
    RgbaColor color_Color_Cheeks_2{1, 0, 1, 1};          // magenta
    float f_Color_Cheeks_Transparency = 0.8f;
    float f_Cheeks_Blur_Level_Left = 4.0f;
    float f_Cheeks_Blur_Level_Right = 4.0f;
    // Blush centres in percent of each cheek's paint area, y from its top;
    // deliberately asymmetric starting positions.
    QPointF pt_MakeUp_Center_Left{20, 20};
    QPointF pt_MakeUp_Center_Right{80, 20};

    // Interaction modes: what the mouse in the preview means.
    bool b_Activated_Cheeks_Reposition = false;
    bool b_Activated_Darken_Eyes_Reposition = false;
    bool b_Cheeks_Picking_Color = false;
    std::int32_t i_Picking_Color_Index = 0; // 1 outer left, 2 make-up, 3 outer right

    // Switches every effect off, in the fixed order skin smoothing, eye
    // colour, lips colour, whiten teeth, widen eyes, remove wrinkles, eye
    // shadow, cheeks, under-eye. Settings and interaction modes stay.
    void Reset_Variables();

    // Puts the settings of the effect with this switch back to their
    // starting values; its switch, the other effects and the modes stay.
    void restoreDefaultsOf(bool EditingState::*effectSwitch);

    bool operator==(const EditingState&) const = default;

    // Calls visit(name, field) for every field above, in declaration order.
    template <typename Visitor>
    void forEachField(Visitor&& visit);
};

// The values the panels' controls can give each numeric setting, in the
// units the state stores (the slider ends after their scaling); a point's
// range holds for both coordinates, a colour's components are 0 to 1. A
// settings file outside these is refused.
struct SettingRange {
    const char* field;
    double min, max;
};

inline constexpr SettingRange kSettingRanges[] = {
    {"u_Face_Skin_Smooth_Level", 0, 20},
    {"u_Face_Skin_Smooth_Radius", 1, 30},
    {"u_Remove_Wrinkles_Level", 0, 20},
    {"u_Widen_Eyes_Level", 0, 30},
    {"f_Color_Eyes_Transparency", 0, 1},
    {"f_Color_Lips_Transparency", 0, 1},
    {"f_Color_Eyeshadow_Transparency", 0, 1},
    {"f_Eyeshadow_Blur_Level", 0, 15},
    {"f_Darken_Eyes_Transparency", 0, 1},
    {"f_Darken_Eyes_Line_Width", 1, 10},
    {"f_Darken_Eyes_Blur_Level", 0, 5},
    {"f_Color_Cheeks_Transparency", 0, 1},
    {"f_Cheeks_Blur_Level_Left", 0, 100},
    {"f_Cheeks_Blur_Level_Right", 0, 100},
    {"pt_MakeUp_Center_Left", 0, 100},
    {"pt_MakeUp_Center_Right", 0, 100},
    {"i_Picking_Color_Index", 0, 3},
};

// The range of a setting by its field name; none for switches and colours.
const SettingRange* settingRange(std::string_view field);

template <typename Visitor>
void EditingState::forEachField(Visitor&& visit)
{
#define BELLAVENOR_FIELD(name) visit(#name, name)
    BELLAVENOR_FIELD(b_Face_Skin_Smooth);
    BELLAVENOR_FIELD(b_Remove_Wrinkles);
    BELLAVENOR_FIELD(b_Color_Eyes);
    BELLAVENOR_FIELD(b_Widen_Eyes);
    BELLAVENOR_FIELD(b_Eye_Eyeshadow);
    BELLAVENOR_FIELD(b_Eyes_Darken);
    BELLAVENOR_FIELD(b_Apply_Cheeks);
    BELLAVENOR_FIELD(b_Color_Lips);
    BELLAVENOR_FIELD(b_Whiten_Teeth);
    BELLAVENOR_FIELD(u_Face_Skin_Smooth_Level);
    BELLAVENOR_FIELD(u_Face_Skin_Smooth_Radius);
    BELLAVENOR_FIELD(u_Remove_Wrinkles_Level);
    BELLAVENOR_FIELD(u_Widen_Eyes_Level);
    BELLAVENOR_FIELD(color_Color_Eyes);
    BELLAVENOR_FIELD(f_Color_Eyes_Transparency);
    BELLAVENOR_FIELD(color_Color_Lips);
    BELLAVENOR_FIELD(f_Color_Lips_Transparency);
    BELLAVENOR_FIELD(color_Eyeshadow);
    BELLAVENOR_FIELD(f_Color_Eyeshadow_Transparency);
    BELLAVENOR_FIELD(f_Eyeshadow_Blur_Level);
    BELLAVENOR_FIELD(f_Darken_Eyes_Transparency);
    BELLAVENOR_FIELD(f_Darken_Eyes_Line_Width);
    BELLAVENOR_FIELD(f_Darken_Eyes_Blur_Level);
    BELLAVENOR_FIELD(color_Color_Cheeks_1);
    BELLAVENOR_FIELD(color_Color_Cheeks_1_Right);
    BELLAVENOR_FIELD(color_Color_Cheeks_2);
    BELLAVENOR_FIELD(f_Color_Cheeks_Transparency);
    BELLAVENOR_FIELD(f_Cheeks_Blur_Level_Left);
    BELLAVENOR_FIELD(f_Cheeks_Blur_Level_Right);
    BELLAVENOR_FIELD(pt_MakeUp_Center_Left);
    BELLAVENOR_FIELD(pt_MakeUp_Center_Right);
    BELLAVENOR_FIELD(b_Activated_Cheeks_Reposition);
    BELLAVENOR_FIELD(b_Activated_Darken_Eyes_Reposition);
    BELLAVENOR_FIELD(b_Cheeks_Picking_Color);
    BELLAVENOR_FIELD(i_Picking_Color_Index);
#undef BELLAVENOR_FIELD
}
