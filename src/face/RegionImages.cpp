#include "RegionImages.h"

#include "FilterPrimitives.h"
#include "ImageSpace.h"
#include "Picture.h"

#include <QPainter>

#include <initializer_list>

namespace {

struct Fill {
    const QPainterPath& path;
    Qt::GlobalColor colour;
};

// A mask of the photo's size: the background, then each outline filled in
// turn (non-zero winding). Black keeps the photo, white removes it.
QImage drawMask(QSizeF imgSize, Qt::GlobalColor background, std::initializer_list<Fill> fills)
{
    QImage mask(imgSize.toSize(), QImage::Format_Grayscale8);
    mask.fill(background);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(imageSpaceToPicture(imgSize.height()));
    for (const Fill& fill : fills)
        painter.fillPath(fill.path, fill.colour);
    return mask;
}

} // namespace

QImage cutOut(const QImage& picture, const QRectF& rect, double imageHeight)
{
    const QSize size = rect.size().toSize();
    if (size.isEmpty())
        return {};
    QImage cut = makePicture(size);
    QPainter painter(&cut);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(QRectF(QPointF(0, 0), QSizeF(size)), picture, pictureRectOf(rect, imageHeight));
    return cut;
}

RegionImages RegionImages::build(const QImage& photo, QSizeF imgSize, const FaceRegions& r)
{
    const double height = imgSize.height();
    RegionImages images;
    auto masked = [&](Qt::GlobalColor background, std::initializer_list<Fill> fills) {
        return maskImage(photo, drawMask(imgSize, background, fills));
    };

    images.image_Face_Skin = masked(Qt::white, {{r.path_Face, Qt::black},
                                                {r.path_Eye_Left, Qt::white},
                                                {r.path_Eye_Right, Qt::white},
                                                {r.path_Lips, Qt::white},
                                                {r.path_Nose, Qt::white}});
    images.image_Face_Skin_Cut = cutOut(images.image_Face_Skin, r.rect_Face_Skin, height);
    images.image_Face_Full_Picture = masked(
        Qt::black, {{r.path_Eye_Left, Qt::white}, {r.path_Eye_Right, Qt::white}, {r.path_Lips, Qt::white}});

    images.image_Lips = masked(Qt::white, {{r.path_Lips, Qt::black}, {r.path_Inside_Mouth, Qt::white}});
    images.image_Lips_Black_White = imageBlackAndWhite(cutOut(images.image_Lips, r.rect_Lips, height));

    images.image_Inside_Mouth = masked(Qt::white, {{r.path_Inside_Mouth, Qt::black}});
    images.image_Inside_Mouth_Cut = cutOut(images.image_Inside_Mouth, r.rect_Inside_Mouth, height);

    images.image_Eye_Left = masked(Qt::white, {{r.path_Inside_Eye_Left, Qt::black}});
    images.image_Eye_Left_Colored = cutOut(images.image_Eye_Left, r.rect_Eye_Left, height);
    images.image_Eye_Left_Black_White = imageBlackAndWhite(images.image_Eye_Left_Colored);
    images.image_Eye_Right = masked(Qt::white, {{r.path_Inside_Eye_Right, Qt::black}});
    images.image_Eye_Right_Colored = cutOut(images.image_Eye_Right, r.rect_Eye_Right, height);
    images.image_Eye_Right_Black_White = imageBlackAndWhite(images.image_Eye_Right_Colored);

    images.image_Nose = masked(Qt::white, {{r.path_Nose, Qt::black}});
    images.image_Nose_Cut = cutOut(images.image_Nose, r.rect_Nose, height);
    return images;
}
