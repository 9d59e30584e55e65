#include "PixelKernels.h"

#include <gtest/gtest.h>

TEST(MapPixels, VisitsEveryPixelOnceWithItsByteOffsetInRgbaOrder)
{
    QImage image(37, 23, QImage::Format_ARGB32); // another form: converted first
    image.fill(QColor(1, 2, 3, 255));
    std::vector<int> visits(37 * 23, 0);
    QImage result;

    mapPixels(image, result, [&](const uchar* in, uchar* out, qsizetype k) {
        ++visits[size_t(k / 4)];
        out[0] = in[0];
        out[1] = uchar(k / 4 % 256);
        out[2] = in[2];
        out[3] = in[3];
    });

    EXPECT_TRUE(std::all_of(visits.begin(), visits.end(), [](int n) { return n == 1; }));
    EXPECT_EQ(result.format(), kPictureFormat);
    const uchar* px = result.constScanLine(2) + 4 * 5; // pixel 2 * 37 + 5 = 79
    EXPECT_EQ((std::array<uchar, 4>{px[0], px[1], px[2], px[3]}), (std::array<uchar, 4>{1, 79, 3, 255}));
    EXPECT_EQ(image.pixelColor(5, 2), QColor(1, 2, 3, 255)) << "the input stays as it was";
}

TEST(MapPixels, ChangesInPlaceAndReusesTheTargetBuffer)
{
    QImage picture = makePicture({8, 8});
    picture.fill(QColor(10, 20, 30, 255));
    const uchar* buffer = picture.constBits();

    mapPixels(picture, picture, [](const uchar* in, uchar* out, qsizetype) { out[0] = uchar(in[0] + 1); });
    EXPECT_EQ(picture.constBits(), buffer);
    EXPECT_EQ(picture.pixelColor(7, 7), QColor(11, 20, 30, 255));

    QImage target = makePicture({8, 8});
    const uchar* targetBuffer = target.constBits();
    mapPixels(picture, target, [](const uchar* in, uchar* out, qsizetype) { std::copy(in, in + 4, out); });
    EXPECT_EQ(target.constBits(), targetBuffer) << "a target of the right size keeps its buffer";
}
