#pragma once

#include "EditingState.h"
#include "LocalisedLabels.h"


#include <span>
#include <vector>

class EffectPanel;
class QWidget;
struct PanelContext;

// The categories whose effects the action table lists (u_Table_Index 0 to
// 2); Advanced (3) lists none.
enum class Category { Face = 0, Eye = 1, Mouth = 2 };

// One effect of the window, declared once: where the action table and the
// category's menu list it and under which label, the switch its panel's
// Apply box sets (its settings and close order are declared with the
// switch in EditingState.h), and how its panel is made. Everything else is
// derived.
struct EffectEntry {
    Category category; // rows and menu entries appear in catalogue order within a category
    QString LocalisedLabels::*label;
    bool EditingState::*effectSwitch;
    EffectPanel* (*makePanel)(PanelContext& context);
    bool inMenu; // cheeks and under-eye rings are reached through the action table only
};

// Every effect, in the action table's order.
std::span<const EffectEntry> effectCatalogue();

// The effects in the order their panels are closed and reset: their
// switches' close order.
std::vector<const EffectEntry*> effectsInCloseOrder();

// The effect with this switch, or null.
const EffectEntry* effectWithSwitch(bool EditingState::*effectSwitch);

// The effects one category lists, in row order.
std::vector<const EffectEntry*> effectsOf(Category category);

