#include "SkinSmoothing.h"

#include "Contract.h"
#include "FastPaths.h"
#include "FilterPrimitives.h"
#include "PatchedPicture.h"
#include "PixelKernels.h"
#include "RegionImages.h"
#include "TRCIHighPassSkinSmoothing.h"

#include <cstring>

struct SkinSmoothing::Kept {
    struct BaseKey {
        qint64 photo;
        std::uint64_t level, radius;
        bool operator==(const BaseKey&) const = default;
    };
    struct MaskKey {
        qint64 photo;
        std::uint64_t radius;
        bool operator==(const MaskKey&) const = default;
    };
    Memo<qint64> photoOverBlack; // null when the photo is opaque
    Memo<qint64, MaskedArea> holes; // image_Face_Full_Picture
    Memo<qint64, SkinSmoothingPlanes> planes;
    Memo<MaskKey, cv::Mat> mask;
    SkinSmoothingScratch scratch;
    Memo<BaseKey> smoothedBase;
};

const PanelDescription& SkinSmoothing::panel()
{
    static const PanelDescription panel{
        "IDD_SMOOTH_SKIN",
        {{ControlKind::Apply, "b_Face_Skin_Smooth", "checkApply"},
         {ControlKind::Slider, "u_Face_Skin_Smooth_Level", "slider_Level", {"IDD_LEVEL"}, "labelLevel", "labelLevelValue"},
         {ControlKind::Slider, "u_Face_Skin_Smooth_Radius", "slider_Ratio", {"IDD_RADIUS"}, "labelRadius",
          "labelRadiusValue"}}};
    return panel;
}

namespace {

using Memos = SkinSmoothing::Kept;

// The photo over opaque black: the photo itself when it is opaque.
QImage opaquePhoto(EffectPass& pass, Memos& memos)
{
    const QImage& photo = pass.photo->img_Basic;
    const QImage& blackened = memos.photoOverBlack.get(photo.cacheKey(), [&](QImage& picture) {
        picture = QImage();
        if (isOpaque(photo))
            return;
        picture = makePicture(photo.size());
        picture.fill(Qt::black);
        drawOver(picture, photo);
    });
    return blackened.isNull() ? toPicture(photo) : blackened;
}

// The smoothed photo into `base`, and into the working picture in the same
// pass when `alsoWorking`.
void makeSmoothedBase(EffectPass& pass, const SkinSmoothing::Settings& s, Memos& memos, const QImage& under,
                      QImage& base, bool alsoWorking = true)
{
    const OpenedPhoto& photo = *pass.photo;
    const qint64 faceKey = pass.photoKey(); // the holes are made from it
    const MaskedArea& holes = memos.holes.get(faceKey, [&](MaskedArea& made) {
        std::vector<const FaceRegions*> faces{&photo.regions};
        for (const PhotoFace& other : photo.otherFaces)
            faces.push_back(&other.regions);
        made = RegionImages::facesFullPicture(photo.img_Basic, photo.imgSize, faces);
    });
    // Several faces' holes come as a whole picture of their own.
    const PatchedPicture face = holes.area == photo.img_Basic.rect()
                                    ? PatchedPicture(holes.picture)
                                    : PatchedPicture(toPicture(photo.img_Basic), holes.picture, holes.area.topLeft());
    SkinSmoothingAmounts settings = skinSmoothingAmounts(s.u_Face_Skin_Smooth_Level, s.u_Face_Skin_Smooth_Radius);
    settings.radius = pass.scaled(settings.radius);
    const SkinSmoothingPlanes& planes =
        memos.planes.get(faceKey, [&](SkinSmoothingPlanes& p) { p = SkinSmoothingPlanes::of(face); });
    const cv::Mat& mask = memos.mask.get({faceKey, s.u_Face_Skin_Smooth_Radius},
                                         [&](cv::Mat& m) { skinMask(planes, settings.radius, m); });
    ensurePicture(base, under.size());
    smoothSkin(face, mask, planes, settings.amount, settings.sharpness, defaultSkinToneTexture(), memos.scratch,
               &under, base, alsoWorking ? &pass.working : nullptr, float(pass.pixelScale));
}

// The base into the working picture: where the working picture already
// holds this base, only the part the last pass painted over.
void copyBase(const QImage& base, EffectPass& pass)
{
    WorkingRecord& record = pass.record;
    QRect part = base.rect();
    if (record.base == base.cacheKey() && pass.working.size() == base.size() && fastPaths())
        part = record.painted & base.rect();
    ensurePicture(pass.working, base.size());
    uchar* to = pass.working.bits();
    const uchar* from = base.constBits();
    const qsizetype stride = base.bytesPerLine(), length = qsizetype(part.width()) * 4;
    const qsizetype first = part.y() * stride + qsizetype(part.x()) * 4;
    parallelRows(part.height(), [&](int begin, int end) {
        for (qsizetype at = first + begin * stride; at < first + end * stride; at += stride)
            std::memcpy(to + at, from + at, size_t(length));
    });
    BELLAVENOR_CHECK(std::memcmp(pass.working.constBits(), base.constBits(), size_t(base.sizeInBytes())) == 0,
                     "the working picture differs from its base outside " << record.painted.x() << ","
                         << record.painted.y() << " " << record.painted.width() << "x" << record.painted.height());
}

} // namespace

// Without smoothing the photo itself is the base; the smoothed one is kept
// only while smoothing is on, as it takes a photo's worth of memory.
void SkinSmoothing::startFromPhoto(EffectPass& pass, const Settings& s, SkinSmoothing::Memos& memos)
{
    if (!memos.kept)
        memos.kept = std::make_shared<Kept>();
    startFromKept(pass, s, *memos.kept);
}

void SkinSmoothing::startFromKept(EffectPass& pass, const Settings& s, Kept& memos)
{
    const QImage under = opaquePhoto(pass, memos);
    if (s.b_Face_Skin_Smooth && !pass.keeps) { // straight into the working picture: no base kept
        makeSmoothedBase(pass, s, memos, under, pass.working, false);
        pass.record = {};
        return;
    }
    if (!s.b_Face_Skin_Smooth) {
        memos.smoothedBase.clear();
        copyBase(under, pass);
        pass.record = {under.cacheKey(), QRect()};
        return;
    }
    const Kept::BaseKey key{under.cacheKey(), s.u_Face_Skin_Smooth_Level, s.u_Face_Skin_Smooth_Radius};
    // A base made now is written into the working picture in the same pass.
    bool made = false;
    const QImage& base = memos.smoothedBase.get(key, [&](QImage& picture) {
        makeSmoothedBase(pass, s, memos, under, picture);
        made = true;
    });
    if (!made)
        copyBase(base, pass);
    pass.record = {base.cacheKey(), QRect()};
}
