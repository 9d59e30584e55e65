#pragma once

#include <vector>

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

// The pictures of the face regions the effects paint with, each made from
// the photo and its regions when an effect first needs it (the effect keeps
// it for as long as the photo is open). A cut is the part of a masked photo
// inside the region's rectangle, at the rectangle's size; a grey version is
// a cut made black and white.
namespace RegionImages {

// image_Face_Skin_Cut: the face outline without eyes, lips and nose, cut by
// rect_Face_Skin.
QImage faceSkinCut(const QImage& photo, QSizeF imgSize, const FaceRegions& regions);

// image_Face_Full_Picture: the whole photo without eyes and lips, kept only
// over the area where it differs from the photo.
MaskedArea faceFullPicture(const QImage& photo, QSizeF imgSize, const FaceRegions& regions);
// The same without the eyes and lips of every one of `faces`.
MaskedArea facesFullPicture(const QImage& photo, QSizeF imgSize, const std::vector<const FaceRegions*>& faces);

// image_Lips_Black_White: the lips without the inside of the mouth, grey.
QImage lipsBlackWhite(const QImage& photo, QSizeF imgSize, const FaceRegions& regions);

// image_Inside_Mouth_Cut, by rect_Inside_Mouth.
QImage insideMouthCut(const QImage& photo, QSizeF imgSize, const FaceRegions& regions);

// An eye's inside (the iris area) cut by its inside-eye rectangle
// (image_Eye_Left_Colored) and its grey version (image_Eye_Left_Black_White);
// the same for the right eye.
struct Eye {
    QImage colored, blackWhite;
};
Eye eye(const QImage& photo, QSizeF imgSize, const QPainterPath& insideEye, const QRectF& rect);

// image_Nose_Cut, by rect_Nose: part of the region set, though no effect
// paints with it, so it is made only when asked for.
QImage noseCut(const QImage& photo, QSizeF imgSize, const FaceRegions& regions);

} // namespace RegionImages

// A cut: the part of `picture` inside the image-space rectangle `rect`, at
// the rectangle's size (rounded to whole pixels).
QImage cutOut(const QImage& picture, const QRectF& rect, double imageHeight);
