#pragma once

#include "FaceLandmarks.h"

#include <QPointF>
#include <QtGui/qrgbafloat.h>

#include <cstdint>

// A colour as four components in 0..1, kept exactly as set: orange is
// (1, 0.5, 0, 1), not an 8- or 16-bit approximation of it.
using RgbaColor = QRgbaFloat32;

inline constexpr RgbaColor kBlue{0, 0, 1, 1};
inline constexpr RgbaColor kOrange{1, 0.5f, 0, 1};
inline constexpr RgbaColor kMagenta{1, 0, 1, 1};

// A setting that is a list of points (spots clicked on a photo) holds at
// most this many; a settings file with more is refused.
inline constexpr qsizetype kLongestPointList = 10000;

// How a panel's slider position maps to its setting: the value itself,
// hundredths of it (position 20 is 0.2), or no slider at all.
enum class SliderScale { None, AsIs, Hundredths };

// What a field of an effect's settings is: the effect's switch (all go off
// when a new photo comes), a setting (kept from photo to photo, in settings
// files), or a mode of the mouse in the preview (the window's own).
enum class FieldKind { Switch, Setting, Mode };

// What the settings list says of one field: the values the panel's controls
// can give it, in the units the state stores (a point's range holds for
// both coordinates, a colour's for its components), how its slider maps to
// it, and how the Edit menu names a change of it.
struct FieldInfo {
    const char* name;
    FieldKind kind;
    double min = 0, max = 1;
    SliderScale slider = SliderScale::None;
    const char* step = nullptr;
    bool draws = true; // a mode that changes nothing drawn (picking a colour) does not recompose
};

// An effect's settings are declared once, as one list
//   SWITCH(name)
//   SETTING(type, name, default, min, max, slider, step)
//   MODE(type, name, default, min, max, draws)
// from which the fields, their defaults, comparison, forEachField(visit)
// (visit(name, field) in list order) and kFields follow:
//   struct Settings { BELLAVENOR_SETTINGS_BLOCK(Settings, MY_EFFECT_FIELDS) };
#define BELLAVENOR_BLOCK_SWITCH(name) bool name = false;
#define BELLAVENOR_BLOCK_SETTING(type, name, init, ...) type name = init;
#define BELLAVENOR_BLOCK_MODE(type, name, init, ...) type name = init;
#define BELLAVENOR_VISIT_SWITCH(name) visit(#name, name);
#define BELLAVENOR_VISIT_SETTING(type, name, ...) visit(#name, name);
#define BELLAVENOR_INFO_SWITCH(name) FieldInfo{#name, FieldKind::Switch, 0, 1},
#define BELLAVENOR_INFO_SETTING(type, name, init, min, max, slider, step) \
    FieldInfo{#name, FieldKind::Setting, min, max, SliderScale::slider, step},
#define BELLAVENOR_INFO_MODE(type, name, init, min, max, draws) \
    FieldInfo{#name, FieldKind::Mode, min, max, SliderScale::None, nullptr, draws},

#define BELLAVENOR_NONE(...)
#define BELLAVENOR_RESTORE_SETTING(type, name, ...) name = starting.name;
#define BELLAVENOR_TAKE_MODE(type, name, ...) name = modeWhileOn(other.name, effectOn);

// A mouse mode lasts only while its effect is on; what a mode chooses stays.
inline bool modeWhileOn(bool mode, bool effectOn)
{
    return mode && effectOn;
}
template <typename Value>
Value modeWhileOn(Value value, bool)
{
    return value;
}

#define BELLAVENOR_SETTINGS_BLOCK(Self, FIELDS)                                                  \
    FIELDS(BELLAVENOR_BLOCK_SWITCH, BELLAVENOR_BLOCK_SETTING, BELLAVENOR_BLOCK_MODE)             \
    bool operator==(const Self&) const = default;                                              \
    /* The settings back to their starting values; switch and modes stay. */                   \
    void restoreSettings()                                                                     \
    {                                                                                          \
        [[maybe_unused]] const Self starting{};                                                \
        FIELDS(BELLAVENOR_NONE, BELLAVENOR_RESTORE_SETTING, BELLAVENOR_NONE)                     \
    }                                                                                          \
    /* The modes of `other`, those that need the effect only while it is on. */               \
    void takeModesOf([[maybe_unused]] const Self& other, [[maybe_unused]] bool effectOn)       \
    {                                                                                          \
        FIELDS(BELLAVENOR_NONE, BELLAVENOR_NONE, BELLAVENOR_TAKE_MODE)                           \
    }                                                                                          \
    template <typename Visitor>                                                                \
    void forEachField(Visitor&& visit)                                                         \
    {                                                                                          \
        FIELDS(BELLAVENOR_VISIT_SWITCH, BELLAVENOR_VISIT_SETTING, BELLAVENOR_VISIT_SETTING)      \
    }                                                                                          \
    template <typename Visitor>                                                                \
    void forEachField(Visitor&& visit) const                                                   \
    {                                                                                          \
        FIELDS(BELLAVENOR_VISIT_SWITCH, BELLAVENOR_VISIT_SETTING, BELLAVENOR_VISIT_SETTING)      \
    }                                                                                          \
    static constexpr FieldInfo kFields[] = {                                                   \
        FIELDS(BELLAVENOR_INFO_SWITCH, BELLAVENOR_INFO_SETTING, BELLAVENOR_INFO_MODE)};

// Where an effect is offered: the category of the toolbar whose action table
// lists it, its row there, the key of its label, and whether the category's
// menu has an entry for it too.
enum class Category { Face = 0, Eye = 1, Mouth = 2 };

struct CatalogueRow {
    Category category;
    int row;
    const char* label; // an "IDD_" key of the program's labels, or the text itself
    bool inMenu;
};
