#pragma once

#include "OpenedPhoto.h"

#include <QPointF>
#include <QRect>

#include <opencv2/core.hpp>

// The face's skin at a working scale: its part of the photo brought to a
// fixed face width (the same face looks the same from a 1 MP and a 64 MP
// photo, and work on it costs the same at any size), and where the skin is:
// the face up to the hairline, without eyes, brows (a band over them), lids,
// nostrils, lips and mouth, only what has the skin's colour (no hair, scarf
// or background), kept clear of the rest by 1.5 % of the face's width. Skin
// effects judge spots and smooth on it.
struct FaceSkin {
    cv::Rect area;    // photo pixels, y down
    double scale = 0; // working pixels per photo pixel
    double workingWidth = 0; // the face's width from ear to ear, working pixels
    cv::Mat rgb;      // 8-bit R, G, B, at the working scale
    cv::Mat allowed;  // 255 on skin

    bool isEmpty() const { return rgb.empty(); }
    // Whether a photo point (pixels, y down) lies on the skin.
    bool allows(QPointF photoPoint) const;

    // The skin of the photo's face brought to `workingWidth` pixels from
    // ear to ear, its picture reaching over `alsoOver` too (photo pixels:
    // where a brush added skin); empty without a face or for a face under
    // 8 pixels.
    static FaceSkin of(const OpenedPhoto& photo, double workingWidth, const QRect& alsoOver = {});
};
