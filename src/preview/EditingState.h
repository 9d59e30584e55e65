#pragma once

#include <QPointF>
#include <QtGui/qrgbafloat.h>

#include <cstdint>
#include <span>
#include <string_view>

// A colour as four components in 0..1, kept exactly as set: orange is
// (1, 0.5, 0, 1), not an 8- or 16-bit approximation of it.
using RgbaColor = QRgbaFloat32;

inline constexpr RgbaColor kBlue{0, 0, 1, 1};
inline constexpr RgbaColor kOrange{1, 0.5f, 0, 1};
inline constexpr RgbaColor kMagenta{1, 0, 1, 1};
// Blush centres in percent of each cheek's paint area, y from its top;
// deliberately asymmetric starting positions.
inline constexpr QPointF kLeftBlushCentre{20, 20};
inline constexpr QPointF kRightBlushCentre{80, 20};

// How a panel's slider position maps to its setting: the value itself,
// hundredths of it (position 20 is 0.2), or no slider at all.
enum class SliderScale { None, AsIs, Hundredths };

// Every field of the editing state is declared once, in the three lists
// below; the struct, the ranges of settings files, the Defaults of each
// effect, the panels' slider ranges and forEachField all follow from them.
//
// The effect switches: SWITCH(name, closeOrder). An effect is drawn only
// while its switch is on; all go off whenever a new photo is accepted.
// closeOrder is the effect's place when the panels are closed and the
// switches reset (skin smoothing first, under-eye rings last).
#define BELLAVENOR_EFFECT_SWITCHES(SWITCH) \
    SWITCH(b_Face_Skin_Smooth, 0)          \
    SWITCH(b_Remove_Wrinkles, 5)           \
    SWITCH(b_Color_Eyes, 1)                \
    SWITCH(b_Widen_Eyes, 4)                \
    SWITCH(b_Eye_Eyeshadow, 6)             \
    SWITCH(b_Eyes_Darken, 8)               \
    SWITCH(b_Apply_Cheeks, 7)              \
    SWITCH(b_Color_Lips, 2)                \
    SWITCH(b_Whiten_Teeth, 3)

// The effect settings: SETTING(type, name, default, effect, min, max, slider, step).
// They carry over from one photo to the next; `effect` is the switch whose
// Defaults button restores them; min and max are the values the panel can
// give (a colour's components, a point's coordinates); `slider` how its
// slider maps to it; `step` names a change of it in the Edit menu. A
// settings file outside the range is refused.
#define BELLAVENOR_EFFECT_SETTINGS(SETTING)                                                                            \
    SETTING(std::uint64_t, u_Face_Skin_Smooth_Level, 10, b_Face_Skin_Smooth, 0, 20, AsIs, "Smooth Skin Level")         \
    SETTING(std::uint64_t, u_Face_Skin_Smooth_Radius, 10, b_Face_Skin_Smooth, 1, 30, AsIs, "Smooth Skin Radius")       \
    SETTING(std::uint64_t, u_Remove_Wrinkles_Level, 4, b_Remove_Wrinkles, 0, 20, AsIs, "Remove Wrinkles Level")        \
    SETTING(std::uint64_t, u_Widen_Eyes_Level, 0, b_Widen_Eyes, 0, 30, AsIs, "Widen Eyes Level")                       \
    SETTING(RgbaColor, color_Color_Eyes, kBlue, b_Color_Eyes, 0, 1, None, "Eye Colour")                                \
    SETTING(float, f_Color_Eyes_Transparency, 0.2f, b_Color_Eyes, 0, 1, Hundredths, "Eye Colour Transparency")         \
    SETTING(RgbaColor, color_Color_Lips, kBlue, b_Color_Lips, 0, 1, None, "Lip Colour")                                \
    SETTING(float, f_Color_Lips_Transparency, 0.2f, b_Color_Lips, 0, 1, Hundredths, "Lip Colour Transparency")         \
    SETTING(RgbaColor, color_Eyeshadow, kBlue, b_Eye_Eyeshadow, 0, 1, None, "Eye Shadow Colour")                       \
    SETTING(float, f_Color_Eyeshadow_Transparency, 0.2f, b_Eye_Eyeshadow, 0, 1, Hundredths, "Eye Shadow Transparency") \
    SETTING(float, f_Eyeshadow_Blur_Level, 7.0f, b_Eye_Eyeshadow, 0, 15, Hundredths, "Eye Shadow Blur")                \
    /* The ring is drawn with alpha 1 - transparency: at the starting 0 it is */                                       \
    /* opaque black (before its blur), at 1 invisible. */                                                              \
    SETTING(float, f_Darken_Eyes_Transparency, 0.0f, b_Eyes_Darken, 0, 1, Hundredths, "Under-Eye Transparency")        \
    SETTING(float, f_Darken_Eyes_Line_Width, 1.0f, b_Eyes_Darken, 1, 10, AsIs, "Under-Eye Line Width")                 \
    SETTING(float, f_Darken_Eyes_Blur_Level, 1.0f, b_Eyes_Darken, 0, 5, Hundredths, "Under-Eye Blur")                  \
    SETTING(RgbaColor, color_Color_Cheeks_1, kOrange, b_Apply_Cheeks, 0, 1, None, "Left Outer Blush Colour")           \
    SETTING(RgbaColor, color_Color_Cheeks_1_Right, kOrange, b_Apply_Cheeks, 0, 1, None, "Right Outer Blush Colour")    \
    SETTING(RgbaColor, color_Color_Cheeks_2, kMagenta, b_Apply_Cheeks, 0, 1, None, "Blush Colour")                     \
    SETTING(float, f_Color_Cheeks_Transparency, 0.8f, b_Apply_Cheeks, 0, 1, Hundredths, "Blush Transparency")          \
    SETTING(float, f_Cheeks_Blur_Level_Left, 4.0f, b_Apply_Cheeks, 0, 100, AsIs, "Left Blush Blur")                    \
    SETTING(float, f_Cheeks_Blur_Level_Right, 4.0f, b_Apply_Cheeks, 0, 100, AsIs, "Right Blush Blur")                  \
    SETTING(QPointF, pt_MakeUp_Center_Left, kLeftBlushCentre, b_Apply_Cheeks, 0, 100, None, "Left Blush Centre")       \
    SETTING(QPointF, pt_MakeUp_Center_Right, kRightBlushCentre, b_Apply_Cheeks, 0, 100, None, "Right Blush Centre")

