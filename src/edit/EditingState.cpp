#include "EditingState.h"

#include <array>
#include <vector>

namespace {

template <typename... Settings>
constexpr std::array<bool EditingState::*, sizeof...(Settings)> switchesOf(SettingsList<Settings...>)
{
    return {static_cast<bool EditingState::*>(Settings::effectSwitch)...};
}

constexpr auto kCloseOrder = switchesOf(EffectSettingsList{});

template <typename... Settings>
std::vector<SettingRange> rangesOf(SettingsList<Settings...>)
{
    std::vector<SettingRange> ranges;
    const auto add = [&](const auto& fields, bool EditingState::*effect) {
        for (const FieldInfo& info : fields)
            if (info.kind != FieldKind::Switch)
                ranges.push_back({info, info.kind == FieldKind::Setting ? effect : nullptr});
    };
    (add(Settings::kFields, static_cast<bool EditingState::*>(Settings::effectSwitch)), ...);
    return ranges;
}

const std::vector<SettingRange>& ranges()
{
    static const std::vector<SettingRange> all = rangesOf(EffectSettingsList{});
    return all;
}

template <typename... Settings>
void restoreSettingsOf(EditingState& state, bool EditingState::*effectSwitch, SettingsList<Settings...>)
{
    ((static_cast<bool EditingState::*>(Settings::effectSwitch) == effectSwitch
          ? static_cast<Settings&>(state).restoreSettings()
          : void()),
     ...);
}

template <typename... Settings>
void keepModesOfEach(EditingState& state, const EditingState& other, SettingsList<Settings...>)
{
    (static_cast<Settings&>(state).takeModesOf(other, state.*static_cast<bool EditingState::*>(Settings::effectSwitch)),
     ...);
}

} // namespace

const char* nameOfSwitch(bool EditingState::*effectSwitch)
{
    const char* name = "an unknown switch";
    EditingState probe;
    probe.forEachField([&](const char* field, auto& value) {
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, bool>)
            if (&value == &(probe.*effectSwitch))
                name = field;
    });
    return name;
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
    restoreSettingsOf(*this, effectSwitch, EffectSettingsList{});
}

const SettingRange* settingRange(std::string_view field)
{
    for (const SettingRange& range : ranges())
        if (field == range.name)
            return &range;
    return nullptr;
}

void EditingState::keepModesOf(const EditingState& other)
{
    keepModesOfEach(*this, other, EffectSettingsList{});
}
