#include "PreviewGeometry.h"

#include <cmath>

#include <gtest/gtest.h>

TEST(BestFitFrame, StepsInFiftiethsAndOverhangsOneStepWhenShrinking)
{
    EXPECT_EQ(return_Best_Fit_Frame(0, 0, 400, 300), QRectF());
    EXPECT_EQ(return_Best_Fit_Frame(640, 480, 640, 480), QRectF(0, 0, 640, 480));
    EXPECT_EQ(return_Best_Fit_Frame(100, 50, 400, 400), QRectF(0, 100, 400, 200)) << "grows by 2 up to 400";
    EXPECT_EQ(return_Best_Fit_Frame(1000, 1000, 500, 500), QRectF(-10, -10, 520, 520)) << "one step larger";
    EXPECT_EQ(return_Best_Fit_Frame(1000, 500, 800, 600), QRectF(-100, 50, 1000, 500))
        << "larger in one direction only: own size, centred";
}

TEST(PercentConversions, RoundTripThroughPercent)
{
    const QRectF percent = Return_Rect_In_Percentage(QRectF(50, 25, 100, 50), QSizeF(200, 100));
    EXPECT_EQ(percent, QRectF(25, 25, 50, 50));
    EXPECT_EQ(Return_Rect_In_View_Coordinates(percent, QSizeF(200, 100)), QRectF(50, 25, 100, 50));
    EXPECT_EQ(Return_Point_In_View_Coordinates(QPointF(20, 80), QSizeF(500, 250)), QPointF(100, 200));
}

// Values that single precision cannot hold exactly: the roundings must
// survive the optimiser.
TEST(BestFitFrame, SizeThatIsNoMultipleOfTheStepGrowsAndKeepsItsRoundedOrigin)
{
    const QRectF frame = return_Best_Fit_Frame(640, 480, 800, 600);
    EXPECT_DOUBLE_EQ(frame.width(), 793.6000022888184) << "twelve steps of 12.8 as a float";
    EXPECT_DOUBLE_EQ(frame.height(), 595.1999839782719) << "the width through the float ratio 4/3";
    EXPECT_EQ(frame.x(), 3.1999988555908203);
    EXPECT_EQ(frame.y(), 2.400007963180542) << "2.40000801… rounded to single precision";
}

TEST(PercentConversions, ResultsAreRoundedToSinglePrecision)
{
    EXPECT_EQ(Return_Point_In_View_Coordinates(QPointF(33.3, 66.7), QSizeF(1001, 777)),
              QPointF(333.3330078125, 518.2589721679688));
    EXPECT_EQ(Return_Rect_In_Percentage(QRectF(1, 2, 3, 4), QSizeF(3, 7)),
              QRectF(33.33333206176758, 28.571428298950195, 100, 57.14285659790039));
}

TEST(Framing, StepsThroughTheUsualLevelsAndAFittedZoomStepsToItsNeighbours)
{
    EXPECT_EQ(steppedZoom(1, 1), 1.5);
    EXPECT_EQ(steppedZoom(1, -1), 2.0 / 3);
    EXPECT_EQ(steppedZoom(0.23, 1), 0.25) << "a fitted 23 % goes up to 25 %";
    EXPECT_EQ(steppedZoom(0.23, -1), 0.125) << "and down to 12.5 %";
    EXPECT_EQ(steppedZoom(1, 3), 3);
    EXPECT_EQ(steppedZoom(16, 1), 16) << "the top stays";
    EXPECT_EQ(steppedZoom(1.0 / 16, -1), 1.0 / 16) << "the bottom stays";
    EXPECT_EQ(steppedZoom(2, -20), 1.0 / 16);
}

TEST(Framing, ActualPixelsHonourTheScreensScaleFactorAndStartOnAWholePixel)
{
    const QSizeF photo(513, 301), view(700, 600);
    const Framing actual{false, 1, {}};
    const QRectF onePerPixel = framedPhoto(actual, photo, view, 1);
    EXPECT_EQ(onePerPixel.size(), photo);
    EXPECT_EQ(onePerPixel.x(), std::round((700 - 513) / 2.0)) << "93.5 moves to a whole pixel";
    EXPECT_EQ(framedPhoto(actual, photo, view, 2).size(), photo / 2) << "one photo pixel per device pixel on a 2× screen";

    EXPECT_EQ(framedPhoto(Framing{}, photo, view, 2), return_Best_Fit_Frame(513, 301, 700, 600));
    EXPECT_DOUBLE_EQ(shownZoom(Framing{}, photo, view, 1), return_Best_Fit_Frame(513, 301, 700, 600).width() / 513);
}

TEST(Framing, APhotoLargerThanTheViewCannotLeaveItAndASmallerOneStaysCentred)
{
    const QSizeF photo(1000, 400), view(800, 600);
    const Framing actual{false, 1, {}};
    const QRectF far = framedPhoto(pannedBy(actual, {5000, 5000}, photo, view, 1), photo, view, 1);
    EXPECT_EQ(far.x(), 0) << "the left edge stops at the view's";
    EXPECT_EQ(far.y(), 100) << "400 high in 600: stays centred";
    const QRectF back = framedPhoto(pannedBy(actual, {-5000, 0}, photo, view, 1), photo, view, 1);
    EXPECT_EQ(back.right(), 800);
    const Framing moved = pannedBy(actual, {-30, 0}, photo, view, 1);
    EXPECT_EQ(framedPhoto(moved, photo, view, 1).x(), -130);
    EXPECT_EQ(pannedBy(Framing{}, {50, 50}, photo, view, 1), Framing{}) << "a fitted photo does not pan";
}
