#pragma once

#include "Picture.h"

#include <QImage>
#include <QPainter>

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

// The test portrait enlarged to a 12-megapixel photo: scaled to 3000 × 3000
// and centred on a 4000 × 3000 canvas whose sides repeat its edge columns,
// so there is still exactly one face.
inline QImage portrait12Megapixels()
{
    const QImage portrait = toPicture(QImage(BELLAVENOR_TEST_DATA "/portrait.png"))
                                .scaled(3000, 3000, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QImage photo = makePicture(k12Megapixels);
    QPainter painter(&photo);
    painter.drawImage(QRect(0, 0, 500, 3000), portrait, QRect(0, 0, 1, 3000));
    painter.drawImage(QRect(3500, 0, 500, 3000), portrait, QRect(2999, 0, 1, 3000));
    painter.drawImage(500, 0, portrait);
    return photo;
}
