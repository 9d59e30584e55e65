#pragma once

// The per-pixel formulas of skin smoothing, shared by the filters that
// apply them one at a time and by the fused pass that applies them all.
// Values are in 0..1.

#include <algorithm>

// Green laid over blue with the overlay blend: dark where either channel is
// dark, which skin blemishes and pores are in green and blue.
inline float greenBlueOverlay(float green, float blue)
{
    return blue < 0.5f ? 2.0f * blue * green : 1.0f - 2.0f * (1.0f - blue) * (1.0f - green);
}

// The detail a blur removed, centred on mid-grey: darker than its
// surroundings below 0.5, brighter above.
inline float highPass(float value, float blurred)
{
    return std::clamp(value - blurred + 0.5f, 0.0f, 1.0f);
}

// Hard light of a value onto itself, three times: each round doubles the
// distance from mid-grey (and saturates), so small dark detail turns black
// and small bright detail white while flat areas stay grey.
inline float boostedMask(float highPassValue)
{
    float x = highPassValue;
    for (int round = 0; round < 3; ++round)
        x = x < 0.5f ? 2.0f * x * x : 1.0f - 2.0f * (1.0f - x) * (1.0f - x);
    return x;
}
