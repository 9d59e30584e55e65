#include "Compositor.h"

#include "FilterPrimitives.h"
#include "ImageSpace.h"
#include "Picture.h"
#include "SinglePrecision.h"
#include "TRCIHighPassSkinSmoothing.h"

#include <QPainter>
#include <QRadialGradient>

#include <opencv2/core/utility.hpp>

#include <cmath>
#include <cstring>
#include <exception>
#include <new>

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

// A painter on a picture that takes image-space shapes.
struct ImagePainter : QPainter {
    ImagePainter(QImage& picture, double imageHeight)
        : QPainter(&picture)
        , height(imageHeight)
    {
        setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    }

    void drawInto(const QRectF& imageRect, const QImage& image)
    {
        if (!image.isNull() && imageRect.width() > 0 && imageRect.height() > 0)
            drawImage(flipped(imageRect, height), image);
    }

    void fillImagePath(const QPainterPath& path, const QColor& colour)
    {
        fillPath(flipped(path, height), colour);
    }

    double height;
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
void blurredLayerOver(QImage& working, const QRectF& shapeBounds, float blur, double lineWidth, PaintFn&& paint)
{
    const int reach = int(std::ceil(3.0f * std::max(blur, 0.0f)) + std::ceil(lineWidth)) + 2;
    const QRect area = areaAround(shapeBounds, reach, working);
    if (area.isEmpty())
        return;
    QImage layer = makePicture(area.size());
    {
        QPainter painter(&layer);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(-area.topLeft());
        paint(painter);
    }
    gaussianBlurCropped(layer, layer, blur);
    QPainter(&working).drawImage(area.topLeft(), layer);
}

void paintLipsMask(ImagePainter& p, const OpenedPhoto& photo)
{
    p.drawInto(photo.regions.rect_Lips, photo.images.image_Lips_Black_White);
}

void paintEyeMasks(ImagePainter& p, const OpenedPhoto& photo)
{
    p.drawInto(photo.regions.rect_Eye_Left, photo.images.image_Eye_Left_Black_White);
    p.drawInto(photo.regions.rect_Eye_Right, photo.images.image_Eye_Right_Black_White);
}

void paintEyeColour(ImagePainter& p, const OpenedPhoto& photo, const EditingState& s)
{
    const QColor colour = colourOf(s.color_Color_Eyes, s.f_Color_Eyes_Transparency);
    p.fillImagePath(photo.regions.path_Inside_Eye_Left, colour);
    p.fillImagePath(photo.regions.path_Inside_Eye_Right, colour);
}

void paintLipsColour(ImagePainter& p, const OpenedPhoto& photo, const EditingState& s)
{
    p.fillImagePath(photo.regions.path_Lips, colourOf(s.color_Color_Lips, s.f_Color_Lips_Transparency));
}

void darkenEyes(QImage& working, const OpenedPhoto& photo, const EditingState& s)
{
    const double height = photo.imgSize.height();
    const QPainterPath left = flipped(underEyeCurve(photo.regions.array_Eye_Darken_Left_Points, height, true), height);
    const QPainterPath right = flipped(underEyeCurve(photo.regions.array_Eye_Darken_Right_Points, height, false), height);
    const QColor ink = QColor::fromRgbF(0, 0, 0, std::clamp(1.0f - s.f_Darken_Eyes_Transparency, 0.0f, 1.0f));
    blurredLayerOver(working, left.boundingRect() | right.boundingRect(), s.f_Darken_Eyes_Blur_Level,
                     s.f_Darken_Eyes_Line_Width, [&](QPainter& layer) {
                         layer.setPen(QPen(ink, s.f_Darken_Eyes_Line_Width));
                         layer.drawPath(left);
                         layer.drawPath(right);
                     });
}

// The untouched mouth interior always goes back over what the lips steps
// painted inside an open mouth; whitened when asked.
void restoreMouthInterior(ImagePainter& p, const OpenedPhoto& photo, const EditingState& s)
{
    if (photo.regions.rect_Inside_Mouth.height() <= 0)
        return;
    const QImage& cut = photo.images.image_Inside_Mouth_Cut;
    p.drawInto(photo.regions.rect_Inside_Mouth, s.b_Whiten_Teeth ? Whiten_Teeth(cut) : cut);
}

// Where the marked grey eye is bright (the white of the eye, reflections)
// the colour fill gives way to the eye's own colour again.
QImage eyeWithBrightPartsRestored(const QImage& working, const QImage& greyEye, const QImage& colouredEye,
                                  const QRectF& rect, double height)
{
    if (greyEye.isNull())
        return {};
    QImage area = makePicture(greyEye.size());
    QPainter(&area).drawImage(QRectF(QPointF(0, 0), QSizeF(area.size())), working, flipped(rect, height));
    return imageReplaceGreenWithOriginal(imageReplaceWhiteWithTransparent(greyEye), area, colouredEye);
}

void finishEyeColour(QImage& working, const OpenedPhoto& photo)
{
    const double height = photo.imgSize.height();
    const FaceRegions& r = photo.regions;
    const RegionImages& i = photo.images;
    const QImage left = eyeWithBrightPartsRestored(working, i.image_Eye_Left_Black_White, i.image_Eye_Left_Colored,
                                                   r.rect_Eye_Left, height);
    const QImage right = eyeWithBrightPartsRestored(working, i.image_Eye_Right_Black_White,
                                                    i.image_Eye_Right_Colored, r.rect_Eye_Right, height);
    ImagePainter p(working, height);
    p.drawInto(r.rect_Eye_Left, left);
    p.drawInto(r.rect_Eye_Right, right);
}

// The eye stretched horizontally by the level in percent, centred on its
// rectangle. The height comes from the unstretched width through the
// aspect, so it stays the height up to rounding.
QRectF widenedRect(const QRectF& r, std::uint64_t level)
{
    const double f = single(1.0 + double(level) / 100.0);
    const double aspect = single(r.width() / r.height());
    const double width = r.width() * f, height = r.width() / aspect;
    return {r.x() - (width - r.width()) * 0.5, r.y() - (height - r.height()) * 0.5, width, height};
}

void widenEyes(QImage& working, const OpenedPhoto& photo, const EditingState& s)
{
    const double height = photo.imgSize.height();
    const QRectF left = photo.regions.rect_Full_Eye_Left, right = photo.regions.rect_Full_Eye_Right;
    const QImage leftEye = cutOut(working, left, height), rightEye = cutOut(working, right, height);
    ImagePainter p(working, height);
    p.drawInto(widenedRect(left, s.u_Widen_Eyes_Level), leftEye);
    p.drawInto(widenedRect(right, s.u_Widen_Eyes_Level), rightEye);
}

void paintEyeShadow(QImage& working, const OpenedPhoto& photo, const EditingState& s)
{
    const double height = photo.imgSize.height();
    const QPainterPath left = flipped(photo.regions.path_Eye_Lid_Left, height);
    const QPainterPath right = flipped(photo.regions.path_Eye_Lid_Right, height);
    const QColor colour = colourOf(s.color_Eyeshadow, s.f_Color_Eyeshadow_Transparency);
    blurredLayerOver(working, left.boundingRect() | right.boundingRect(), s.f_Eyeshadow_Blur_Level, 0,
                     [&](QPainter& layer) {
                         layer.fillPath(left, colour);
                         layer.fillPath(right, colour);
                     });
}

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

void paintCheekHandles(ImagePainter& p, const QRectF& area, QSizeF imgSize, std::array<QPointF, 4>& percent,
                       std::array<QRectF, 4>& squares)
{
    QPainterPath outline;
    outline.addRect(area);
    p.setPen(QPen(Qt::blue, 1));
    p.setBrush(Qt::NoBrush);
    p.drawPath(flipped(outline, p.height));
    const std::array<QPointF, 4> corners{area.topLeft(), area.topRight(), area.bottomLeft(), area.bottomRight()};
    for (size_t i = 0; i < 4; ++i) { // image space: "top" is the lower y
        percent[i] = percentOf(corners[i], imgSize);
        squares[i] = handleSquare(corners[i], imgSize);
        QPainterPath square;
        square.addRect(squares[i]);
        p.fillImagePath(square, Qt::green);
    }
}

void paintUnderEyeHandles(ImagePainter& p, const PointList& points, QSizeF imgSize, std::array<QPointF, 6>& percent,
                          std::array<QRectF, 6>& squares)
{
    for (size_t i = 0; i < 6 && i < size_t(points.size()); ++i) {
        const QPointF point = flipped(points[qsizetype(i)], imgSize.height());
        percent[i] = percentOf(point, imgSize);
        squares[i] = handleSquare(point, imgSize);
        QPainterPath square;
        square.addRect(squares[i]);
        p.fillImagePath(square, Qt::green);
    }
}

} // namespace

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

