#include "CompositorSteps.h"

#include "Contract.h"
#include "FastPaths.h"
#include "FilterPrimitives.h"
#include "GaussianBlur.h"
#include "ImageSpace.h"
#include "PixelKernels.h"
#include "Picture.h"
#include "SinglePrecision.h"
#include "TRCIHighPassSkinSmoothing.h"

#include <QPainter>
#include <QRadialGradient>

#include <opencv2/core/utility.hpp>

#include <cmath>
#include <cstring>

namespace {

// Per side, the control-point offsets of the under-eye curve's six segments
// in percent of each segment's extent; the sides are deliberately not
// mirror images.
constexpr std::array<QPointF, 6> kUnderEyeLeft{{{-2, -20}, {0, -10}, {10, 10}, {10, 10}, {-10, 30}, {-10, 20}}};
constexpr std::array<QPointF, 6> kUnderEyeRight{{{0, -10}, {-2, -10}, {10, 10}, {10, 20}, {-10, 30}, {10, 10}}};

constexpr int kCheekLayerSize = 1024;

QColor colourOf(const RgbaColor& c, float alpha)
{
    return QColor::fromRgbF(c.r, c.g, c.b, std::clamp(alpha, 0.0f, 1.0f));
}

// A painter on the working picture that takes image-space shapes and adds
// what it covers to the pass's painted area; nothing else paints there.
class ImagePainter : QPainter {
public:
    explicit ImagePainter(CompositorPass& pass)
        : QPainter(&pass.working)
        , height(pass.height())
        , painted_(pass.record.painted)
    {
        setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    }

    using QPainter::setBrush;
    using QPainter::setOpacity;
    using QPainter::setPen;

    void drawInto(const QRectF& imageRect, const QImage& image)
    {
        if (image.isNull() || imageRect.width() <= 0 || imageRect.height() <= 0)
            return;
        const QRectF target = flipped(imageRect, height);
        cover(target, 0);
        drawImage(target, image);
    }

    void fillImagePath(const QPainterPath& path, const QColor& colour)
    {
        const QPainterPath shape = flipped(path, height);
        cover(shape.boundingRect(), 0);
        fillPath(shape, colour);
    }

    void strokeImagePath(const QPainterPath& path)
    {
        const QPainterPath shape = flipped(path, height);
        cover(shape.boundingRect(), pen().widthF());
        drawPath(shape);
    }

    const double height;

private:
    // Antialiased edges and smooth scaling reach into the pixels a shape
    // only touches: one pixel more on every side.
    void cover(const QRectF& shape, double penWidth)
    {
        const double reach = penWidth / 2 + 1;
        painted_ |= shape.adjusted(-reach, -reach, reach, reach).toAlignedRect();
    }

