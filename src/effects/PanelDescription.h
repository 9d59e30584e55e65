#pragma once

#include <array>
#include <vector>

// What an effect's panel shows, control by control: the kind of control,
// the field of the settings it shows and writes, and the names of the
// control and its labels in the panel. A panel laid out by an interface
// file finds its controls by these names; a panel without one is built
// from the list in its order.
enum class ControlKind {
    Apply,  // the effect's switch
    Mode,   // a mode of the mouse in the preview; it needs the effect on, and
            // one effect's mode at a time: the mouse means one thing
    Slider, // a number, its range and scale from the settings list
    Colour, // a colour well
    Toggle, // a choice of the window's own (what the preview shows); it
            // needs the effect on
};

struct PanelControl {
    ControlKind kind;
    const char* field;   // the field it shows and writes
    const char* control; // the control's name in the panel
    // Its caption: a label key, or two joined by " - " ("Left - Blur").
    std::array<const char*, 2> label{};
    const char* caption = nullptr; // the caption's name (none: the control's own text)
    const char* value = nullptr;   // the label showing a slider's value
    // A slider that keeps its own position when the panel opens and only
    // writes; Defaults, undo and settings files still move it.
    bool writesOnly = false;
    // The controls that rest while a mode is on.
    std::vector<const char*> rests = {};
    // What the setting means, shown as the control's and caption's tooltip
    // (an "Effects" label).
    const char* meaning = nullptr;
    // A slider's value shown in the setting's own units with this after it
    // ("%": 0.4 %), not as the slider's position.
    const char* unit = nullptr;
};

struct PanelDescription {
    const char* title; // a label key: the window's title
    std::vector<PanelControl> controls;
};