const QImage& Compositor::smoothedBase(const OpenedPhoto& photo, const EditingState& s)
{
    const bool smooth = s.b_Face_Skin_Smooth;
    const std::uint64_t level = smooth ? s.u_Face_Skin_Smooth_Level + 1 : 0; // 0: no smoothing
    const std::uint64_t radius = smooth ? s.u_Face_Skin_Smooth_Radius : 0;
    if (base_.picture.isNull() || base_.photoKey != photo.img_Basic.cacheKey() || base_.level != level
        || base_.radius != radius) {
        // The photo over opaque black, then the smoothed picture over all of it.
        base_ = {photo.img_Basic.cacheKey(), level, radius, 0, {}, {}, {}, copied(toPicture(photo.img_Basic))};
        if (!isOpaque(base_.picture)) {
            base_.picture.fill(Qt::black);
            drawOver(base_.picture, photo.img_Basic);
        }
        const QImage smoothed = smooth ? trc_Face_Smooth(photo.images.image_Face_Full_Picture,
                                                         s.u_Face_Skin_Smooth_Level, s.u_Face_Skin_Smooth_Radius)
                                       : QImage();
        if (smoothed.size() == base_.picture.size())
            drawOver(base_.picture, smoothed);
    }
    return base_.picture;
}

const QImage& Compositor::wrinkleFreeSkin(const OpenedPhoto& photo, const EditingState& s)
{
    if (wrinkles_.picture.isNull() || wrinkles_.photoKey != photo.img_Basic.cacheKey()
        || wrinkles_.level != s.u_Remove_Wrinkles_Level) {
        wrinkles_ = {photo.img_Basic.cacheKey(), s.u_Remove_Wrinkles_Level, 0, 0, {}, {}, {}, {}};
        // The whole spread trimmed equally on both sides is the blur cropped
        // to the cut.
        gaussianBlurCropped(photo.images.image_Face_Skin_Cut, wrinkles_.picture, float(s.u_Remove_Wrinkles_Level));
    }
    return wrinkles_.picture;
}

