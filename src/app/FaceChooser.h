#pragma once

#include "FaceSearch.h"

#include <QDialog>
#include <QImage>

#include <optional>
#include <vector>

// What the face chooser shows: the photo refused for its faces, the frames
// to click, and whether a frame may be drawn by hand (no face was found).
struct FaceChoice {
    QImage photo;
    std::vector<FaceFrame> frames;
    bool markByHand = false;
    int facesSeen = 0; // by the detector, on the photo as it is
};

// What the person took: one frame, or every face the detector found.
struct ChosenFaces {
    std::optional<FaceFrame> frame;
    bool every = false;

    ChosenFaces(std::optional<FaceFrame> one = {}, bool all = false)
        : frame(std::move(one))
        , every(all)
    {
    }
    explicit operator bool() const { return frame || every; }
};

// The photo with the frames numbered, largest first: a click in a frame
// takes it; when marking by hand a drag from the brows to the chin draws
// one. With several faces found "Every Face" takes them all. Escape or
// Cancel takes none.
class FaceChooser : public QDialog {
    Q_OBJECT
public:
    FaceChooser(FaceChoice choice, QWidget* parent);

    const ChosenFaces& chosen() const { return chosen_; }

    // Shows the dialog and returns what was taken, if anything.
    static ChosenFaces ask(const FaceChoice& choice, QWidget* parent);

    // Shows the landmarks found in a frame drawn by hand on the photo around
    // them: "Use this face" (true) or "Draw again" (false).
    static bool confirm(const OpenedPhoto& photo, QWidget* parent);

private:
    FaceChoice choice_; // the frames view reads it while the dialog lives
    ChosenFaces chosen_;
};
