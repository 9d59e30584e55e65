#pragma once

#include "Document.h"
#include "LocalisedLabels.h"

#include <functional>

class QWidget;

// What a panel reaches: the document whose settings it edits (and tells what
// it changed), the labels it shows and the few requests it makes of the
// window. Panels get this, not the application, so they know nothing else
// of it.
struct PanelContext {
    Document& document;
    const LocalisedLabels& labels;
    QWidget* mainWindow; // panels are docked in it
    // The cheek panel's Pick buttons: the preview's pointer becomes the
    // colour picker until the next click in it.
    std::function<void()> showColourPicker;
};