const QImage& Compositor::cheekLayer(Cached& cache, const RgbaColor& outer, const RgbaColor& inner, QPointF centre,
                                     float blur)
{
    if (!cache.picture.isNull() && cache.outer == outer && cache.inner == inner && cache.centre == centre
        && cache.blur == blur)
        return cache.picture;
    // Two circles: the outer colour on the circle of radius 510 about the
    // layer's middle, the make-up colour on a circle of radius 5 at the
    // make-up centre. Nothing is painted beyond either circle.
    // The centre counts y from the top of the area; the gradient is laid out
    // in the layer's y-up image space, the picture has y down.
    QImage layer = makePicture({kCheekLayerSize, kCheekLayerSize});
    const QPointF middle(512, 512);
    // Settings files and the circle control give 0 to 100; anything else
    // would only send the gradient's focus to infinity.
    const QPointF inArea(std::clamp(centre.x(), 0.0, 100.0), std::clamp(centre.y(), 0.0, 100.0));
    const QPointF makeUp = flipped({inArea.x() * 1024 / 100, (100 - inArea.y()) * 1024 / 100}, kCheekLayerSize);
    {
        QPainter p(&layer);
        p.setRenderHint(QPainter::Antialiasing);
        QRadialGradient gradient(middle, 510, makeUp, 5);
        gradient.setColorAt(0, colourOf(inner, inner.a));
        gradient.setColorAt(1, colourOf(outer, outer.a));
        p.setPen(Qt::NoPen);
        p.setBrush(gradient);
        p.drawEllipse(middle, 510, 510);
        p.setCompositionMode(QPainter::CompositionMode_Clear);
        p.drawEllipse(makeUp, 5, 5);
    }
    cache = {0, 0, 0, blur, outer, inner, centre, imageBlurCheek(layer, blur)};
    return cache.picture;
}

