#pragma once

#include "FaceRegions.h"

#include <QImage>
#include <QSizeF>

// The pictures of the face regions the effects paint with, cut once per
// photo. A masked picture is the whole photo with everything outside its
// region transparent; a cut is the part of a masked picture inside the
// region's rectangle, at the rectangle's size; a grey version is a cut made
// black and white.
struct RegionImages {
    QImage image_Face_Skin;          // the face outline without eyes, lips and nose
    QImage image_Face_Skin_Cut;      // by rect_Face_Skin
    QImage image_Face_Full_Picture;  // the whole photo without eyes and lips
    QImage image_Lips;               // the lips without the inside of the mouth
    QImage image_Lips_Black_White;   // grey cut by rect_Lips
    QImage image_Inside_Mouth;
    QImage image_Inside_Mouth_Cut;   // by rect_Inside_Mouth
    QImage image_Eye_Left;           // the inside of the eye: the iris area
    QImage image_Eye_Right;
    QImage image_Eye_Left_Colored;   // by rect_Eye_Left, the inside-eye rectangle
    QImage image_Eye_Right_Colored;
    QImage image_Eye_Left_Black_White;
    QImage image_Eye_Right_Black_White;
    QImage image_Nose;
    QImage image_Nose_Cut;           // by rect_Nose

    // Cuts every picture from the photo and its regions.
    static RegionImages build(const QImage& img_Basic, QSizeF imgSize, const FaceRegions& regions);
};

// A cut: the part of `picture` inside the image-space rectangle `rect`, at
// the rectangle's size (rounded to whole pixels).
QImage cutOut(const QImage& picture, const QRectF& rect, double imageHeight);
