#pragma once

#include <QImage>
#include <QSizeF>

// The one picture form of the program, used for display and for every pixel
// operation alike: bytes R, G, B, A in that order, colour premultiplied by
// alpha, 4 × width bytes per row with no padding.
constexpr QImage::Format kPictureFormat = QImage::Format_RGBA8888_Premultiplied;

// A transparent picture (all bytes zero) of the given size.
QImage makePicture(QSize size);

// The same pixels in picture form. Shares the data when the image already
// is in that form; a null image stays null.
QImage toPicture(const QImage& image);

// A new picture of exactly `size` (rounded to whole pixels) holding the whole
// image stretched to fill it; the aspect ratio is not kept. A size without
// area gives a null picture.
QImage Stretch_Image(const QImage& image, QSizeF size);

// Stretches horizontally only: width ceil(width × percentage / 100), the
// height unchanged.
QImage Scale_Image_Width_By_Percentage(const QImage& image, float percentage);

// Runs fn(pixel, offset) over the picture form of `image` as one flat run of
// 4-byte pixels from byte 0 to the end, and returns the changed copy. Offset k
// names the same pixel in every picture of the same size, so a loop may read
// other buffers at k. The input itself is never changed.
template <typename PixelFn>
QImage runPixelLoop(const QImage& image, PixelFn&& fn)
{
    QImage buffer = toPicture(image);
    if (buffer.isNull())
        return buffer;
    uchar* bytes = buffer.bits(); // detaches: the caller's image stays as it was
    const qsizetype size = buffer.sizeInBytes();
    for (qsizetype k = 0; k < size; k += 4)
        fn(bytes + k, k);
    return buffer;
}
