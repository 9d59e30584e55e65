#include "TRCIRGBToneCurve.h"

#include <gtest/gtest.h>

namespace {

int levelThrough(const PreparedCurve& curve, int level)
{
    return int(float(level) + curve[size_t(level)]);
}

} // namespace

TEST(ToneCurveSpline, SecondDerivativesOfThreePointsByHand)
{
    // Middle row (20, 85, 22.5) with right side 109/135 - 146/120; natural ends.
    const std::vector<double> s = TRCIRGBToneCurve::secondDerivative({{0, 0}, {120, 146}, {255, 255}});
    ASSERT_EQ(s.size(), 3u);
    EXPECT_DOUBLE_EQ(s[0], 0);
    EXPECT_NEAR(s[1], (109.0 / 135.0 - 146.0 / 120.0) / 85.0, 1e-12);
    EXPECT_DOUBLE_EQ(s[2], 0);
    EXPECT_TRUE(TRCIRGBToneCurve::secondDerivative({{0, 0}}).empty());
}

TEST(ToneCurveSpline, FourPointsByHand)
{
    // Equal spacing h = 85; the inner right sides are -105/85 and +105/85, so
    // s2 = -s1 and (2h/3 - h/6) s1 = -105/85: s1 = -210/85².
    const QList<QPointF> points{{0, 0}, {85, 120}, {170, 135}, {255, 255}};
    const double s1 = -210.0 / (85.0 * 85.0);
    const std::vector<double> s = TRCIRGBToneCurve::secondDerivative(points);
    ASSERT_EQ(s.size(), 4u);
    EXPECT_DOUBLE_EQ(s[0], 0);
    EXPECT_NEAR(s[1], s1, 1e-12);
    EXPECT_NEAR(s[2], -s1, 1e-12);
    EXPECT_DOUBLE_EQ(s[3], 0);

    const QList<QPointF> samples = TRCIRGBToneCurve::splineCurve(points);
    ASSERT_EQ(samples.size(), 256);
    // Level 127 lies in the middle segment at t = 42/85.
    const double t = 42.0 / 85.0, a = 1 - t;
    const double middle = a * 120 + t * 135 + 85.0 * 85.0 / 6 * ((a * a * a - a) * s1 + (t * t * t - t) * -s1);
    EXPECT_NEAR(samples[127].y(), middle, 1e-9);
    EXPECT_NEAR(samples[127].y(), 127.5147, 1e-4);
    EXPECT_NEAR(samples[42].y(), 72.3658, 1e-4) << "bulges above the chord in the first segment";
    EXPECT_NEAR(samples[200].y(), 164.1879, 1e-4) << "and below it in the last";
    EXPECT_EQ(samples[170], QPointF(170, 135));

    const PreparedCurve curve =
        TRCIRGBToneCurve::getPreparedSplineCurve({{0, 0}, {1.0 / 3, 120.0 / 255}, {2.0 / 3, 135.0 / 255}, {1, 1}});
    EXPECT_EQ(levelThrough(curve, 42), 72);
    EXPECT_EQ(levelThrough(curve, 127), 127);
    EXPECT_EQ(levelThrough(curve, 200), 164);
}

TEST(ToneCurveSpline, PointsGivenOutOfOrderMakeTheSameCurve)
{
    EXPECT_EQ(TRCIRGBToneCurve::getPreparedSplineCurve({{1, 1}, {0.3, 0.6}, {0, 0}}),
              TRCIRGBToneCurve::getPreparedSplineCurve({{0, 0}, {0.3, 0.6}, {1, 1}}));
}

TEST(ToneCurveFilter, ChannelCurveComesFirstThenTheComposite)
{
    TRCIRGBToneCurve filter;
    filter.setInputRedControlPoints({{0, 0}, {0.5, 0.75}, {1, 1}});
    filter.setInputRGBCompositeControlPoints({{0, 0}, {1, 0.5}});
    const ToneCurveTexture& texture = filter.toneCurveTexture();
    // Red 128 -> about 191 through its own curve, then halved: 95.
    EXPECT_NEAR(texture[4 * 128 + 2], 95, 1);
    EXPECT_EQ(texture[4 * 128 + 1], 64) << "green: identity, then halved";
    EXPECT_EQ(texture[4 * 128 + 3], 255);
}
