#pragma once

#include "OpenedPhoto.h"
#include "PhotoEdits.h"

#include <QRect>
#include <QRectF>
#include <QSize>

// While a control moves, the preview composes only what the view shows, at
// the size it is shown: the part of the photo in view plus a margin wide
// enough for every effect's reach, shrunk to screen pixels. That frame costs
// the same at any photo size; the full picture follows when the hand rests.
struct ProxyFrame {
    QRect area; // of the photo, in photo pixels with y down
    QSize size; // of the frame's picture

    bool operator==(const ProxyFrame&) const = default;
    double photoPixelsPerPixel() const { return double(area.width()) / size.width(); }
    bool isEmpty() const { return area.isEmpty() || size.isEmpty(); }
};

// The frame of a view showing `visible` (photo pixels, y down) at `zoom`
// device pixels per photo pixel; never larger than the photo itself.
ProxyFrame proxyFrameFor(QSize photo, const QRectF& visible, double zoom);

// Whether composing `frame` saves enough over composing the whole photo to
// be worth a second picture: the photo is large and the frame a fraction
// of it.
bool worthAProxy(QSize photo, const ProxyFrame& frame);

// The photo reduced to a frame: its area shrunk to the frame's size, and
// every region and region picture made from that as an open makes them.
OpenedPhoto proxyPhoto(const OpenedPhoto& photo, const ProxyFrame& frame);

// What the user reshaped, moved onto a frame of a photo of `photoSize`.
PhotoEdits proxyPhotoEdits(const PhotoEdits& photoEdits, QSizeF photoSize, const ProxyFrame& frame);
