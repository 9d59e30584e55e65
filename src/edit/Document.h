#pragma once

#include "Change.h"
#include "EditHistory.h"
#include "EditingState.h"
#include "OpenedPhoto.h"
#include "PhotoEdits.h"

#include <QObject>

#include <memory>

// The open photo and everything edited on it: the settings, what was done
// on the photo with the mouse and the history of both. No widgets: the window, its panels and
// the preview read and change it, and say what they changed (changed()),
// which the preview recomposes from and the Edit menu records.
class Document : public QObject {
    Q_OBJECT

public:
    explicit Document(const LocalisedLabels& labels, QObject* parent = nullptr);

    // The open photo (img_Basic and everything derived from it), never
    // changed after the open; an empty one before the first.
    const std::shared_ptr<const OpenedPhoto>& photo() const { return photo_; }
    bool isOpen() const { return !photo_->isEmpty(); }

    // Written by the panels and the mouse, who then say changed().
    EditingState state;
    PhotoEdits photoEdits;

    EditHistory& history() { return history_; }
    Edit edit() const { return {state, photoEdits}; }

    // Counts every change of what a picture is made of: a picture composed
    // at one revision is the picture of the edit while the count stays.
    quint64 revision() const { return revision_; }

    // A photo that has passed the open: every effect off (the settings
    // stay), the photo swapped in whole, what is done on it started from its
    // regions, the history new.
    void accept(OpenedPhoto opened);

    // After a change made to the state or to what is done on the photo: the picture
    // follows and the Edit menu records it.
    void changed(const Change& change);

    // What is done on the photo moves under the mouse: the picture follows; the step is
    // recorded when the gesture ends, under `step`.
    void moved();
    void gestureEnded(const QString& step);

    // The settings of the effect with this switch back to their starting
    // values (its switch and the modes stay), as one step.
    void restoreDefaultsOf(bool EditingState::*effectSwitch, const QString& step);

    // The under-eye rings become the eye outlines again, as one step.
    void resetUnderEyeRings(const QString& step);

    // The settings read from a file or preset in place of the current ones,
    // the mouse modes kept, and what was done on this photo when the file
    // kept it, as one step.
    void replaceSettings(EditingState read, const QString& step, const PhotoEdits* edits = nullptr);

signals:
    // A new photo is open.
    void photoReplaced();
    // The edit changed (a step undone or redone too): what a picture is made
    // of is new.
    void edited(const Change& change);
    // The settings changed as a whole (undo, redo, a settings file, a
    // preset, a new photo): what shows them must show them again.
    void settingsReplaced();

private:
    void restore(const Edit& edit);
    void wholeChange(const QString& step);

    std::shared_ptr<const OpenedPhoto> photo_ = std::make_shared<const OpenedPhoto>();
    EditHistory history_;
    quint64 revision_ = 0;
};
