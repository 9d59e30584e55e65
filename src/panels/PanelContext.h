#pragma once

#include "EditingState.h"
#include "LocalisedLabels.h"

#include <functional>

class QWidget;

// What a panel reaches: the settings it edits, the labels it shows and the
// few requests it makes of the window. Panels get this, not the
// application, so they know nothing else of it.
struct PanelContext {
    EditingState& state;
    const LocalisedLabels& labels;
    QWidget* mainWindow; // panels are docked in it
    // Redraws the preview; every change of a setting ends with it.
    std::function<void()> redraw;
    // The cheek panel's Pick buttons: the preview's pointer becomes the
    // colour picker until the next click in it.
    std::function<void()> showColourPicker;
    // The under-eye panel's Reset: the rings become the eye outlines again.
    std::function<void()> resetUnderEyeRings;
};
