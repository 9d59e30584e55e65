#include "RegionImages.h"

#include "FilterPrimitives.h"
#include "ImageSpace.h"
#include "Picture.h"

#include <QColorSpace>
#include <QPainter>

#include <initializer_list>
#include <vector>

namespace {

// A cut samples its source smoothly, so its area reaches this far beyond
// the rectangle: the cut then reads the same pixels as from the whole photo.
constexpr int kSamplingMargin = 2;

struct Fill {
    const QPainterPath& path;
    Qt::GlobalColor colour;
};

// The part of a mask of the photo's size that lies over `area`: the
// background, then each outline filled in turn (non-zero winding). Black
// keeps the photo, white removes it.
QImage drawMask(QRect area, double imageHeight, Qt::GlobalColor background, std::initializer_list<Fill> fills)
{
    QImage mask(area.size(), QImage::Format_Grayscale8);
    mask.fill(background);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-area.topLeft());
    painter.setTransform(imageSpaceToPicture(imageHeight), true);
    for (const Fill& fill : fills)
        painter.fillPath(fill.path, fill.colour);
    return mask;
}

// The whole-pixel part of the photo around an image-space rectangle that a
// cut of it reads.
QRect sampledArea(const QRectF& rect, double imageHeight, QSize photoSize)
{
    const int m = kSamplingMargin;
    return flipped(rect, imageHeight).toAlignedRect().adjusted(-m, -m, m, m).intersected(QRect({}, photoSize));
}

QImage cutFromArea(const MaskedArea& masked, const QRectF& rect, double imageHeight)
{
    const QSize size = rect.size().toSize();
    if (size.isEmpty() || masked.picture.isNull())
        return {};
    QImage cut = makePicture(size);
    QPainter painter(&cut);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(QRectF(QPointF(0, 0), QSizeF(size)), masked.picture,
                      flipped(rect, imageHeight).translated(-masked.area.topLeft()));
    return cut;
}

// The photo masked over the area a cut of `rect` reads; masking works pixel
// by pixel, so the area holds exactly what a full-size masked photo has.
MaskedArea masked(const QImage& photo, QSizeF imgSize, const QRectF& rect, Qt::GlobalColor background,
                  std::initializer_list<Fill> fills)
{
    const double height = imgSize.height();
    const QRect area = sampledArea(rect, height, photo.size());
    if (area.isEmpty())
        return MaskedArea{{}, area};
    return MaskedArea{maskImage(copied(photo, area), drawMask(area, height, background, fills)), area};
}

} // namespace

namespace RegionImages {

QImage faceSkinCut(const QImage& photo, QSizeF imgSize, const FaceRegions& r)
{
    const MaskedArea image_Face_Skin = masked(photo, imgSize, r.rect_Face_Skin, Qt::white,
                                              {{r.path_Face, Qt::black},
                                               {r.path_Eye_Left, Qt::white},
                                               {r.path_Eye_Right, Qt::white},
                                               {r.path_Lips, Qt::white},
                                               {r.path_Nose, Qt::white}});
    return cutFromArea(image_Face_Skin, r.rect_Face_Skin, imgSize.height());
}

MaskedArea faceFullPicture(const QImage& photo, QSizeF imgSize, const FaceRegions& r)
{
    return masked(photo, imgSize, r.rect_Full_Eye_Left | r.rect_Full_Eye_Right | r.rect_Lips, Qt::black,
                  {{r.path_Eye_Left, Qt::white}, {r.path_Eye_Right, Qt::white}, {r.path_Lips, Qt::white}});
}

// Each face's own masked area laid into a copy of the whole photo: one
// mask over their whole span would cost a photo-sized mask, and a patch
// over most rows a copy of each row every time one is read.
MaskedArea facesFullPicture(const QImage& photo, QSizeF imgSize, const std::vector<const FaceRegions*>& faces)
{
    if (faces.size() == 1)
        return faceFullPicture(photo, imgSize, *faces.front());
    MaskedArea all{copied(photo, photo.rect()), photo.rect()};
    QPainter painter(&all.picture);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const FaceRegions* r : faces) {
        const MaskedArea one = faceFullPicture(photo, imgSize, *r);
        painter.drawImage(one.area.topLeft(), one.picture);
    }
    return all;
}

QImage lipsBlackWhite(const QImage& photo, QSizeF imgSize, const FaceRegions& r)
{
    const MaskedArea image_Lips =
        masked(photo, imgSize, r.rect_Lips, Qt::white, {{r.path_Lips, Qt::black}, {r.path_Inside_Mouth, Qt::white}});
    return imageBlackAndWhite(cutFromArea(image_Lips, r.rect_Lips, imgSize.height()));
}

QImage insideMouthCut(const QImage& photo, QSizeF imgSize, const FaceRegions& r)
{
    const MaskedArea image_Inside_Mouth =
        masked(photo, imgSize, r.rect_Inside_Mouth, Qt::white, {{r.path_Inside_Mouth, Qt::black}});
    return cutFromArea(image_Inside_Mouth, r.rect_Inside_Mouth, imgSize.height());
}

Eye eye(const QImage& photo, QSizeF imgSize, const QPainterPath& insideEye, const QRectF& rect)
{
    const MaskedArea image_Eye = masked(photo, imgSize, rect, Qt::white, {{insideEye, Qt::black}});
    Eye eye;
    eye.colored = cutFromArea(image_Eye, rect, imgSize.height());
    eye.blackWhite = imageBlackAndWhite(eye.colored);
    return eye;
}

QImage noseCut(const QImage& photo, QSizeF imgSize, const FaceRegions& r)
{
    const MaskedArea image_Nose = masked(photo, imgSize, r.rect_Nose, Qt::white, {{r.path_Nose, Qt::black}});
    return cutFromArea(image_Nose, r.rect_Nose, imgSize.height());
}

} // namespace RegionImages

QColor MaskedArea::pixelColor(QPoint photoPixel) const
{
    return area.contains(photoPixel) ? picture.pixelColor(photoPixel - area.topLeft()) : QColor(Qt::transparent);
}

QImage cutOut(const QImage& picture, const QRectF& rect, double imageHeight)
{
    return cutFromArea({picture, picture.rect()}, rect, imageHeight);
}