void Compositor::startFromPhoto(const OpenedPhoto& photo, const EditingState& state)
{
    const QImage& base = smoothedBase(photo, state);
    ensurePicture(working_, base.size());
    std::memcpy(working_.bits(), base.constBits(), size_t(base.sizeInBytes()));
}

const QImage& Compositor::compose(const OpenedPhoto& photo, const EditingState& s)
{
    handles_ = {};
    if (photo.isEmpty()) {
        working_ = QImage();
        return working_;
    }
    const double height = photo.imgSize.height();
    startFromPhoto(photo, s);
    {
        ImagePainter p(working_, height);
        if (s.b_Color_Lips)
            paintLipsMask(p, photo);
        if (s.b_Color_Eyes) {
            paintEyeMasks(p, photo);
            paintEyeColour(p, photo, s);
        }
        if (s.b_Color_Lips)
            paintLipsColour(p, photo, s);
    }
    if (s.b_Eyes_Darken)
        darkenEyes(working_, photo, s);
    {
        ImagePainter p(working_, height);
        restoreMouthInterior(p, photo, s);
    }
    if (s.b_Color_Eyes)
        finishEyeColour(working_, photo);
    if (s.b_Remove_Wrinkles)
        ImagePainter(working_, height).drawInto(photo.regions.rect_Face_Skin, wrinkleFreeSkin(photo, s));
    if (s.b_Widen_Eyes)
        widenEyes(working_, photo, s);
    if (s.b_Eye_Eyeshadow)
        paintEyeShadow(working_, photo, s);
    if (s.b_Apply_Cheeks)
        paintCheeks(photo, s);
    if (s.b_Eyes_Darken && s.b_Activated_Darken_Eyes_Reposition) {
        ImagePainter p(working_, height);
        paintUnderEyeHandles(p, photo.regions.array_Eye_Darken_Left_Points, photo.imgSize,
                             handles_.pointPercenteEyeLeft, handles_.rectPointEyeLeft);
        paintUnderEyeHandles(p, photo.regions.array_Eye_Darken_Right_Points, photo.imgSize,
                             handles_.pointPercenteEyeRight, handles_.rectPointEyeRight);
    }
    return working_;
}

const QImage* Compositor::tryCompose(const OpenedPhoto& photo, const EditingState& state, QString& failure)
{
    try {
        return &compose(photo, state);
    } catch (const std::bad_alloc&) {
        failure = "there is not enough memory for a picture of this size";
    } catch (const std::exception& error) {
        failure = QString::fromLocal8Bit(error.what());
    }
    *this = Compositor();
    return nullptr;
}

void Compositor::paintCheeks(const OpenedPhoto& photo, const EditingState& s)
{
    // The two layers are independent: each side is made on its own core.
    cv::parallel_for_(cv::Range(0, 2), [&](const cv::Range& sides) {
        for (int side = sides.start; side < sides.end; ++side) {
            if (side == 0)
                cheekLayer(cheekLeft_, s.color_Color_Cheeks_1, s.color_Color_Cheeks_2, s.pt_MakeUp_Center_Left,
                           s.f_Cheeks_Blur_Level_Left);
            else
                cheekLayer(cheekRight_, s.color_Color_Cheeks_1_Right, s.color_Color_Cheeks_2,
                           s.pt_MakeUp_Center_Right, s.f_Cheeks_Blur_Level_Right);
        }
    });
    // Each side is finished, handles included, before the next is laid over
    // it: where the areas overlap, the right blush covers the left handles.
    ImagePainter p(working_, photo.imgSize.height());
    const double opacity = std::clamp(1.0 - double(s.f_Color_Cheeks_Transparency), 0.0, 1.0);
    const auto finishSide = [&](const QImage& blush, const QRectF& area, std::array<QPointF, 4>& percent,
                                std::array<QRectF, 4>& squares) {
        p.setOpacity(opacity);
        p.drawInto(area, blush);
        p.setOpacity(1);
        if (s.b_Activated_Cheeks_Reposition)
            paintCheekHandles(p, area, photo.imgSize, percent, squares);
    };
    finishSide(cheekLeft_.picture, photo.regions.rect_Cheek_Left_Area_To_Paint, handles_.pointPercenteLeft,
               handles_.rectPointLeft);
    finishSide(cheekRight_.picture, photo.regions.rect_Cheek_Right_Area_To_Paint, handles_.pointPercenteRight,
               handles_.rectPointRight);
}
