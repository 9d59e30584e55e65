#pragma once

#include <array>
#include <span>

struct EditingState;
struct CompositorPass;

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
    // It paints the whole picture once, not face by face.
    bool wholePicture = false;

    // Whether the step draws any part of the effect with this switch.
    bool draws(bool EditingState::*effectSwitch) const;
    bool runs(const EditingState& state) const;
};

// The steps in the order they paint; compose() runs them one after the other.
std::span<const CompositorStep> compositorSteps();
