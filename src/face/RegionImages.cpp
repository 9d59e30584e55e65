#include "RegionImages.h"

#include "FilterPrimitives.h"
#include "ImageSpace.h"
#include "Picture.h"

#include <QColorSpace>
#include <QPainter>

#include <initializer_list>

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
QRect areaAround(const QRectF& rect, double imageHeight, QSize photoSize)
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

} // namespace

QColor MaskedArea::pixelColor(QPoint photoPixel) const
{
    return area.contains(photoPixel) ? picture.pixelColor(photoPixel - area.topLeft()) : QColor(Qt::transparent);
}

QImage cutOut(const QImage& picture, const QRectF& rect, double imageHeight)
{
    return cutFromArea({picture, picture.rect()}, rect, imageHeight);
}

RegionImages RegionImages::build(const QImage& photo, QSizeF imgSize, const FaceRegions& r)
{
    const double height = imgSize.height();
    // Each region is masked over the area its cut reads; masking works pixel
    // by pixel, so the area holds exactly what a full-size masked photo has.
    auto masked = [&](const QRectF& rect, Qt::GlobalColor background, std::initializer_list<Fill> fills) {
        const QRect area = areaAround(rect, height, photo.size());
        if (area.isEmpty())
            return MaskedArea{{}, area};
        return MaskedArea{maskImage(copied(photo, area), drawMask(area, height, background, fills)), area};
    };
    RegionImages images;
    images.image_Face_Skin = masked(r.rect_Face_Skin, Qt::white,
                                    {{r.path_Face, Qt::black},
                                     {r.path_Eye_Left, Qt::white},
                                     {r.path_Eye_Right, Qt::white},
                                     {r.path_Lips, Qt::white},
                                     {r.path_Nose, Qt::white}});
    images.image_Face_Skin_Cut = cutFromArea(images.image_Face_Skin, r.rect_Face_Skin, height);

    // The full picture differs from the photo only around the eyes and lips.
    images.image_Face_Full_Picture =
        masked(r.rect_Full_Eye_Left | r.rect_Full_Eye_Right | r.rect_Lips, Qt::black,
               {{r.path_Eye_Left, Qt::white}, {r.path_Eye_Right, Qt::white}, {r.path_Lips, Qt::white}});

    images.image_Lips = masked(r.rect_Lips, Qt::white, {{r.path_Lips, Qt::black}, {r.path_Inside_Mouth, Qt::white}});
    images.image_Lips_Black_White = imageBlackAndWhite(cutFromArea(images.image_Lips, r.rect_Lips, height));

    images.image_Inside_Mouth = masked(r.rect_Inside_Mouth, Qt::white, {{r.path_Inside_Mouth, Qt::black}});
    images.image_Inside_Mouth_Cut = cutFromArea(images.image_Inside_Mouth, r.rect_Inside_Mouth, height);

    images.image_Eye_Left = masked(r.rect_Eye_Left, Qt::white, {{r.path_Inside_Eye_Left, Qt::black}});
    images.image_Eye_Left_Colored = cutFromArea(images.image_Eye_Left, r.rect_Eye_Left, height);
    images.image_Eye_Left_Black_White = imageBlackAndWhite(images.image_Eye_Left_Colored);
    images.image_Eye_Right = masked(r.rect_Eye_Right, Qt::white, {{r.path_Inside_Eye_Right, Qt::black}});
    images.image_Eye_Right_Colored = cutFromArea(images.image_Eye_Right, r.rect_Eye_Right, height);
    images.image_Eye_Right_Black_White = imageBlackAndWhite(images.image_Eye_Right_Colored);

    images.image_Nose = masked(r.rect_Nose, Qt::white, {{r.path_Nose, Qt::black}});
    images.image_Nose_Cut = cutFromArea(images.image_Nose, r.rect_Nose, height);
    return images;
}
