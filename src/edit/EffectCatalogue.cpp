#include "EffectCatalogue.h"

#include "AllEffects.h"
#include "EditingState.h"

#include <algorithm>

namespace {

template <typename... Effect>
std::array<EffectInfo, sizeof...(Effect)> infoOf(EffectList<Effect...>)
{
    return {EffectInfo{static_cast<bool EditingState::*>(Effect::effectSwitch), Effect::row, &Effect::panel}...};
}

const auto kEffects = infoOf(Effects{});

template <typename... Effect>
void addToolsOf(EditingState& state, std::vector<std::unique_ptr<PhotoTool>>& tools, EffectList<Effect...>)
{
    const auto add = [&]<typename E>(E*) {
        if constexpr (requires { &E::addTools; })
            E::addTools(static_cast<typename E::Settings&>(state), tools);
    };
    (add(static_cast<Effect*>(nullptr)), ...);
}

template <typename... Effect>
void addHandlesOf(const PhotoEdits& photoEdits, const EditingState& state, QSizeF imgSize, Handles& h,
                  EffectList<Effect...>)
{
    const auto add = [&]<typename E>(E*) {
        if constexpr (requires { &E::handles; })
            E::handles(photoEdits, static_cast<const typename E::Settings&>(state), imgSize, h);
    };
    (add(static_cast<Effect*>(nullptr)), ...);
}

} // namespace

std::span<const EffectInfo> effects()
{
    return kEffects;
}

const EffectInfo* effectWithSwitch(bool EditingState::*effectSwitch)
{
    for (const EffectInfo& effect : kEffects)
        if (effect.effectSwitch == effectSwitch)
            return &effect;
    return nullptr;
}

std::vector<const EffectInfo*> effectsOf(Category category)
{
    std::vector<const EffectInfo*> listed;
    for (const EffectInfo& effect : kEffects)
        if (effect.row.category == category)
            listed.push_back(&effect);
    std::sort(listed.begin(), listed.end(), [](const EffectInfo* a, const EffectInfo* b) { return a->row.row < b->row.row; });
    return listed;
}

bool anotherModeIsOn(const EditingState& state, const char* modeField)
{
    bool on = false;
    for (const EffectInfo& effect : kEffects)
        for (const PanelControl& c : effect.panel().controls)
            if (c.kind == ControlKind::Mode && qstrcmp(c.field, modeField) != 0)
                state.forEachField([&](const char* name, const auto& value) {
                    if constexpr (std::is_same_v<std::decay_t<decltype(value)>, bool>)
                        on = on || (value && qstrcmp(name, c.field) == 0);
                });
    return on;
}

std::vector<std::unique_ptr<PhotoTool>> photoTools(EditingState& state)
{
    std::vector<std::unique_ptr<PhotoTool>> tools;
    addToolsOf(state, tools, Effects{});
    return tools;
}

Handles handlesOf(const PhotoEdits& photoEdits, const EditingState& state, QSizeF imgSize)
{
    Handles h;
    addHandlesOf(photoEdits, state, imgSize, h, Effects{});
    return h;
}
