#pragma once

#include "Picture.h"

#include <QImage>

#include <random>

// The size every issue measures against: a 12-megapixel photo.
inline constexpr QSize k12Megapixels{4000, 3000};

// A picture of the given size with noise in every byte, so no operation can
// take a shortcut on uniform data.
inline QImage noisePicture(QSize size)
{
    QImage picture(size, QImage::Format_RGBA8888);
    std::mt19937 random(7);
    auto* words = reinterpret_cast<quint32*>(picture.bits());
    for (qsizetype i = 0; i < picture.sizeInBytes() / 4; ++i)
        words[i] = random() | 0xff000000u; // opaque, so premultiplying changes nothing
    return toPicture(picture);
}
