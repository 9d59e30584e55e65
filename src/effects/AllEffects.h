#pragma once

#include "CheekBlush.h"
#include "EyeColour.h"
#include "EyeShadow.h"
#include "HealBlemishes.h"
#include "LipColour.h"
#include "NaturalSkin.h"
#include "SkinSmoothing.h"
#include "TeethWhitening.h"
#include "UnderEyeDarkening.h"
#include "WidenEyes.h"
#include "WrinkleRemoval.h"

#include <tuple>
#include <type_traits>

template <typename... Effect>
struct EffectList {};

// Every effect, in the order its panel is closed and its switch goes off
// when a new photo comes (skin smoothing first, healing and natural skin
// last: they came last, and settings files keep their order). Only what needs the effects
// themselves includes this: the catalogue, the order of the steps and the
// compositor. The order in which they paint is the table of steps
// (EffectOrder.cpp).
using Effects = EffectList<SkinSmoothing, EyeColour, LipColour, TeethWhitening, WidenEyes, WrinkleRemoval, EyeShadow,
                           CheekBlush, UnderEyeDarkening, HealBlemishes, NaturalSkin>;

template <typename... Effect>
constexpr bool sameOrderAsSettings(EffectList<Effect...>)
{
    return std::is_same_v<SettingsList<typename Effect::Settings...>, EffectSettingsList>;
}
static_assert(sameOrderAsSettings(Effects{}), "the effects and their settings are listed in one order");

// What every effect keeps between pictures, side by side.
template <typename... Effect>
std::tuple<typename Effect::Memos...> memosOf(EffectList<Effect...>);
struct EffectMemos {
    decltype(memosOf(Effects{})) of;
};
