#include "Picture.h"

#include <QtMath>

QImage makePicture(QSize size)
{
    QImage picture(size, kPictureFormat);
    picture.fill(Qt::transparent);
    return picture;
}

QImage toPicture(const QImage& image)
{
    if (image.isNull() || image.format() == kPictureFormat)
        return image;
    return image.convertToFormat(kPictureFormat);
}

QImage Stretch_Image(const QImage& image, QSizeF size)
{
    const QSize pixels = size.toSize();
    if (image.isNull() || pixels.isEmpty())
        return {};
    return toPicture(image).scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage Scale_Image_Width_By_Percentage(const QImage& image, float percentage)
{
    // Rounded up in double precision, then passed through single precision
    // as the size of a drawing is.
    const double width = std::ceil(double(image.width()) * double(percentage) / 100.0);
    return Stretch_Image(image, QSizeF(float(width), float(image.height())));
}
