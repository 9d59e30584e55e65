#pragma once

#include "EffectPass.h"
#include "PanelDescription.h"
#include "RegionImages.h"
#include "TRCIHighPassSkinSmoothing.h"

// Skin smoothing: the face through a soft tone curve wherever it has no
// fine detail, sharpened lightly. Its step starts every picture: the photo
// over opaque black, smoothed when the switch is on.
struct SkinSmoothing {
#define BELLAVENOR_SKIN_SMOOTHING_FIELDS(SWITCH, SETTING, MODE)                                        \
    SWITCH(b_Face_Skin_Smooth)                                                                         \
    SETTING(std::uint64_t, u_Face_Skin_Smooth_Level, 10, 0, 20, AsIs, "Smooth Skin Level")            \
    SETTING(std::uint64_t, u_Face_Skin_Smooth_Radius, 10, 1, 30, AsIs, "Smooth Skin Radius")
    struct Settings {
        BELLAVENOR_SETTINGS_BLOCK(Settings, BELLAVENOR_SKIN_SMOOTHING_FIELDS)
    };
    static constexpr auto effectSwitch = &Settings::b_Face_Skin_Smooth;
    static constexpr CatalogueRow row{Category::Face, 0, "IDD_SMOOTH_SKIN", true};
    static const PanelDescription& panel();

    // What the smoothing keeps between pictures.
    struct BaseKey {
        qint64 photo;
        std::uint64_t level, radius;
        bool operator==(const BaseKey&) const = default;
    };
    struct MaskKey {
        qint64 photo;
        std::uint64_t radius;
        bool operator==(const MaskKey&) const = default;
    };
    struct Memos {
        Memo<qint64> photoOverBlack; // null when the photo is opaque
        Memo<qint64, MaskedArea> holes; // image_Face_Full_Picture
        Memo<qint64, SkinSmoothingPlanes> planes;
        Memo<MaskKey, cv::Mat> mask;
        SkinSmoothingScratch scratch;
        Memo<BaseKey> smoothedBase;
    };

    // "photo and skin smoothing": the photo over opaque black, and the
    // smoothed face over all of it while the switch is on.
    static void startFromPhoto(EffectPass& pass, const Settings& s, Memos& memos);
};