// The interaction modes, what the mouse in the preview means; the window's
// own, never in a settings file it exports: MODE(type, name, default, min, max).
#define BELLAVENOR_INTERACTION_MODES(MODE)                                            \
    MODE(bool, b_Activated_Cheeks_Reposition, false, 0, 1)                            \
    MODE(bool, b_Activated_Darken_Eyes_Reposition, false, 0, 1)                       \
    MODE(bool, b_Cheeks_Picking_Color, false, 0, 1)                                   \
    MODE(std::int32_t, i_Picking_Color_Index, 0, 0, 3) /* 1 outer left, 2 make-up, 3 outer right */

// What the user has set in the effect panels. The panels write it, the
// compositor reads it on every redraw; nothing here redraws or validates.
struct EditingState {
#define BELLAVENOR_DECLARE_SWITCH(name, closeOrder) bool name = false;
#define BELLAVENOR_DECLARE_SETTING(type, name, init, ...) type name = init;
    BELLAVENOR_EFFECT_SWITCHES(BELLAVENOR_DECLARE_SWITCH)
    BELLAVENOR_EFFECT_SETTINGS(BELLAVENOR_DECLARE_SETTING)
    BELLAVENOR_INTERACTION_MODES(BELLAVENOR_DECLARE_SETTING)
#undef BELLAVENOR_DECLARE_SWITCH
#undef BELLAVENOR_DECLARE_SETTING

    // Switches every effect off, in the switches' close order. Settings and
    // interaction modes stay.
    void Reset_Variables();

    // Puts the settings of the effect with this switch back to their
    // starting values; its switch, the other effects and the modes stay.
    void restoreDefaultsOf(bool EditingState::*effectSwitch);

    // Takes the interaction modes of `other`, which belong to the window
    // and not to the settings: an undone step or read settings file keeps
    // what the mouse means now. A mode whose effect is off ends.
    void keepModesOf(const EditingState& other);

    bool operator==(const EditingState&) const = default;

    // Calls visit(name, field) for every field above, in declaration order.
    template <typename Visitor>
    void forEachField(Visitor&& visit);
};

// The effect switches in their close order.
std::span<bool EditingState::* const> switchesInCloseOrder();

// A setting or mode as the lists declare it: the values the panels'
// controls can give it, in the units the state stores (a point's range
// holds for both coordinates, a colour's for its components), how its
// slider maps to it and the effect it belongs to (none for a mode).
struct SettingRange {
    const char* field;
    double min, max;
    SliderScale slider = SliderScale::None;
    bool EditingState::*effect = nullptr;
    const char* step = nullptr; // a change of it, as the Edit menu names it
};

// The range of a setting or mode by its field name; none for switches.
const SettingRange* settingRange(std::string_view field);

// The field name of an effect switch, for messages.
const char* nameOfSwitch(bool EditingState::*effectSwitch);

// A setting as its panel's slider sees it: Setting<&EditingState::f>::range.
// Only fields of the lists have one, so a panel cannot bind a
// slider to a field the lists do not know.
template <auto field>
struct Setting;
#define BELLAVENOR_SETTING_TRAITS(type, name, init, effect, min, max, scale, ...)        \
    template <>                                                                   \
    struct Setting<&EditingState::name> {                                         \
        static constexpr SettingRange range{#name, min, max, SliderScale::scale,  \
                                            &EditingState::effect};               \
    };
BELLAVENOR_EFFECT_SETTINGS(BELLAVENOR_SETTING_TRAITS)
#undef BELLAVENOR_SETTING_TRAITS

template <typename Visitor>
void EditingState::forEachField(Visitor&& visit)
{
#define BELLAVENOR_VISIT_SWITCH(name, closeOrder) visit(#name, name);
#define BELLAVENOR_VISIT_SETTING(type, name, ...) visit(#name, name);
    BELLAVENOR_EFFECT_SWITCHES(BELLAVENOR_VISIT_SWITCH)
    BELLAVENOR_EFFECT_SETTINGS(BELLAVENOR_VISIT_SETTING)
    BELLAVENOR_INTERACTION_MODES(BELLAVENOR_VISIT_SETTING)
#undef BELLAVENOR_VISIT_SWITCH
#undef BELLAVENOR_VISIT_SETTING
}
