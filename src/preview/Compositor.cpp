#include "Compositor.h"

#include "AllEffects.h"
#include "EffectCatalogue.h"

#include <QColorTransform>

#include <algorithm>
#include <exception>
#include <new>
#include <type_traits>

namespace {

// Colours are chosen in sRGB (the colour dialogs, picked colours as seen);
// they are painted in the photo's own space so that they look in the
// saved picture as they looked when chosen. Every sRGB colour lies inside
// the wide-gamut spaces photos come in, so none is clipped.
EditingState inPhotoSpace(const EditingState& state, const PhotoMetadata& metadata)
{
    EditingState painted = state;
    if (isSrgb(metadata))
        return painted;
    const QColorTransform toPhoto = QColorSpace(QColorSpace::SRgb).transformationToColorSpace(metadata.colourSpace);
    painted.forEachField([&](const char*, auto& field) {
        if constexpr (std::is_same_v<std::decay_t<decltype(field)>, RgbaColor>) {
            const RgbaColor mapped = toPhoto.map(field);
            field = RgbaColor{std::clamp(mapped.r, 0.f, 1.f), std::clamp(mapped.g, 0.f, 1.f),
                              std::clamp(mapped.b, 0.f, 1.f), field.a};
        }
    });
    return painted;
}

} // namespace

Compositor::Compositor(Use use)
    : keeps_(use == Again)
    , memos_(std::make_unique<EffectMemos>())
{
}

Compositor::~Compositor() = default;
Compositor::Compositor(Compositor&&) noexcept = default;
Compositor& Compositor::operator=(Compositor&&) noexcept = default;

const QImage& Compositor::compose(const OpenedPhoto& photo, const PhotoEdits& photoEdits, const EditingState& state,
                                  double photoPixelsPerPixel)
{
    return compose(photo, photoEdits, state, compositorSteps(), photoPixelsPerPixel);
}

const QImage& Compositor::compose(const OpenedPhoto& photo, const PhotoEdits& photoEdits, const EditingState& state,
                                  std::span<const CompositorStep> steps, double photoPixelsPerPixel)
{
    handles_ = {};
    if (photo.isEmpty()) {
        working_ = QImage();
        return working_;
    }
    ++passes_;
    handles_ = handlesOf(photoEdits, state, photo.imgSize);
    const EditingState painted = inPhotoSpace(state, photo.metadata);
    CompositorPass pass{{working_, record_, &photo, photoEdits, handles_, photoPixelsPerPixel, keeps_}, painted, *memos_};
    for (const CompositorStep& step : steps)
        if (step.runs(painted))
            step.paint(pass);
    return working_;
}

const QImage* Compositor::tryCompose(const OpenedPhoto& photo, const PhotoEdits& photoEdits, const EditingState& state,
                                     QString& failure, double photoPixelsPerPixel)
{
    try {
        return &compose(photo, photoEdits, state, photoPixelsPerPixel);
    } catch (const std::bad_alloc&) {
        failure = "there is not enough memory for a picture of this size";
    } catch (const std::exception& error) {
        failure = QString::fromLocal8Bit(error.what());
    }
    *this = Compositor(keeps_ ? Again : Once);
    return nullptr;
}
