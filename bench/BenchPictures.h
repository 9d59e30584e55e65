#pragma once

#include "Picture.h"

#include <QImage>
#include <QPainter>

#include <random>

// The sizes every issue measures against: camera photos of 12 and 24
// megapixels.
inline constexpr QSize k12Megapixels{4000, 3000};
inline constexpr QSize k24Megapixels{6000, 4000};

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

// The test portrait's head and shoulders enlarged to a camera photo of
// `size`. The whole portrait enlarged shows dlib a second "face" on the
// mission patch; this crop holds exactly one.
inline QImage portraitPhoto(QSize size)
{
    const QImage portrait = toPicture(QImage(BELLAVENOR_TEST_DATA "/portrait.png"));
    const int cropHeight = 400 * size.height() / size.width();
    return portrait.copy(56, 0, 400, cropHeight).scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

inline QImage portrait12Megapixels()
{
    return portraitPhoto(k12Megapixels);
}
