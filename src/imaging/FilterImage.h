#pragma once

#include <QImage>
#include <QRect>

// An intermediate result of a filter: a picture and the rectangle it covers in
// the pixel coordinates of the picture it was made from. A blur spreads the
// picture beyond its edges, so its extent is larger than the input's and its
// origin goes negative.
struct FilterImage {
    QImage image; // picture form; image.size() == extent.size()
    QRect extent;

    // A picture wrapped as a filter image covering (0, 0, width, height).
    static FilterImage fromPicture(const QImage& picture);
};

// Renders a filter image over exactly its own extent: the result has the
// extent's size. An empty filter image renders as a null picture.
QImage imageFromCIImage(const FilterImage& filterImage);
