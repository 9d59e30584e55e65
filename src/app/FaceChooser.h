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

// The photo with the frames numbered, largest first: a click in a frame
// takes it; when marking by hand a drag from the brows to the chin draws
// one. Escape or Cancel takes none.
class FaceChooser : public QDialog {
    Q_OBJECT
public:
    FaceChooser(FaceChoice choice, QWidget* parent);

    const std::optional<FaceFrame>& chosen() const { return chosen_; }

    // Shows the dialog and returns the frame taken, if any.
    static std::optional<FaceFrame> ask(const FaceChoice& choice, QWidget* parent);

private:
    FaceChoice choice_; // the frames view reads it while the dialog lives
    std::optional<FaceFrame> chosen_;
};
