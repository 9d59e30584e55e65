#pragma once

#include "EditingState.h"
#include "LocalisedLabels.h"

#include <QPointer>

#include <span>
#include <vector>

class AppDelegate;
class EffectPanel;
class QWidget;
struct PanelContext;

// The categories whose effects the action table lists (u_Table_Index 0 to
// 2); Advanced (3) lists none.
enum class Category { Face = 0, Eye = 1, Mouth = 2 };

// One effect of the window, declared once: where the action table lists it
// and under which label, the switch its panel's Apply box sets, its panel
// (the application's field for it and how it is made) and where it comes
// when the panels are closed and reset. Everything else is derived.
struct EffectEntry {
    Category category; // rows appear in catalogue order within a category
    QString LocalisedLabels::*label;
    bool EditingState::*effectSwitch;
    QPointer<QWidget> AppDelegate::*panel;
    EffectPanel* (*makePanel)(PanelContext& context);
    int closeOrder; // Terminate_App and Reset_Variables visit the panels in this order
};

// Every effect, in the action table's order.
std::span<const EffectEntry> effectCatalogue();

// The effects in the order their panels are closed and reset.
std::vector<const EffectEntry*> effectsInCloseOrder();

// The effects one category lists, in row order.
std::vector<const EffectEntry*> effectsOf(Category category);

// The effect whose panel the application keeps in `panel`.
const EffectEntry& effectWithPanel(QPointer<QWidget> AppDelegate::*panel);
