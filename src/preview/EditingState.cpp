#include "EditingState.h"

#include <algorithm>
#include <array>

namespace {

using S = EditingState;

struct SwitchPlace {
    bool EditingState::*field;
    int closeOrder;
    const char* name;
};

#define BELLAVENOR_SWITCH_PLACE(name, closeOrder) SwitchPlace{&S::name, closeOrder, #name},
constexpr SwitchPlace kSwitches[] = {BELLAVENOR_EFFECT_SWITCHES(BELLAVENOR_SWITCH_PLACE)};
#undef BELLAVENOR_SWITCH_PLACE

// Close orders are the places 0 to 8, each once.
constexpr bool closeOrdersArePlaces()
{
    std::array<int, std::size(kSwitches)> seen{};
    for (const SwitchPlace& place : kSwitches) {
        if (place.closeOrder < 0 || place.closeOrder >= int(std::size(kSwitches)))
            return false;
        ++seen[std::size_t(place.closeOrder)];
    }
    return std::all_of(seen.begin(), seen.end(), [](int count) { return count == 1; });
}
static_assert(closeOrdersArePlaces(), "every effect switch needs its own close order, 0 to 8");

const std::array<bool EditingState::*, std::size(kSwitches)> kCloseOrder = [] {
    std::array<bool EditingState::*, std::size(kSwitches)> order{};
    for (const SwitchPlace& place : kSwitches)
        order[std::size_t(place.closeOrder)] = place.field;
    return order;
}();

#define BELLAVENOR_SETTING_RANGE(type, name, init, effect, min, max, slider, step) \
    SettingRange{#name, min, max, SliderScale::slider, &S::effect, step},
#define BELLAVENOR_MODE_RANGE(type, name, init, min, max) SettingRange{#name, min, max},
constexpr SettingRange kRanges[] = {BELLAVENOR_EFFECT_SETTINGS(BELLAVENOR_SETTING_RANGE)
                                        BELLAVENOR_INTERACTION_MODES(BELLAVENOR_MODE_RANGE)};
#undef BELLAVENOR_SETTING_RANGE
#undef BELLAVENOR_MODE_RANGE

} // namespace

const char* nameOfSwitch(bool EditingState::*effectSwitch)
{
    for (const SwitchPlace& place : kSwitches)
        if (place.field == effectSwitch)
            return place.name;
    return "an unknown switch";
}

std::span<bool EditingState::* const> switchesInCloseOrder()
{
    return kCloseOrder;
}

void EditingState::Reset_Variables()
{
    for (bool EditingState::*effectSwitch : kCloseOrder)
        this->*effectSwitch = false;
}

void EditingState::restoreDefaultsOf(bool EditingState::*effectSwitch)
{
    const EditingState starting;
#define BELLAVENOR_RESTORE(type, name, init, effect, ...) \
    if (effectSwitch == &S::effect)                       \
        name = starting.name;
    BELLAVENOR_EFFECT_SETTINGS(BELLAVENOR_RESTORE)
#undef BELLAVENOR_RESTORE
}

const SettingRange* settingRange(std::string_view field)
{
    for (const SettingRange& range : kRanges)
        if (field == range.field)
            return &range;
    return nullptr;
}

void EditingState::keepModesOf(const EditingState& other)
{
#define BELLAVENOR_KEEP_MODE(type, name, ...) name = other.name;
    BELLAVENOR_INTERACTION_MODES(BELLAVENOR_KEEP_MODE)
#undef BELLAVENOR_KEEP_MODE
    // A mode lasts only while its effect is on.
    b_Activated_Cheeks_Reposition = b_Activated_Cheeks_Reposition && b_Apply_Cheeks;
    b_Activated_Darken_Eyes_Reposition = b_Activated_Darken_Eyes_Reposition && b_Eyes_Darken;
}
