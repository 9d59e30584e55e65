#pragma once

#include "Compositor.h"

#include <algorithm>
#include <array>
#include <span>

// What one pass of the compositor works on: the working picture (the photo's
// size, y down) and everything it is made from. Steps after the first paint
// through ImagePainter or blurredLayerOver, which add what they cover to
// record.painted.
struct CompositorPass {
    QImage& working;
    WorkingRecord& record;
    const OpenedPhoto& photo;
    const Reshaping& reshaping;
    const EditingState& state;
    CompositorMemos& memos;
    const Handles& handles;
    // Photo pixels per pixel of `working`: above 1 when a shrunk copy of the
    // photo is composed, whose blurs and lines shrink with it.
    double pixelScale = 1;

    float scaled(float photoPixels) const { return float(photoPixels / pixelScale); }

    double height() const { return photo.imgSize.height(); }
};

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
    bool draws(bool EditingState::*effectSwitch) const
    {
        return chooses == effectSwitch || std::find(switches.begin(), switches.end(), effectSwitch) != switches.end();
    }

    bool runs(const EditingState& state) const
    {
        for (bool EditingState::*on : switches)
            if (on && !(state.*on))
                return false;
        return true;
    }
};

// The steps in their fixed order; compose() runs them one after the other.
std::span<const CompositorStep> compositorSteps();
