#include "Picture.h"

#include <QPainter>

#include <gtest/gtest.h>


namespace {

std::array<uchar, 4> bytesAt(const QImage& picture, int x, int y)
{
    const uchar* p = picture.constScanLine(y) + 4 * x;
    return {p[0], p[1], p[2], p[3]};
}

} // namespace

TEST(PictureLayout, BytesAreRgbaPremultipliedWithoutRowPadding)
{
    QImage image(3, 1, QImage::Format_ARGB32);
    image.setPixelColor(0, 0, QColor(255, 0, 0, 128)); // half-transparent red
    image.setPixelColor(1, 0, QColor(0, 0, 0, 0));
    image.setPixelColor(2, 0, QColor(10, 20, 30, 255));

    const QImage picture = toPicture(image);

    EXPECT_EQ(picture.format(), QImage::Format_RGBA8888_Premultiplied);
    EXPECT_EQ(picture.bytesPerLine(), 3 * 4);
    EXPECT_EQ(bytesAt(picture, 0, 0), (std::array<uchar, 4>{128, 0, 0, 128}));
    EXPECT_EQ(bytesAt(picture, 1, 0), (std::array<uchar, 4>{0, 0, 0, 0}));
    EXPECT_EQ(bytesAt(picture, 2, 0), (std::array<uchar, 4>{10, 20, 30, 255}));
}

TEST(Stretch, FillsExactSizeWithoutKeepingAspectOrFlipping)
{
    // Top half red, bottom half blue, so a vertical flip would show.
    QImage source(100, 50, QImage::Format_ARGB32);
    source.fill(Qt::blue);
    QPainter(&source).fillRect(0, 0, 100, 25, Qt::red);

    const QImage stretched = Stretch_Image(source, QSizeF(30, 90));

    ASSERT_EQ(stretched.size(), QSize(30, 90));
    EXPECT_EQ(stretched.format(), kPictureFormat);
    EXPECT_EQ(stretched.pixelColor(15, 5), QColor(Qt::red));
    EXPECT_EQ(stretched.pixelColor(15, 84), QColor(Qt::blue));
    EXPECT_EQ(stretched.pixelColor(0, 44).red(), stretched.pixelColor(29, 44).red()) << "both edges squeezed in alike";
}
