#pragma once

#include "FaceLandmarks.h"

#include <QImage>
#include <QRect>
#include <QString>

#include <vector>

// What the face detector found on a photo.
struct DetectionResult {
    // 0 exactly one face (landmarks delivered), 1 no face, 2 several faces.
    int code = 1;
    FaceLandmarks landmarks; // 68 points when code is 0, else empty
    QString error;           // set when detection could not run (no model); code is then meaningless
    // Every face the detector found, largest first (a tie left to right):
    // dlib's boxes, right and bottom inclusive.
    std::vector<QRect> faces;

    bool ok() const { return error.isEmpty(); }
};

// The one place that talks to dlib: its HOG frontal face detector and its
// 68-point shape predictor.
class DLibWrapper {
public:
    // Finds the faces on `photo` (no upsampling, threshold 0.0) and, for
    // exactly one, its 68 landmarks; logs one "Point" line per landmark.
    // The model is loaded on first use and kept for the life of the process.
    // Never throws: dlib's failures come back as an error.
    static DetectionResult Detect_Facial_Points(const QImage& photo);

    // The 68 landmarks predicted in `box` of `photo` (right and bottom
    // inclusive, as dlib's rectangle), exactly as for a face the detector
    // found there; code 0, or an error.
    static DetectionResult Predict_Facial_Points(const QImage& photo, const QRect& box);

    // Every face the detector finds on `photo` without the one-face rule,
    // largest first; an error when it could not run.
    static DetectionResult Find_Faces(const QImage& photo);

    // Starts reading the model on another thread, so that the first photo
    // opened does not pay for it; a detection before it is read waits for
    // it. finishReadingModel waits for that thread, before the program ends.
    static void startReadingModel();
    static void finishReadingModel();

    // How many times this process has read the model: once, however many
    // threads asked for it at the same moment.
    static int modelReads();

    // Where the 68-landmark model is looked for: the program's data folder
    // first, then Debian's libdlib-data. Empty when neither has it.
    static QString modelPath();
};
