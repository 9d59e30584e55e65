#pragma once

#include "CheekBlush.h"
#include "EyeColour.h"
#include "EyeShadow.h"
#include "HealBlemishes.h"
#include "LipColour.h"
#include "SkinSmoothing.h"
#include "TeethWhitening.h"
#include "UnderEyeDarkening.h"
#include "WidenEyes.h"
#include "WrinkleRemoval.h"

#include <array>
#include <memory>
#include <span>
#include <vector>

template <typename... Effect>
struct EffectList {};

// Every effect, in the order its panel is closed and its switch goes off
// when a new photo comes (skin smoothing first, healing last: it came
// last, and settings files keep their order).
// The editing state is assembled from their settings in this order; the
// order in which they paint is the table of steps below.
using Effects = EffectList<SkinSmoothing, EyeColour, LipColour, TeethWhitening, WidenEyes, WrinkleRemoval, EyeShadow,
                           CheekBlush, UnderEyeDarkening, HealBlemishes>;

struct EditingState;
struct CompositorPass;

// An effect as the window offers it: its switch, where the action table and
// the menus list it, and what its panel shows.
struct EffectInfo {
    bool EditingState::*effectSwitch;
    CatalogueRow row;
    const PanelDescription& (*panel)();
};

// Every effect, in the order above.
std::span<const EffectInfo> effects();

// The effect with this switch, or null.
const EffectInfo* effectWithSwitch(bool EditingState::*effectSwitch);

// The effects one category of the toolbar lists, in row order.
std::vector<const EffectInfo*> effectsOf(Category category);

// Whether the mouse mode of an effect other than the one of `modeField`
// is on.
bool anotherModeIsOn(const EditingState& state, const char* modeField);

// The tools on the photo of every effect that has one, working on this
// state's settings, in the order the preview asks them which is on.
std::vector<std::unique_ptr<PhotoTool>> photoTools(EditingState& state);

// Where the handles of the shown modes are for this reshaping: what the
// compositor draws and what the mouse aims at. Empty for a mode that is off.
Handles handlesOf(const Reshaping& reshaping, const EditingState& state, QSizeF imgSize);

// One step of the compositor: the switches that must all be on for it to
// run (none: it always runs), what it paints, and why it sits where it does
// in the order.
struct CompositorStep {
    const char* name;
    std::array<bool EditingState::*, 2> switches;
    void (*paint)(CompositorPass& pass);
    const char* why;
    // An effect switch the step reads to choose what it paints while it
    // runs whatever the switch says (skin smoothing in the base, whitening
    // in the mouth interior).
    bool EditingState::*chooses = nullptr;

    // Whether the step draws any part of the effect with this switch.
    bool draws(bool EditingState::*effectSwitch) const;
    bool runs(const EditingState& state) const;
};

// The steps in the order they paint; compose() runs them one after the other.
std::span<const CompositorStep> compositorSteps();
