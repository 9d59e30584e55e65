#pragma once

#include "EditingState.h"
#include "OpenedPhoto.h"

#include <QImage>

#include <array>
#include <cstdint>

// The handle positions the last composition drew, for the mouse: percent of
// the photo (image space, y up) and the small squares in photo pixels.
struct Handles {
    // Cheek paint areas' corners, in the order left-bottom, right-bottom,
    // left-top, right-top (pointPercenteLBLeft, …RBLeft, …LTLeft, …RTLeft).
    std::array<QPointF, 4> pointPercenteLeft, pointPercenteRight;
    std::array<QRectF, 4> rectPointLeft, rectPointRight;
    // The six under-eye points of each side (pointPercente1Left … 6Left).
    std::array<QPointF, 6> pointPercenteEyeLeft, pointPercenteEyeRight;
    std::array<QRectF, 6> rectPointEyeLeft, rectPointEyeRight;
};

// Rebuilds the retouched picture at the photo's full size from the untouched
// photo and the editing state, applying every enabled effect in its fixed
// order. It keeps its buffers and the results of its expensive steps between
// calls, reusing a result only while everything it was made from is
// unchanged, so every call gives exactly what a fresh compositor would.
class Compositor {
public:
    // The working picture; valid until the next call. Null without a photo.
    // Throws std::bad_alloc or cv::Exception when the memory runs out.
    const QImage& compose(const OpenedPhoto& photo, const EditingState& state);

    // The same, never throwing: null when the picture could not be made,
    // with the reason in `failure`. What was kept is dropped then, so the
    // next call starts afresh.
    const QImage* tryCompose(const OpenedPhoto& photo, const EditingState& state, QString& failure);

    const Handles& handles() const { return handles_; }

private:
    struct Cached {
        qint64 photoKey = 0;
        std::uint64_t level = 0, radius = 0;
        float blur = 0;
        RgbaColor outer, inner;
        QPointF centre;
        QImage picture;
    };

    void startFromPhoto(const OpenedPhoto& photo, const EditingState& state);
    void paintCheeks(const OpenedPhoto& photo, const EditingState& state);
    const QImage& smoothedBase(const OpenedPhoto& photo, const EditingState& state);
    const QImage& wrinkleFreeSkin(const OpenedPhoto& photo, const EditingState& state);
    const QImage& cheekLayer(Cached& cache, const RgbaColor& outer, const RgbaColor& inner, QPointF centre,
                             float blur);

    QImage working_;
    Cached base_, wrinkles_, cheekLeft_, cheekRight_;
    Handles handles_;
};

// The under-eye ring of one side through its six points (photo pixels, y
// from the top), as a closed image-space outline of cubic segments.
QPainterPath underEyeCurve(const PointList& points, double imageHeight, bool leftSide);
