#pragma once

#include "PhotoTool.h"
#include "PhotoEdits.h"
#include "Settings.h"

#include <memory>
#include <span>
#include <vector>

struct EditingState;
struct PanelDescription;

// An effect as the window offers it: its switch, where the action table and
// the menus list it, and what its panel shows.
struct EffectInfo {
    bool EditingState::*effectSwitch;
    CatalogueRow row;
    const PanelDescription& (*panel)();
};

// Every effect, in the order of the effects (AllEffects.h).
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

// Where the handles of the shown modes are for these areas: what the
// compositor draws and what the mouse aims at. Empty for a mode that is off.
Handles handlesOf(const PhotoEdits& photoEdits, const EditingState& state, QSizeF imgSize);
