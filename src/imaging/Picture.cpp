#include "Picture.h"

#include <QtMath>

#include <new>

#include <malloc.h>

void keepMemoryOfFreedPictures()
{
    // Large blocks from the heap rather than their own mappings, and freed
    // heap memory kept up to a few hundred megabytes.
    mallopt(M_MMAP_THRESHOLD, 512 << 20);
    mallopt(M_TRIM_THRESHOLD, 512 << 20);
}

void giveBackFreedPictures()
{
    malloc_trim(0);
}

void requireAllocated(const QImage& picture, QSize size)
{
    if (picture.isNull() && !size.isEmpty())
        throw std::bad_alloc();
}

QImage makePicture(QSize size)
{
    QImage picture(size, kPictureFormat);
    requireAllocated(picture, size);
    picture.fill(Qt::transparent);
    return picture;
}

QImage copied(const QImage& picture, const QRect& area)
{
    const QImage copy = area.isNull() ? picture.copy() : picture.copy(area);
    requireAllocated(copy, area.isNull() ? picture.size() : area.size());
    return copy;
}

QImage toPicture(const QImage& image)
{
    if (image.isNull() || image.format() == kPictureFormat)
        return image;
    QImage picture = image.convertToFormat(kPictureFormat);
    requireAllocated(picture, image.size());
    return picture;
}

QImage Stretch_Image(const QImage& image, QSizeF size)
{
    const QSize pixels = size.toSize();
    if (image.isNull() || pixels.isEmpty())
        return {};
    const QImage stretched = toPicture(image).scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    requireAllocated(stretched, pixels);
    return stretched;
}

QImage Scale_Image_Width_By_Percentage(const QImage& image, float percentage)
{
    // Rounded up in double precision, then passed through single precision
    // as the size of a drawing is.
    const double width = std::ceil(double(image.width()) * double(percentage) / 100.0);
    return Stretch_Image(image, QSizeF(float(width), float(image.height())));
}
