#include "Compositor.h"

#include "AllEffects.h"
#include "EffectCatalogue.h"
#include "ImageSpace.h"

#include <QColorTransform>
#include <QPainter>
#include <QPainterPathStroker>

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

// Where face `face`'s steps could paint: its landmarks' bounds, half its
// width wider on every side (blush, blurs, handles).
QRectF reachOf(const FaceLandmarks& face)
{
    const QRectF bounds = QPolygonF(face).boundingRect();
    const double margin = bounds.width() / 2;
    return bounds.adjusted(-margin, -margin, margin, margin);
}

// The other faces' eyes, brows and lips within face `face`'s reach, in
// picture coordinates: what its steps must not change in a tight group.
QPainterPath featuresBeside(const OpenedPhoto& opened, int face)
{
    const QRectF reach = reachOf(opened.landmarksOfFace(face));
    QPainterPath features;
    features.setFillRule(Qt::WindingFill);
    const QTransform toPicture = imageSpaceToPicture(opened.imgSize.height());
    for (int other = 0; other < opened.faceCount(); ++other) {
        const FaceLandmarks& p = opened.landmarksOfFace(other);
        if (other == face || !reach.intersects(QPolygonF(p).boundingRect()))
            continue;
        const FaceRegions& r = opened.regionsOfFace(other);
        features.addPath(toPicture.map(r.path_Eye_Left));
        features.addPath(toPicture.map(r.path_Eye_Right));
        features.addPath(toPicture.map(r.path_Lips));
        QPainterPathStroker brow;
        brow.setWidth(QLineF(p[0], p[16]).length() * 0.04);
        for (const auto& [first, last] : {std::pair{17, 21}, {22, 26}}) {
            QPainterPath line(p[first]);
            for (int i = first + 1; i <= last; ++i)
                line.lineTo(p[i]);
            features.addPath(brow.createStroke(line));
        }
    }
    return features;
}

// Puts back what a step changed of `guarded` in the working picture.
class FeatureGuard {
public:
    FeatureGuard(QImage& working, QPainterPath guarded)
        : working_(working)
        , guarded_(std::move(guarded))
        , size_(working.size())
        , area_(guarded_.boundingRect().toAlignedRect() & working.rect())
        , before_(area_.isEmpty() ? QImage() : working.copy(area_))
    {
    }

    void restore(QRect& painted)
    {
        if (before_.isNull() || working_.size() != size_ || working_.copy(area_) == before_)
            return;
        QPainter painter(&working_);
        painter.setClipPath(guarded_);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.drawImage(area_.topLeft(), before_);
        painted |= area_;
    }

private:
    QImage& working_;
    QPainterPath guarded_;
    QSize size_;
    QRect area_;
    QImage before_;
};

} // namespace

Compositor::Compositor(Use use)
    : keeps_(use == Again)
{
    memos_.push_back(std::make_unique<EffectMemos>());
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
    CompositorPass pass{{working_, record_, &photo, photoEdits, handles_, photoPixelsPerPixel, keeps_}, painted,
                        *memos_.front()};
    std::vector<FaceView> faces;
    if (photo.faceCount() > 1)
        faces = faceViewsOf(photo, photoEdits, painted, handles_);
    for (const CompositorStep& step : steps) {
        if (!step.runs(painted))
            continue;
        if (faces.empty())
            step.paint(pass);
        else if (step.wholePicture)
            paintWithEveryFace(step, pass, photo);
        else
            paintFaceByFace(step, pass, faces);
    }
    return working_;
}

EffectMemos& Compositor::memosOfFace(int face)
{
    while (int(memos_.size()) <= face)
        memos_.push_back(std::make_unique<EffectMemos>());
    return *memos_[size_t(face)];
}

struct Compositor::FaceView {
    int face;
    OpenedPhoto seen; // its landmarks and regions; the photo as the steps before left it
    PhotoEdits edits; // its marks, areas and rings (PhotoEdits::ofFace)
    Handles handles;
    QPainterPath others; // the other faces' features its steps must leave
};

std::vector<Compositor::FaceView> Compositor::faceViewsOf(const OpenedPhoto& opened, const PhotoEdits& photoEdits,
                                                          const EditingState& state, const Handles& firstHandles)
{
    std::vector<FaceView> faces;
    for (int face = 0; face < opened.faceCount(); ++face) {
        if (photoEdits.facesLeftOut.contains(face))
            continue;
        PhotoEdits edits = photoEdits.ofFace(opened, face);
        Handles handles = face == 0 ? firstHandles : handlesOf(edits, state, opened.imgSize);
        faces.push_back({face, opened.asFace(face), std::move(edits), handles, featuresBeside(opened, face)});
    }
    return faces;
}

// A step once for each face kept: each face's step reads the photo as the
// steps before left it, with that face's view, and keeps what it makes
// apart from the other faces'.
void Compositor::paintFaceByFace(const CompositorStep& step, CompositorPass& pass, std::vector<FaceView>& faces)
{
    const OpenedPhoto* current = pass.effect.photo;
    for (FaceView& view : faces) {
        view.seen.img_Basic = current->img_Basic;
        CompositorPass facePass{{pass.effect.working, pass.effect.record, &view.seen, view.edits, view.handles,
                                 pass.effect.pixelScale, pass.effect.keeps},
                                pass.state, memosOfFace(view.face)};
        FeatureGuard others(pass.effect.working, view.others);
        step.paint(facePass);
        others.restore(pass.effect.record.painted);
        if (facePass.effect.photo != &view.seen) // the step hands the later steps a photo of its own
            current = facePass.effect.photo;
    }
    // The later steps read the photo the last face's step made.
    pass.effect.photo = current;
}

// A step of the whole picture reads the photo as the steps before left it
// with every face of `opened` on it.
void Compositor::paintWithEveryFace(const CompositorStep& step, CompositorPass& pass, const OpenedPhoto& opened)
{
    const OpenedPhoto* current = pass.effect.photo;
    OpenedPhoto seen = opened;
    seen.img_Basic = current->img_Basic;
    pass.effect.photo = &seen;
    step.paint(pass);
    if (pass.effect.photo == &seen)
        pass.effect.photo = current;
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
