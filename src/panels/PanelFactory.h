#pragma once

#include "EffectPanel.h"

// The panel of an effect: the class laid out by its interface file where
// the effect has one, else one built from the effect's description.
EffectPanel* makePanel(const EffectInfo& effect, PanelContext& context);
