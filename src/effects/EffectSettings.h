#pragma once

#include "Settings.h"

#include <cstdint>

// Every effect's settings, declared once each (see Settings.h), and the
// list of them in the order settings files and the switches' close order
// keep. The editing state is assembled from these alone, so what the
// effects paint with, keep or do with the mouse can change without
// rebuilding everything that reads the settings.

// Skin smoothing (its effect: SkinSmoothing.h).
struct SkinSmoothingSettings {
#define BELLAVENOR_SKIN_SMOOTHING_FIELDS(SWITCH, SETTING, MODE)                                        \
    SWITCH(b_Face_Skin_Smooth)                                                                         \
    SETTING(std::uint64_t, u_Face_Skin_Smooth_Level, 10, 0, 20, AsIs, "Smooth Skin Level")            \
    SETTING(std::uint64_t, u_Face_Skin_Smooth_Radius, 10, 1, 30, AsIs, "Smooth Skin Radius")
    BELLAVENOR_SETTINGS_BLOCK(SkinSmoothingSettings, BELLAVENOR_SKIN_SMOOTHING_FIELDS)
    static constexpr auto effectSwitch = &SkinSmoothingSettings::b_Face_Skin_Smooth;
};

// Eye colour (its effect: EyeColour.h).
struct EyeColourSettings {
#define BELLAVENOR_EYE_COLOUR_FIELDS(SWITCH, SETTING, MODE)                     \
    SWITCH(b_Color_Eyes)                                                        \
    SETTING(RgbaColor, color_Color_Eyes, kBlue, 0, 1, None, "Eye Colour")       \
    SETTING(float, f_Color_Eyes_Transparency, 0.2f, 0, 1, Hundredths, "Eye Colour Transparency")
    BELLAVENOR_SETTINGS_BLOCK(EyeColourSettings, BELLAVENOR_EYE_COLOUR_FIELDS)
    static constexpr auto effectSwitch = &EyeColourSettings::b_Color_Eyes;
};

// Lip colour (its effect: LipColour.h).
struct LipColourSettings {
#define BELLAVENOR_LIP_COLOUR_FIELDS(SWITCH, SETTING, MODE)                            \
    SWITCH(b_Color_Lips)                                                               \
    SETTING(RgbaColor, color_Color_Lips, kBlue, 0, 1, None, "Lip Colour")              \
    SETTING(float, f_Color_Lips_Transparency, 0.2f, 0, 1, Hundredths, "Lip Colour Transparency")
    BELLAVENOR_SETTINGS_BLOCK(LipColourSettings, BELLAVENOR_LIP_COLOUR_FIELDS)
    static constexpr auto effectSwitch = &LipColourSettings::b_Color_Lips;
};

// Teeth whitening (its effect: TeethWhitening.h).
struct TeethWhiteningSettings {
#define BELLAVENOR_TEETH_WHITENING_FIELDS(SWITCH, SETTING, MODE) SWITCH(b_Whiten_Teeth)
    BELLAVENOR_SETTINGS_BLOCK(TeethWhiteningSettings, BELLAVENOR_TEETH_WHITENING_FIELDS)
    static constexpr auto effectSwitch = &TeethWhiteningSettings::b_Whiten_Teeth;
};

// Widen eyes (its effect: WidenEyes.h).
struct WidenEyesSettings {
#define BELLAVENOR_WIDEN_EYES_FIELDS(SWITCH, SETTING, MODE) \
    SWITCH(b_Widen_Eyes)                                    \
    SETTING(std::uint64_t, u_Widen_Eyes_Level, 0, 0, 30, AsIs, "Widen Eyes Level")
    BELLAVENOR_SETTINGS_BLOCK(WidenEyesSettings, BELLAVENOR_WIDEN_EYES_FIELDS)
    static constexpr auto effectSwitch = &WidenEyesSettings::b_Widen_Eyes;
};

// Wrinkle removal (its effect: WrinkleRemoval.h).
struct WrinkleRemovalSettings {
#define BELLAVENOR_WRINKLE_REMOVAL_FIELDS(SWITCH, SETTING, MODE) \
    SWITCH(b_Remove_Wrinkles)                                    \
    SETTING(std::uint64_t, u_Remove_Wrinkles_Level, 4, 0, 20, AsIs, "Remove Wrinkles Level")
    BELLAVENOR_SETTINGS_BLOCK(WrinkleRemovalSettings, BELLAVENOR_WRINKLE_REMOVAL_FIELDS)
    static constexpr auto effectSwitch = &WrinkleRemovalSettings::b_Remove_Wrinkles;
};

// Eye shadow (its effect: EyeShadow.h).
struct EyeShadowSettings {
#define BELLAVENOR_EYE_SHADOW_FIELDS(SWITCH, SETTING, MODE)                                          \
    SWITCH(b_Eye_Eyeshadow)                                                                          \
    SETTING(RgbaColor, color_Eyeshadow, kBlue, 0, 1, None, "Eye Shadow Colour")                      \
    SETTING(float, f_Color_Eyeshadow_Transparency, 0.2f, 0, 1, Hundredths, "Eye Shadow Transparency") \
    SETTING(float, f_Eyeshadow_Blur_Level, 7.0f, 0, 15, Hundredths, "Eye Shadow Blur")
    BELLAVENOR_SETTINGS_BLOCK(EyeShadowSettings, BELLAVENOR_EYE_SHADOW_FIELDS)
    static constexpr auto effectSwitch = &EyeShadowSettings::b_Eye_Eyeshadow;
};

