#include "FilterRegistry.h"
#include "Picture.h"
#include "TRCIHighPass.h"
#include "TRCIHighPassSkinSmoothing.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <random>

namespace {

const QColor kSkin(214, 166, 140);
const QColor kBlemish(150, 95, 80);

// A flat skin-coloured ground with small dark spots on a regular grid and a
// transparent hole (where the eyes would be cut out).
QImage blemishedSkin()
{
    QImage picture = makePicture({160, 120});
    picture.fill(kSkin);
    QPainter painter(&picture);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kBlemish);
    for (int y = 15; y < 120; y += 30)
        for (int x = 15; x < 160; x += 30)
            painter.drawEllipse(QPointF(x, y), 2.5, 2.5);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillRect(130, 0, 30, 20, Qt::transparent);
    return picture;
}

int redAt(const QImage& picture, int x, int y)
{
    return picture.constScanLine(y)[4 * x];
}

} // namespace

TEST(SkinSmoothing, SmallDarkSpotsLoseContrastAndTheSkinIsLifted)
{
    const QImage skin = blemishedSkin();
    const QImage smoothed = trc_Face_Smooth(skin, 10, 10);

    ASSERT_EQ(smoothed.size(), skin.size());
    const int before = redAt(skin, 50, 45) - redAt(skin, 45, 45);
    const int after = redAt(smoothed, 50, 45) - redAt(smoothed, 45, 45);
    EXPECT_LT(after, before * 0.85) << "spot " << redAt(smoothed, 45, 45) << " on ground " << redAt(smoothed, 50, 45);
    EXPECT_GT(redAt(smoothed, 60, 60), redAt(skin, 60, 60)) << "the ground is gently brightened";
    EXPECT_LT(redAt(smoothed, 60, 60), redAt(skin, 60, 60) + 25);
    EXPECT_EQ(smoothed.pixelColor(140, 10).alpha(), 0) << "alpha is kept";
    EXPECT_EQ(smoothed.pixelColor(100, 100).alpha(), 255);
}

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

TEST(SkinSmoothing, AmountZeroChangesNothing)
{
    const QImage skin = blemishedSkin();
    EXPECT_EQ(trc_Face_Smooth(skin, 0, 10), skin);
}

TEST(SkinSmoothing, NegativeSharpnessSkipsSharpeningLikeZero)
{
    TRCIHighPassSkinSmoothing negative, zero;
    negative.inputImage = zero.inputImage = blemishedSkin();
    negative.setInputSharpnessFactor(-0.5);
    zero.setInputSharpnessFactor(0);
    EXPECT_EQ(negative.outputImage(), zero.outputImage());

    TRCIHighPassSkinSmoothing sharpened;
    sharpened.inputImage = blemishedSkin();
    EXPECT_NE(sharpened.outputImage(), zero.outputImage());
}

TEST(SkinSmoothing, InputsFallBackToTheirDefaults)
{
    TRCIHighPassSkinSmoothing filter;
    filter.setInputToneCurveControlPoints({});
    EXPECT_EQ(filter.inputToneCurveControlPoints(), TRCIHighPassSkinSmoothing::defaultInputRGBCompositeControlPoints());
    filter.setInputRadius(3);
    filter.setInputAmount(0.2);
    filter.setDefaults();
    EXPECT_EQ(filter.inputRadius(), 8.0);
    EXPECT_EQ(filter.inputAmount(), 0.75);
    EXPECT_EQ(filter.inputSharpnessFactor(), 0.6);

    TRCIHighPass highPass;
    highPass.setInputRadius(5);
    highPass.setDefaults();
    EXPECT_EQ(highPass.inputRadius(), 1.0);
}

TEST(SkinSmoothing, MaskIsBlackOnBlemishesAndGreyOnFlatSkin)
{
    TRCIHighPassSkinSmoothingMaskGenerator generator;
    generator.inputImage = blemishedSkin();
    generator.inputRadius = 8;
    const QImage mask = generator.outputImage();
    EXPECT_LT(redAt(mask, 45, 45), 20);
    EXPECT_NEAR(redAt(mask, 60, 60), 128, 12);
}

TEST(SkinSmoothing, MaskMatchesTheFiltersAppliedOneAtATime)
{
    QImage darker = blemishedSkin();
    for (int y = 0; y < darker.height(); ++y)
        for (int x = 0; x < darker.width() * 4; ++x)
            if (x % 4 != 3)
                darker.scanLine(y)[x] = uchar(darker.scanLine(y)[x] / 2); // one stop down
    TRCIGreenBlueChannelOverlayBlend overlay;
    overlay.inputImage = darker;
    TRCIHighPass highPass;
    highPass.inputImage = overlay.outputImage();
    highPass.setInputRadius(8);
    TRCIHighPassSkinSmoothingMaskBoost boost;
    boost.inputImage = highPass.outputImage();
    const QImage stepByStep = boost.outputImage();

    TRCIHighPassSkinSmoothingMaskGenerator generator;
    generator.inputImage = blemishedSkin();
    generator.inputRadius = 8;
    const QImage fused = generator.outputImage();

    for (QPoint p : {QPoint(45, 45), QPoint(60, 60), QPoint(47, 45), QPoint(100, 30)})
        EXPECT_NEAR(redAt(fused, p.x(), p.y()), redAt(stepByStep, p.x(), p.y()), 24) << p.x() << "," << p.y();
}

TEST(FilterRegistry, MakesEachNamedFilter)
{
    const FilterRegistry& registry = FilterRegistry::shared();
    EXPECT_EQ(registry.names(), (QStringList{"TRCIHighPass", "TRCIHighPassSkinSmoothing", "TRCIRGBToneCurve"}));
    EXPECT_EQ(registry.find("TRCIHighPass")->displayName, "High Pass");
    EXPECT_EQ(registry.find("TRCIHighPassSkinSmoothing")->displayName, "High Pass Skin Smoothing");
    EXPECT_EQ(registry.find("TRCIRGBToneCurve")->displayName, "RGB Tone Curve");
    EXPECT_EQ(registry.find("TRCIRGBToneCurve")->categories,
              (QStringList{kCategoryStillImage, kCategoryVideo, kCategoryColorAdjustment, kCategoryInterlaced}));
    EXPECT_EQ(registry.find("TRCIHighPass")->categories, (QStringList{kCategoryStillImage, kCategoryVideo}));

    const TRCIFilterConstructor& constructor = TRCIFilterConstructor::constructor();
    EXPECT_NE(dynamic_cast<TRCIHighPass*>(constructor.filterWithName("TRCIHighPass").get()), nullptr);
    EXPECT_NE(dynamic_cast<TRCIHighPassSkinSmoothing*>(constructor.filterWithName("TRCIHighPassSkinSmoothing").get()),
              nullptr);
    EXPECT_NE(dynamic_cast<TRCIRGBToneCurve*>(constructor.filterWithName("TRCIRGBToneCurve").get()), nullptr);
    EXPECT_EQ(constructor.filterWithName("CIGaussianBlur"), nullptr);
}
