#pragma once

#include "Compositor.h"

#include <span>

// What one pass of the compositor works on: the working picture (the photo's
// size, y down) and everything it is made from.
struct CompositorPass {
    QImage& working;
    const OpenedPhoto& photo;
    const Reshaping& reshaping;
    const EditingState& state;
    CompositorMemos& memos;
    Handles& handles;

    double height() const { return photo.imgSize.height(); }
};

// One step of the compositor: when it runs, what it paints, and why it sits
// where it does in the order.
struct CompositorStep {
    const char* name;
    bool (*runs)(const EditingState& state);
    void (*paint)(CompositorPass& pass);
    const char* why;
};

// The steps in their fixed order; compose() runs them one after the other.
std::span<const CompositorStep> compositorSteps();