// Cheek blush (its effect: CheekBlush.h).
struct CheekBlushSettings {
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
    BELLAVENOR_SETTINGS_BLOCK(CheekBlushSettings, BELLAVENOR_CHEEK_BLUSH_FIELDS)
    static constexpr auto effectSwitch = &CheekBlushSettings::b_Apply_Cheeks;
};

// Under-eye darkening (its effect: UnderEyeDarkening.h).
struct UnderEyeDarkeningSettings {
    // The ring is drawn with alpha 1 - transparency: at the starting 0 it is
    // opaque black (before its blur), at 1 invisible.
#define BELLAVENOR_UNDER_EYE_FIELDS(SWITCH, SETTING, MODE)                                             \
    SWITCH(b_Eyes_Darken)                                                                              \
    SETTING(float, f_Darken_Eyes_Transparency, 0.0f, 0, 1, Hundredths, "Under-Eye Transparency")       \
    SETTING(float, f_Darken_Eyes_Line_Width, 1.0f, 1, 10, AsIs, "Under-Eye Line Width")                \
    SETTING(float, f_Darken_Eyes_Blur_Level, 1.0f, 0, 5, Hundredths, "Under-Eye Blur")                 \
    MODE(bool, b_Activated_Darken_Eyes_Reposition, false, 0, 1, true)
    BELLAVENOR_SETTINGS_BLOCK(UnderEyeDarkeningSettings, BELLAVENOR_UNDER_EYE_FIELDS)
    static constexpr auto effectSwitch = &UnderEyeDarkeningSettings::b_Eyes_Darken;
};

// Heal blemishes (its effect: HealBlemishes.h).
struct HealBlemishesSettings {
    // Size: the largest spot healed, in percent of the face's width, so one
    // setting suits any photo; Strength: how little a spot need stand out
    // from the skin around it (0 only strong spots, 100 faint ones too).
    // The spots clicked belong to the photo (PhotoEdits.h).
#define BELLAVENOR_HEAL_BLEMISHES_FIELDS(SWITCH, SETTING, MODE)                                           \
    SWITCH(b_Heal_Blemishes)                                                                              \
    SETTING(float, f_Heal_Blemishes_Size, 3.0f, 0.5, 8, Hundredths, "Heal Blemishes Size")                \
    SETTING(std::uint64_t, u_Heal_Blemishes_Strength, 50, 0, 100, AsIs, "Heal Blemishes Strength")        \
    MODE(bool, b_Activated_Heal_Spots, false, 0, 1, false)                                               \
    MODE(bool, b_Show_Spots, false, 0, 1, false)
    BELLAVENOR_SETTINGS_BLOCK(HealBlemishesSettings, BELLAVENOR_HEAL_BLEMISHES_FIELDS)
    static constexpr auto effectSwitch = &HealBlemishesSettings::b_Heal_Blemishes;
};

// Natural skin (its effect: NaturalSkin.h).
struct NaturalSkinSettings {
    // Evenness: how much of the skin's medium-size unevenness is evened, in
    // percent; Texture: its fine detail, in percent of what it is; Detail
    // size: below it detail is texture, in percent of the face's width.
    // The brush that adds skin to what it finds or takes skin away: its
    // width in percent of the face's width, its edge's softness in percent
    // of its radius. The strokes belong to the photo (PhotoEdits.h).
#define BELLAVENOR_NATURAL_SKIN_FIELDS(SWITCH, SETTING, MODE)                                           \
    SWITCH(b_Natural_Skin)                                                                              \
    SETTING(std::uint64_t, u_Natural_Skin_Evenness, 80, 0, 100, AsIs, "Natural Skin Evenness")          \
    SETTING(std::uint64_t, u_Natural_Skin_Texture, 100, 0, 200, AsIs, "Natural Skin Texture")           \
    SETTING(float, f_Natural_Skin_Detail_Size, 0.4f, 0.1, 2, Hundredths, "Natural Skin Detail Size")    \
    SETTING(float, f_Natural_Skin_Brush_Size, 5.0f, 1, 20, Hundredths, "Skin Brush Size")               \
    SETTING(std::uint64_t, u_Natural_Skin_Brush_Softness, 50, 0, 100, AsIs, "Skin Brush Softness")      \
    MODE(bool, b_Activated_Add_Skin, false, 0, 1, false)                                                \
    MODE(bool, b_Activated_Remove_Skin, false, 0, 1, false)                                             \
    MODE(bool, b_Show_Skin_Mask, false, 0, 1, false)
    BELLAVENOR_SETTINGS_BLOCK(NaturalSkinSettings, BELLAVENOR_NATURAL_SKIN_FIELDS)
    static constexpr auto effectSwitch = &NaturalSkinSettings::b_Natural_Skin;
};

template <typename... EffectSettings>
struct SettingsList {};

// Every effect's settings, in the order of the effects (AllEffects.h).
using EffectSettingsList =
    SettingsList<SkinSmoothingSettings, EyeColourSettings, LipColourSettings, TeethWhiteningSettings, WidenEyesSettings,
                 WrinkleRemovalSettings, EyeShadowSettings, CheekBlushSettings, UnderEyeDarkeningSettings, HealBlemishesSettings,
                 NaturalSkinSettings>;
