#pragma once

#include "FaceRegions.h"

#include <QImage>
#include <QPoint>
#include <QSizeF>

// A region of the photo masked: the photo with everything outside the region
// transparent, kept only over `area`, the part of the photo around the
// region's rectangle (outside it the masked photo would be transparent or,
// for the full picture, the photo itself). Made per region instead of at
// the photo's full size, so opening a camera photo takes a bounded amount
// of memory.
struct MaskedArea {
    QImage picture; // the masked photo over `area`
    QRect area;     // in photo pixels, y down

    // The masked photo's pixel at a photo position; transparent outside `area`.
    QColor pixelColor(QPoint photoPixel) const;
};

// The pictures of the face regions the effects paint with, cut once per
// photo. A cut is the part of a masked photo inside the region's rectangle,
// at the rectangle's size; a grey version is a cut made black and white.
struct RegionImages {
    MaskedArea image_Face_Skin;      // the face outline without eyes, lips and nose
    QImage image_Face_Skin_Cut;      // by rect_Face_Skin
    // The whole photo without eyes and lips: the photo but over `area`,
    // where it is `picture`.
    MaskedArea image_Face_Full_Picture;
    MaskedArea image_Lips;           // the lips without the inside of the mouth
    QImage image_Lips_Black_White;   // grey cut by rect_Lips
    MaskedArea image_Inside_Mouth;
    QImage image_Inside_Mouth_Cut;   // by rect_Inside_Mouth
    MaskedArea image_Eye_Left;       // the inside of the eye: the iris area
    MaskedArea image_Eye_Right;
    QImage image_Eye_Left_Colored;   // by rect_Eye_Left, the inside-eye rectangle
    QImage image_Eye_Right_Colored;
    QImage image_Eye_Left_Black_White;
    QImage image_Eye_Right_Black_White;
    MaskedArea image_Nose;
    QImage image_Nose_Cut;           // by rect_Nose

    // Cuts every picture from the photo and its regions.
    static RegionImages build(const QImage& img_Basic, QSizeF imgSize, const FaceRegions& regions);
};

// A cut: the part of `picture` inside the image-space rectangle `rect`, at
// the rectangle's size (rounded to whole pixels).
QImage cutOut(const QImage& picture, const QRectF& rect, double imageHeight);
