#pragma once

#include "OpenedPhoto.h"

#include <QPolygonF>
#include <QRect>

#include <vector>

// A face to take on a photo the one-face open refused: one of several the
// detector found, one found on a turned or enlarged copy, or a frame drawn
// by hand.
struct FaceFrame {
    // The frame on the photo as it is (pixels, y down), to show and click.
    QPolygonF outline;
    // The box the landmarks are predicted in, on the photo turned as below
    // (right and bottom inclusive, as dlib's rectangle).
    QRect box;
    // The photo was stored on its side: it is used turned clockwise by
    // this many quarters (1 or 3) and stays turned.
    int quarterTurns = 0;
    // Found on a copy turned clockwise by this many degrees: the landmarks
    // are predicted there and turned back onto the photo as it is.
    double degrees = 0;

    static FaceFrame drawn(const QRect& box);
};

// The faces the detector found on `photo`, largest first, as frames.
std::vector<FaceFrame> framesOf(const std::vector<QRect>& faces);

// What can be found beyond the detector's limits: faces on the photo
// turned a quarter either way or by ±30°, and small faces on the photo
// enlarged twice; largest first.
std::vector<FaceFrame> facesBeyondLimits(const QImage& photo);

// Whether a photo of this size is searched enlarged too: only up to 1.5
// megapixels, as the enlarged copy of a larger one would cost seconds.
bool searchedEnlarged(QSize photo);

// Completes an open the one-face rule refused (`refused` holds the decoded
// photo) with the face in `frame`: its landmarks predicted there exactly as
// for a face found alone, the regions derived. A frame outside the photo
// or smaller than a few pixels is refused.
OpenResult openWithFace(OpenResult refused, const FaceFrame& frame);
