#pragma once

#include "EditingState.h"

#include <QByteArray>
#include <QHash>

#include <cmath>
#include <random>

// Every setting at a random value its panel can give, every effect on but
// the mouse modes, from a seed: the same settings on every run, and values
// no default has, so a setting read in place of another shows. Each field
// draws from the seed and its own name, so a field added elsewhere changes
// no other field's value.
inline EditingState randomSettings(unsigned seed)
{
    EditingState state;
    state.forEachField([&](const char* name, auto& value) {
        std::mt19937 random(seed ^ unsigned(qHash(QByteArray(name))));
        using Value = std::decay_t<decltype(value)>;
        const SettingRange* range = settingRange(name);
        std::uniform_real_distribution<double> within(range ? range->min : 0, range ? range->max : 1);
        if constexpr (std::is_same_v<Value, bool>)
            value = QByteArray(name).startsWith("b_") && !(range && range->kind == FieldKind::Mode);
        else if constexpr (std::is_same_v<Value, std::uint64_t>)
            value = Value(std::lround(within(random)));
        else if constexpr (std::is_same_v<Value, float>)
            value = float(within(random));
        else if constexpr (std::is_same_v<Value, QPointF>)
            value = QPointF(within(random), within(random));
        else if constexpr (std::is_same_v<Value, RgbaColor>)
            value = RgbaColor{float(within(random)), float(within(random)), float(within(random)), 1};
    });
    state.i_Picking_Color_Index = 0;
    return state;
}
