#include "Picture.h"
#include "TRCIHighPassSkinSmoothing.h"

#include <QPainter>

#include <gtest/gtest.h>


namespace {

const QColor kSkin(214, 166, 140);

int redAt(const QImage& picture, int x, int y)
{
    return picture.constScanLine(y)[4 * x];
}

} // namespace

TEST(SkinSmoothing, HolesLendTheirNeighboursNoRim)
{
    // Flat skin with a transparent hole, as the eyes and lips are cut out of
    // the face picture: every skin pixel must come out alike, the ones beside
    // the hole included.
    QImage skin = makePicture({120, 80});
    skin.fill(kSkin);
    {
        QPainter painter(&skin);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.fillRect(50, 30, 20, 12, Qt::transparent);
    }
    const QImage smoothed = trc_Face_Smooth(skin, 10, 10);
    const int far = redAt(smoothed, 10, 10);
    EXPECT_GT(far, kSkin.red()) << "lifted";
    for (QPoint beside : {QPoint(49, 35), QPoint(70, 35), QPoint(60, 29), QPoint(60, 42), QPoint(47, 36)})
        EXPECT_NEAR(redAt(smoothed, beside.x(), beside.y()), far, 1) << beside.x() << "," << beside.y();
}
