#pragma once

#include "EditingState.h"
#include "LocalisedLabels.h"
#include "Reshaping.h"

#include <QUndoStack>

#include <chrono>
#include <functional>

// What Undo puts back: the settings and the reshaped areas. The mouse
// modes stay the window's (EditingState::keepModesOf).
struct Edit {
    EditingState state;
    Reshaping reshaping;
};

// The Edit menu's history of one photo. The window records after every
// change it makes (a panel's control, a pick, a drag, Defaults, a settings
// file); each record that changes the edit is one step on Qt's undo stack,
// named after what changed. Steps of one setting closer together than
// kMergeWindow are one step: a slider drag or a held arrow key.
class EditHistory {
public:
    static constexpr std::chrono::milliseconds kMergeWindow{1000};

    // `restore` puts an edit back into the window (state, reshaping,
    // panels, one redraw) when a step is undone or redone.
    EditHistory(const LocalisedLabels& labels, std::function<void(const Edit&)> restore);

    QUndoStack& stack() { return stack_; }

    // A new photo: the history starts again from `now`.
    void startAt(const Edit& now);

    // Records `now` as one step if it differs from the last edit recorded.
    // `name` names the step; without one it is named after the change.
    void record(const Edit& now, const QString& name = {});

private:
    friend class EditStep;
    void put(const Edit& edit);

    const LocalisedLabels& labels_;
    std::function<void(const Edit&)> restore_;
    QUndoStack stack_;
    Edit last_;
};

// What a change from `before` to `after` is called in the Edit menu, and the
// key under which consecutive changes merge (-1: never).
std::pair<QString, int> describeChange(const Edit& before, const Edit& after, const LocalisedLabels& labels);
