#pragma once

#include "EditingState.h"
#include "OpenedPhoto.h"
#include "Reshaping.h"
#include "TRCIHighPassSkinSmoothing.h"

#include <QImage>

#include <span>

#include <array>
#include <cstdint>
#include <optional>

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

// One expensive result, kept while the inputs it was made from, its key,
// stay the same. A new result is made in place of the old one, so its
// buffers are reused.
template <typename Key, typename Value = QImage>
class Memo {
public:
    template <typename Make>
    const Value& get(const Key& key, Make&& make)
    {
        if (!key_ || !(*key_ == key)) {
            key_.reset(); // a make that throws leaves no stale key behind
            make(value_);
            key_ = key;
        }
        return value_;
    }

    bool holds(const Key& key) const { return key_ && *key_ == key; }
    void clear() { *this = Memo(); }

private:
    std::optional<Key> key_;
    Value value_;
};

// What each cached step is made from; a picture's cache key names its pixels.
struct SmoothedBaseKey {
    qint64 photo;
    std::uint64_t level, radius;
    bool operator==(const SmoothedBaseKey&) const = default;
};
struct SkinMaskKey {
    qint64 photo;
    std::uint64_t radius;
    bool operator==(const SkinMaskKey&) const = default;
};
struct WrinkleFreeSkinKey {
    qint64 skinCut;
    std::uint64_t level;
    bool operator==(const WrinkleFreeSkinKey&) const = default;
};
struct CheekLayerKey {
    RgbaColor outer, inner;
    QPointF centre;
    float blur;
    int size;
    bool operator==(const CheekLayerKey&) const = default;
};

struct CompositorMemos {
    Memo<qint64> photoOverBlack;                        // null when the photo is opaque
    Memo<qint64, SkinSmoothingPlanes> skinPlanes;       // of the full picture
    Memo<SkinMaskKey, cv::Mat> skinMask;
    SkinSmoothingScratch skinScratch;
    Memo<SmoothedBaseKey> smoothedBase;
    Memo<WrinkleFreeSkinKey> wrinkleFreeSkin;
    Memo<CheekLayerKey> cheekLeft, cheekRight;
};

// What the working picture holds between passes: the base it was copied
// from (its cache key) and the part the steps painted over since. Only that
// part needs the base again while the base is unchanged.
struct WorkingRecord {
    qint64 base = 0;
    QRect painted;
};

// Rebuilds the retouched picture at the photo's full size from the untouched
// photo, what the user reshaped and the editing state, applying every
// enabled effect in its fixed order (the steps of CompositorSteps.h). It
// keeps its buffers and the results of its expensive steps between calls,
// reusing a result only while everything it was made from is unchanged, so
// every call gives exactly what a fresh compositor would.
struct CompositorStep;

// Where the handles of the shown modes are for this reshaping: what the
// compositor draws and what the mouse aims at. Empty for a mode that is off.
Handles handlesOf(const Reshaping& reshaping, const EditingState& state, QSizeF imgSize);

class Compositor {
public:
    // The working picture; valid until the next call. Null without a photo.
    // Throws std::bad_alloc or cv::Exception when the memory runs out.
    // `photoPixelsPerPixel` above 1 composes a shrunk copy of the photo
    // (see ViewProxy.h): every size the settings give in photo pixels
    // shrinks with it, so the picture looks like the full one shrunk.
    const QImage& compose(const OpenedPhoto& photo, const Reshaping& reshaping, const EditingState& state,
                          double photoPixelsPerPixel = 1);
    // The same through the given steps in their order instead of the
    // program's (tests check that the order matters where it says so).
    const QImage& compose(const OpenedPhoto& photo, const Reshaping& reshaping, const EditingState& state,
                          std::span<const CompositorStep> steps, double photoPixelsPerPixel = 1);

    // The same, never throwing: null when the picture could not be made,
    // with the reason in `failure`. What was kept is dropped then, so the
    // next call starts afresh.
    const QImage* tryCompose(const OpenedPhoto& photo, const Reshaping& reshaping, const EditingState& state,
                             QString& failure, double photoPixelsPerPixel = 1);

    const Handles& handles() const { return handles_; }

    // The picture of the last call, and how many calls composed one.
    const QImage& working() const { return working_; }
    std::uint64_t passes() const { return passes_; }

private:
    QImage working_;
    std::uint64_t passes_ = 0;
    WorkingRecord record_;
    CompositorMemos memos_;
    Handles handles_;
};
