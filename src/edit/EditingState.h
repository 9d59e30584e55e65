#pragma once

#include "EffectSettings.h"

#include <span>
#include <string_view>

// The settings of every effect, side by side, each field under its own name.
template <typename List>
struct SettingsOf;
template <typename... Settings>
struct SettingsOf<SettingsList<Settings...>> : Settings... {
    // Calls visit(name, field) for every field, effect by effect.
    template <typename Visitor>
    void forEachField(Visitor&& visit)
    {
        (Settings::forEachField(visit), ...);
    }
    template <typename Visitor>
    void forEachField(Visitor&& visit) const
    {
        (Settings::forEachField(visit), ...);
    }
    bool operator==(const SettingsOf&) const = default;
};

// What the user has set in the effect panels: each effect's switch, its
// settings and its mouse modes, as the effects declare them. The panels
// write it, the compositor reads it on every redraw; nothing here redraws
// or validates.
struct EditingState : SettingsOf<EffectSettingsList> {
    // Switches every effect off, in the effects' close order. Settings and
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
};

// A field of the settings list as its effect declares it, and the switch of
// that effect.
struct SettingRange : FieldInfo {
    bool EditingState::*effect = nullptr;
};

// The effect switches in their close order.
std::span<bool EditingState::* const> switchesInCloseOrder();

// A setting or mode by its field name; none for switches and unknown names.
const SettingRange* settingRange(std::string_view field);

// The field name of an effect switch, for messages.
const char* nameOfSwitch(bool EditingState::*effectSwitch);
