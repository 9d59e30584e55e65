#pragma once

#include "EditingState.h"
#include "EffectOrder.h"
#include "EffectPass.h"

#include <QImage>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

struct EffectMemos; // what every effect keeps between pictures (AllEffects.h)

// What one pass of the compositor works on: what each effect's step works
// on, the whole editing state (each step reads its own effect's part) and
// what every effect keeps.
struct CompositorPass {
    EffectPass effect;
    const EditingState& state;
    EffectMemos& memos;
};

// Rebuilds the retouched picture at the photo's full size from the untouched
// photo, what the user reshaped and the editing state, applying every
// enabled effect's steps in the order table's order (EffectOrder.cpp). It
// keeps its buffers and what the effects keep between calls, reusing a
// result only while everything it was made from is unchanged, so every
// call gives exactly what a fresh compositor would.
class Compositor {
public:
    // A compositor of one picture (a file) keeps no whole-picture copies
    // for a next one.
    enum Use { Again, Once };
    explicit Compositor(Use use = Again);
    ~Compositor();
    Compositor(Compositor&&) noexcept;
    Compositor& operator=(Compositor&&) noexcept;

    // The working picture; valid until the next call. Null without a photo.
    // Throws std::bad_alloc or cv::Exception when the memory runs out.
    // `photoPixelsPerPixel` above 1 composes a shrunk copy of the photo
    // (see ViewProxy.h): every size the settings give in photo pixels
    // shrinks with it, so the picture looks like the full one shrunk.
    const QImage& compose(const OpenedPhoto& photo, const PhotoEdits& photoEdits, const EditingState& state,
                          double photoPixelsPerPixel = 1);
    // The same through the given steps in their order instead of the
    // program's (tests check that the order matters where it says so).
    const QImage& compose(const OpenedPhoto& photo, const PhotoEdits& photoEdits, const EditingState& state,
                          std::span<const CompositorStep> steps, double photoPixelsPerPixel = 1);

    // The same, never throwing: null when the picture could not be made,
    // with the reason in `failure`. What was kept is dropped then, so the
    // next call starts afresh.
    const QImage* tryCompose(const OpenedPhoto& photo, const PhotoEdits& photoEdits, const EditingState& state,
                             QString& failure, double photoPixelsPerPixel = 1);

    const Handles& handles() const { return handles_; }

    // The picture of the last call, and how many calls composed one.
    const QImage& working() const { return working_; }
    std::uint64_t passes() const { return passes_; }

private:
    // One face of a group as its steps see it, made once per picture.
    struct FaceView;
    static std::vector<FaceView> faceViewsOf(const OpenedPhoto& opened, const PhotoEdits& photoEdits,
                                             const EditingState& state, const Handles& firstHandles);

    EffectMemos& memosOfFace(int face);
    void paintWithEveryFace(const CompositorStep& step, CompositorPass& pass, const OpenedPhoto& opened);
    void paintFaceByFace(const CompositorStep& step, CompositorPass& pass, std::vector<FaceView>& faces);

    bool keeps_;
    QImage working_;
    std::uint64_t passes_ = 0;
    WorkingRecord record_;
    // What the effects keep, face by face (one face: the first only).
    std::vector<std::unique_ptr<EffectMemos>> memos_;
    Handles handles_;
};