    QRect& painted_;
};

// The smallest part of the photo holding `shape` (picture coordinates) and
// everything a blur of `reach` pixels spreads it over.
QRect areaAround(const QRectF& shape, int reach, const QImage& picture)
{
    return shape.toAlignedRect().adjusted(-reach, -reach, reach, reach).intersected(picture.rect());
}

// Draws shapes into a transparent layer, blurs it and lays it over the
// picture. The layer covers only the part of the photo the blurred shapes
// reach: everywhere else a full-size layer would be transparent.
template <typename PaintFn>
void blurredLayerOver(CompositorPass& pass, const QRectF& shapeBounds, float blur, double lineWidth, PaintFn&& paint)
{
    const int reach = int(std::ceil(3.0f * std::max(blur, 0.0f)) + std::ceil(lineWidth)) + 2;
    const QRect area = areaAround(shapeBounds, reach, pass.working);
    if (area.isEmpty())
        return;
    pass.record.painted |= area;
    QImage layer = makePicture(area.size());
    {
        QPainter painter(&layer);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(-area.topLeft());
        paint(painter);
    }
    gaussianBlurCropped(layer, layer, blur);
    QPainter(&pass.working).drawImage(area.topLeft(), layer);
}

// --- "photo and skin smoothing": the photo over opaque black, and the
// smoothed face over all of it.

// The photo over opaque black: the photo itself when it is opaque.
QImage opaquePhoto(CompositorPass& pass)
{
    const QImage& photo = pass.photo.img_Basic;
    const QImage& blackened = pass.memos.photoOverBlack.get(photo.cacheKey(), [&](QImage& picture) {
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
// pass.
void makeSmoothedBase(CompositorPass& pass, const QImage& under, QImage& base)
{
    const EditingState& s = pass.state;
    const MaskedArea& holes = pass.photo.images.image_Face_Full_Picture;
    const PatchedPicture face(toPicture(pass.photo.img_Basic), holes.picture, holes.area.topLeft());
    const qint64 faceKey = pass.photo.img_Basic.cacheKey(); // the holes are made from it
    SkinSmoothingSettings settings = SkinSmoothingSettings::of(s.u_Face_Skin_Smooth_Level, s.u_Face_Skin_Smooth_Radius);
    settings.radius = pass.scaled(settings.radius);
    CompositorMemos& memos = pass.memos;
    const SkinSmoothingPlanes& planes =
        memos.skinPlanes.get(faceKey, [&](SkinSmoothingPlanes& p) { p = SkinSmoothingPlanes::of(face); });
    const cv::Mat& mask = memos.skinMask.get({faceKey, s.u_Face_Skin_Smooth_Radius},
                                             [&](cv::Mat& m) { skinMask(planes, settings.radius, m); });
    ensurePicture(base, under.size());
    smoothSkin(face, mask, planes, settings.amount, settings.sharpness, defaultSkinToneTexture(), memos.skinScratch,
               &under, base, &pass.working, float(pass.pixelScale));
}

// The base into the working picture: where the working picture already
// holds this base, only the part the last pass painted over.
void copyBase(const QImage& base, CompositorPass& pass)
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

// Without smoothing the photo itself is the base; the smoothed one is kept
// only while smoothing is on, as it takes a photo's worth of memory.
void startFromPhoto(CompositorPass& pass)
{
    const EditingState& s = pass.state;
    const QImage under = opaquePhoto(pass);
    if (!s.b_Face_Skin_Smooth) {
        pass.memos.smoothedBase.clear();
        copyBase(under, pass);
        pass.record = {under.cacheKey(), QRect()};
        return;
    }
    const SmoothedBaseKey key{under.cacheKey(), s.u_Face_Skin_Smooth_Level, s.u_Face_Skin_Smooth_Radius};
    // A base made now is written into the working picture in the same pass.
    bool made = false;
    const QImage& base = pass.memos.smoothedBase.get(key, [&](QImage& picture) {
        makeSmoothedBase(pass, under, picture);
        made = true;
    });
    if (!made)
        copyBase(base, pass);
    pass.record = {base.cacheKey(), QRect()};
}

// --- "lips mask", "eye colour", "lips colour".

void paintLipsMask(CompositorPass& pass)
{
    ImagePainter(pass)
        .drawInto(pass.photo.regions.rect_Lips, pass.photo.images.image_Lips_Black_White);
}

void paintEyeColour(CompositorPass& pass)
{
    const FaceRegions& r = pass.photo.regions;
    const RegionImages& i = pass.photo.images;
    ImagePainter p(pass);
    p.drawInto(r.rect_Eye_Left, i.image_Eye_Left_Black_White);
    p.drawInto(r.rect_Eye_Right, i.image_Eye_Right_Black_White);
    const QColor colour = colourOf(pass.state.color_Color_Eyes, pass.state.f_Color_Eyes_Transparency);
    p.fillImagePath(r.path_Inside_Eye_Left, colour);
    p.fillImagePath(r.path_Inside_Eye_Right, colour);
}

void paintLipsColour(CompositorPass& pass)
{
    ImagePainter(pass)
        .fillImagePath(pass.photo.regions.path_Lips,
                       colourOf(pass.state.color_Color_Lips, pass.state.f_Color_Lips_Transparency));
}

// The under-eye ring of one side through its six points (photo pixels, y
// from the top), as a closed image-space outline of cubic segments.
QPainterPath underEyeCurve(const PointList& points, double imageHeight, bool leftSide)
{
    QPainterPath path;
    if (points.size() < 6)
        return path;
    const std::array<QPointF, 6>& offsets = leftSide ? kUnderEyeLeft : kUnderEyeRight;
    path.moveTo(flipped(points[0], imageHeight));
    for (int k = 1; k <= 6; ++k) {
        const QPointF from = points[k - 1], to = points[k % 6];
        const float w = float(std::abs(to.x() - from.x())), h = float(std::abs(to.y() - from.y()));
        const float minX = float(std::min(from.x(), to.x())), minY = float(std::min(from.y(), to.y()));
        const QPointF offset = offsets[size_t(k - 1)];
        const QPointF control(minX + 0.5f * w + float(offset.x()) * w / 100.0f,
                              float(imageHeight) - (minY + 0.5f * h + float(offset.y()) * h / 100.0f));
        path.cubicTo(control, control, flipped(to, imageHeight));
    }
    path.closeSubpath();
    return path;
}

// --- "under-eye darkening": the rings, stroked and blurred.

void darkenEyes(CompositorPass& pass)
{
    const EditingState& s = pass.state;
    const double height = pass.height();
    const QPainterPath left = flipped(underEyeCurve(pass.reshaping.array_Eye_Darken_Left_Points, height, true), height);
    const QPainterPath right =
        flipped(underEyeCurve(pass.reshaping.array_Eye_Darken_Right_Points, height, false), height);
    const QColor ink = QColor::fromRgbF(0, 0, 0, std::clamp(1.0f - s.f_Darken_Eyes_Transparency, 0.0f, 1.0f));
    const float lineWidth = pass.scaled(s.f_Darken_Eyes_Line_Width);
    blurredLayerOver(pass, left.boundingRect() | right.boundingRect(), pass.scaled(s.f_Darken_Eyes_Blur_Level),
                     lineWidth, [&](QPainter& layer) {
                         layer.setPen(QPen(ink, lineWidth));
                         layer.drawPath(left);
                         layer.drawPath(right);
                     });
}

// --- "mouth interior": the untouched mouth interior, whitened when asked.

void restoreMouthInterior(CompositorPass& pass)
{
    const FaceRegions& r = pass.photo.regions;
    if (r.rect_Inside_Mouth.height() <= 0)
        return;
    const QImage& cut = pass.photo.images.image_Inside_Mouth_Cut;
    ImagePainter(pass).drawInto(r.rect_Inside_Mouth, pass.state.b_Whiten_Teeth ? Whiten_Teeth(cut) : cut);
}

// --- "eye colour finishing": where the marked grey eye is bright (the white of the eye,
// reflections) the colour fill gives way to the eye's own colour again.

QImage eyeWithBrightPartsRestored(const QImage& working, const QImage& greyEye, const QImage& colouredEye,
                                  const QRectF& rect, double height)
{
    if (greyEye.isNull())
        return {};
    QImage area = makePicture(greyEye.size());
    QPainter(&area).drawImage(QRectF(QPointF(0, 0), QSizeF(area.size())), working, flipped(rect, height));
    return imageReplaceGreenWithOriginal(imageReplaceWhiteWithTransparent(greyEye), area, colouredEye);
}

void finishEyeColour(CompositorPass& pass)
{
    const double height = pass.height();
    const FaceRegions& r = pass.photo.regions;
    const RegionImages& i = pass.photo.images;
    const QImage left = eyeWithBrightPartsRestored(pass.working, i.image_Eye_Left_Black_White,
                                                   i.image_Eye_Left_Colored, r.rect_Eye_Left, height);
    const QImage right = eyeWithBrightPartsRestored(pass.working, i.image_Eye_Right_Black_White,
                                                    i.image_Eye_Right_Colored, r.rect_Eye_Right, height);
    ImagePainter p(pass);
    p.drawInto(r.rect_Eye_Left, left);
    p.drawInto(r.rect_Eye_Right, right);
}

// --- "wrinkle removal": the face skin blurred; the whole spread trimmed equally on
// both sides is the blur cropped to the cut.

void removeWrinkles(CompositorPass& pass)
{
    const QImage& cut = pass.photo.images.image_Face_Skin_Cut;
    const std::uint64_t level = pass.state.u_Remove_Wrinkles_Level;
    const QImage& skin = pass.memos.wrinkleFreeSkin.get(
        {cut.cacheKey(), level}, [&](QImage& blurred) { gaussianBlurCropped(cut, blurred, pass.scaled(float(level))); });
    ImagePainter(pass).drawInto(pass.photo.regions.rect_Face_Skin, skin);
}

// --- "widen eyes": each eye stretched horizontally by the level in percent,
// centred on its rectangle. The height comes from the unstretched width
// through the aspect, so it stays the height up to rounding.

QRectF widenedRect(const QRectF& r, std::uint64_t level)
{
    const double f = single(1.0 + double(level) / 100.0);
    const double aspect = single(r.width() / r.height());
    const double width = r.width() * f, height = r.width() / aspect;
    return {r.x() - (width - r.width()) * 0.5, r.y() - (height - r.height()) * 0.5, width, height};
}

void widenEyes(CompositorPass& pass)
{
    const double height = pass.height();
    const QRectF left = pass.photo.regions.rect_Full_Eye_Left, right = pass.photo.regions.rect_Full_Eye_Right;
    const QImage leftEye = cutOut(pass.working, left, height), rightEye = cutOut(pass.working, right, height);
    ImagePainter p(pass);
    p.drawInto(widenedRect(left, pass.state.u_Widen_Eyes_Level), leftEye);
    p.drawInto(widenedRect(right, pass.state.u_Widen_Eyes_Level), rightEye);
}

// --- "eye shadow": the lids filled and blurred.

void paintEyeShadow(CompositorPass& pass)
{
    const EditingState& s = pass.state;
    const QPainterPath left = flipped(pass.photo.regions.path_Eye_Lid_Left, pass.height());
    const QPainterPath right = flipped(pass.photo.regions.path_Eye_Lid_Right, pass.height());
    const QColor colour = colourOf(s.color_Eyeshadow, s.f_Color_Eyeshadow_Transparency);
    blurredLayerOver(pass, left.boundingRect() | right.boundingRect(), pass.scaled(s.f_Eyeshadow_Blur_Level), 0,
                     [&](QPainter& layer) {
                         layer.fillPath(left, colour);
                         layer.fillPath(right, colour);
                     });
}

// --- "cheeks" and "under-eye handles": blush and the handles the mouse
// aims at.

QPointF percentOf(QPointF imagePoint, QSizeF imgSize)
{
    return singlePoint(imagePoint.x() * 100 / imgSize.width(), imagePoint.y() * 100 / imgSize.height());
}

// A handle: the small green square centred on an image-space point.
QRectF handleSquare(QPointF centre, QSizeF imgSize)
{
    const double s = std::max(imgSize.width(), imgSize.height()) / 300;
    return {centre.x() - s, centre.y() - s, 2 * s, 2 * s};
}

void fillHandle(ImagePainter& p, const QRectF& square)
{
    QPainterPath path;
    path.addRect(square);
    p.fillImagePath(path, Qt::green);
}

void paintCheekHandles(ImagePainter& p, const QRectF& area, const std::array<QRectF, 4>& squares)
{
    QPainterPath outline;
    outline.addRect(area);
    p.setPen(QPen(Qt::blue, 1));
    p.setBrush(Qt::NoBrush);
    p.strokeImagePath(outline);
    for (const QRectF& square : squares)
        fillHandle(p, square);
}

// Two circles: the outer colour on the circle of radius 510 about the
// layer's middle, the make-up colour on a circle of radius 5 at the make-up
// centre (on a layer of 1024 pixels; a smaller layer for a shrunk picture
// has all of it, blur included, in proportion). Nothing is painted beyond
// either circle.
QImage cheekLayer(const CheekLayerKey& key)
{
    // The centre counts y from the top of the area; the gradient is laid out
    // in the layer's y-up image space, the picture has y down. Settings files
    // and the circle control give 0 to 100; anything else would only send
    // the gradient's focus to infinity.
    const double k = double(key.size) / kCheekLayerSize;
    QImage layer = makePicture({key.size, key.size});
    const QPointF middle(512 * k, 512 * k);
    const QPointF inArea(std::clamp(key.centre.x(), 0.0, 100.0), std::clamp(key.centre.y(), 0.0, 100.0));
    const QPointF makeUp = flipped(QPointF(inArea.x() * key.size / 100, (100 - inArea.y()) * key.size / 100), key.size);
    {
        QPainter p(&layer);
        p.setRenderHint(QPainter::Antialiasing);
        QRadialGradient gradient(middle, 510 * k, makeUp, 5 * k);
        gradient.setColorAt(0, colourOf(key.inner, key.inner.a));
        gradient.setColorAt(1, colourOf(key.outer, key.outer.a));
        p.setPen(Qt::NoPen);
        p.setBrush(gradient);
        p.drawEllipse(middle, 510 * k, 510 * k);
        p.setCompositionMode(QPainter::CompositionMode_Clear);
        p.drawEllipse(makeUp, 5 * k, 5 * k);
    }
    return imageBlurCheek(layer, float(key.blur * k));
}

// A shrunk picture draws the blush over a few hundred pixels at most: its
// layer need not be larger than that.
int cheekLayerSize(const CompositorPass& pass)
{
    return std::clamp(int(std::ceil(kCheekLayerSize / pass.pixelScale)), 128, kCheekLayerSize);
}

void paintCheeks(CompositorPass& pass)
{
    const EditingState& s = pass.state;
    const int size = cheekLayerSize(pass);
    const CheekLayerKey leftKey{s.color_Color_Cheeks_1, s.color_Color_Cheeks_2, s.pt_MakeUp_Center_Left,
                                s.f_Cheeks_Blur_Level_Left, size};
    const CheekLayerKey rightKey{s.color_Color_Cheeks_1_Right, s.color_Color_Cheeks_2, s.pt_MakeUp_Center_Right,
                                 s.f_Cheeks_Blur_Level_Right, size};
    // The two layers are independent: when both are new each side is made on
    // its own core; one alone spreads its blur over both.
    const QImage* layers[2] = {};
    const auto makeSides = [&](const cv::Range& sides) {
        for (int side = sides.start; side < sides.end; ++side) {
            const CheekLayerKey& key = side == 0 ? leftKey : rightKey;
            Memo<CheekLayerKey>& memo = side == 0 ? pass.memos.cheekLeft : pass.memos.cheekRight;
            layers[side] = &memo.get(key, [&](QImage& layer) { layer = cheekLayer(key); });
        }
    };
    if (pass.memos.cheekLeft.holds(leftKey) || pass.memos.cheekRight.holds(rightKey))
        makeSides(cv::Range(0, 2));
    else
        cv::parallel_for_(cv::Range(0, 2), makeSides);
    // Each side is finished, handles included, before the next is laid over
    // it: where the areas overlap, the right blush covers the left handles.
    ImagePainter p(pass);
    const double opacity = std::clamp(1.0 - double(s.f_Color_Cheeks_Transparency), 0.0, 1.0);
    const auto finishSide = [&](const QImage& blush, const QRectF& area, const std::array<QRectF, 4>& squares) {
        p.setOpacity(opacity);
        p.drawInto(area, blush);
        p.setOpacity(1);
        if (s.b_Activated_Cheeks_Reposition)
            paintCheekHandles(p, area, squares);
    };
    const Handles& h = pass.handles;
    finishSide(*layers[0], pass.reshaping.rect_Cheek_Left_Area_To_Paint, h.rectPointLeft);
    finishSide(*layers[1], pass.reshaping.rect_Cheek_Right_Area_To_Paint, h.rectPointRight);
}

void paintUnderEyeHandles(CompositorPass& pass)
{
    ImagePainter p(pass);
    for (const auto* squares : {&pass.handles.rectPointEyeLeft, &pass.handles.rectPointEyeRight})
        for (const QRectF& square : *squares)
            if (!square.isNull())
                fillHandle(p, square);
}

} // namespace

Handles handlesOf(const Reshaping& reshaping, const EditingState& s, QSizeF imgSize)
{
    Handles h;
    const auto cheek = [&](const QRectF& area, std::array<QPointF, 4>& percent, std::array<QRectF, 4>& squares) {
        const std::array<QPointF, 4> corners{area.topLeft(), area.topRight(), area.bottomLeft(), area.bottomRight()};
        for (size_t i = 0; i < 4; ++i) { // image space: "top" is the lower y
            percent[i] = percentOf(corners[i], imgSize);
            squares[i] = handleSquare(corners[i], imgSize);
        }
    };
    if (s.b_Apply_Cheeks && s.b_Activated_Cheeks_Reposition) {
        cheek(reshaping.rect_Cheek_Left_Area_To_Paint, h.pointPercenteLeft, h.rectPointLeft);
        cheek(reshaping.rect_Cheek_Right_Area_To_Paint, h.pointPercenteRight, h.rectPointRight);
    }
    const auto underEye = [&](const PointList& points, std::array<QPointF, 6>& percent, std::array<QRectF, 6>& squares) {
        for (size_t i = 0; i < 6 && i < size_t(points.size()); ++i) {
            const QPointF point = flipped(points[qsizetype(i)], imgSize.height());
            percent[i] = percentOf(point, imgSize);
            squares[i] = handleSquare(point, imgSize);
        }
    };
    if (s.b_Eyes_Darken && s.b_Activated_Darken_Eyes_Reposition) {
        underEye(reshaping.array_Eye_Darken_Left_Points, h.pointPercenteEyeLeft, h.rectPointEyeLeft);
        underEye(reshaping.array_Eye_Darken_Right_Points, h.pointPercenteEyeRight, h.rectPointEyeRight);
    }
    return h;
}

namespace {

using S = EditingState;

const CompositorStep kSteps[] = {
    {"photo and skin smoothing", {}, startFromPhoto,
     "every effect paints on the photo; the smoothed face covers the whole picture, so it is the base",
     &S::b_Face_Skin_Smooth},
    {"lips mask", {&S::b_Color_Lips}, paintLipsMask,
     "a grey, brighter copy of the lips under their colour keeps their light and shade"},
    {"eye colour", {&S::b_Color_Eyes}, paintEyeColour,
     "the grey iris and the colour over it; the eye colour finishing gives the bright parts back"},
    {"lips colour", {&S::b_Color_Lips}, paintLipsColour, "over the lips mask"},
    {"under-eye darkening", {&S::b_Eyes_Darken}, darkenEyes, "on the face as it is before the eyes are finished"},
    {"mouth interior", {}, restoreMouthInterior,
     "the untouched or whitened teeth cover what the lips steps painted inside an open mouth", &S::b_Whiten_Teeth},
    {"eye colour finishing", {&S::b_Color_Eyes}, finishEyeColour,
     "needs the colour fill of its own earlier step; restores the whites and reflections"},
    {"wrinkle removal", {&S::b_Remove_Wrinkles}, removeWrinkles, "lays the blurred skin over everything painted on the face"},
    {"widen eyes", {&S::b_Widen_Eyes}, widenEyes, "stretches the eyes as they now look, colour included"},
    {"eye shadow", {&S::b_Eye_Eyeshadow}, paintEyeShadow, "on the lids of the widened eyes"},
    {"cheeks", {&S::b_Apply_Cheeks}, paintCheeks,
     "blush over the finished face, each side with its handles before the next"},
    {"under-eye handles", {&S::b_Eyes_Darken, &S::b_Activated_Darken_Eyes_Reposition}, paintUnderEyeHandles,
     "last, so nothing covers the handles the mouse aims at"},
};

} // namespace

std::span<const CompositorStep> compositorSteps()
{
    return kSteps;
}
