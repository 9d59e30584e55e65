#include "FilterImage.h"
#include "Picture.h"

#include <gtest/gtest.h>

TEST(FilterImage, CropOfGrownExtentKeepsThePixelsOfTheInputArea)
{
    // A 20 × 20 result grown by 5 on every side of a 10 × 10 input; the pixel
    // at extent (0, 0) sits at image (5, 5).
    QImage grown = makePicture({20, 20});
    grown.setPixelColor(5, 5, Qt::red);
    grown.setPixelColor(14, 14, Qt::green);
    const FilterImage spread{grown, QRect(-5, -5, 20, 20)};

    const FilterImage cropped = spread.croppedTo(QRect(0, 0, 10, 10));

    EXPECT_EQ(cropped.extent, QRect(0, 0, 10, 10));
    const QImage rendered = imageFromCIImage(cropped);
    ASSERT_EQ(rendered.size(), QSize(10, 10));
    EXPECT_EQ(rendered.pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(rendered.pixelColor(9, 9), QColor(Qt::green));
}
