#pragma once

#include "Change.h"
#include "EditingState.h"
#include "LocalisedLabels.h"
#include "PhotoEdits.h"

#include <QUndoStack>

#include <chrono>
#include <functional>

// What Undo puts back: the settings and what was done on the photo. The mouse
// modes stay the window's (EditingState::keepModesOf).
struct Edit {
    EditingState state;
    PhotoEdits photoEdits;
};

// The Edit menu's history of one photo. Each change of the settings or
// of what was done on the photo is one step on Qt's undo stack, named after what it
// changed; a change of a mouse mode is none. Changes of one setting closer
// together than kMergeWindow are one step: a slider drag or a held arrow
// key. A change of the whole edit that changes nothing is no step.
class EditHistory {
public:
    static constexpr std::chrono::milliseconds kMergeWindow{1000};

    // `restore` puts an edit back (state, what was done on the photo, panels, one redraw)
    // when a step is undone or redone.
    EditHistory(const LocalisedLabels& labels, std::function<void(const Edit&)> restore);

    QUndoStack& stack() { return stack_; }

    // A new photo: the history starts again from `now`.
    void startAt(const Edit& now);

    // Records `now`, just made by `change`, as one step; false when it
    // changed nothing the history keeps.
    bool record(const Edit& now, const Change& change);

private:
    friend class EditStep;
    void put(const Edit& edit);
    QString stepName(const Change& change, const Edit& now) const;

    const LocalisedLabels& labels_;
    std::function<void(const Edit&)> restore_;
    QUndoStack stack_;
    Edit last_;
};
