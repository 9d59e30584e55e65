#include "TRCIRGBToneCurve.h"

#include <gtest/gtest.h>

namespace {

const ControlPoints kIdentity = TRCIRGBToneCurve::defaultCurveControlPoints();
// Five points, given out of order: the natural spline's whole system is
// solved, not just one middle row.
const ControlPoints kFivePoints{{1, 1}, {0.25, 0.15}, {0, 0}, {0.6, 0.75}, {0.8, 0.85}};
// Four points inside the square: padded with 0 below the first and 255
// above the last, the first point's level appearing twice.
const ControlPoints kInside{{0.2, 0.3}, {0.45, 0.5}, {0.7, 0.65}, {0.9, 0.95}};

struct Curves {
    const char* name;
    ControlPoints composite, red, green, blue;
    // Output blue, green, red at the input levels of kLevels.
    std::vector<std::array<int, 3>> texels;
};

const int kLevels[] = {0, 30, 51, 52, 64, 100, 128, 180, 229, 230, 240, 255};

// Worked out apart from the program, by a dense solve of the spline's
// equations and the stated sampling, padding and single-precision sums.
const Curves kCurves[] = {
    {"five points composite", kFivePoints, kIdentity, kIdentity, kIdentity,
     {{0, 0, 0}, {9, 9, 9}, {24, 24, 24}, {25, 25, 25}, {38, 38, 38}, {101, 101, 101}, {155, 155, 155},
      {208, 208, 208}, {232, 232, 232}, {233, 233, 233}, {241, 241, 241}, {255, 255, 255}}},
    {"padded composite", kInside, kIdentity, kIdentity, kIdentity,
     {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {77, 77, 77}, {88, 88, 88}, {118, 118, 118}, {134, 134, 134},
      {167, 167, 167}, {240, 240, 240}, {242, 242, 242}, {255, 255, 255}, {255, 255, 255}}},
    {"red and blue curves", kIdentity, kFivePoints, kIdentity, kInside,
     {{0, 0, 0}, {0, 30, 9}, {0, 51, 24}, {77, 52, 25}, {88, 64, 38}, {118, 100, 101}, {134, 128, 155},
      {167, 180, 208}, {240, 229, 232}, {242, 230, 233}, {255, 240, 241}, {255, 255, 255}}},
    {"red curve, then the composite", kInside, kFivePoints, kIdentity, kIdentity,
     {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {77, 77, 0}, {88, 88, 0}, {118, 118, 119}, {134, 134, 147},
      {167, 167, 205}, {240, 240, 255}, {242, 242, 255}, {255, 255, 255}, {255, 255, 255}}},
};

} // namespace

TEST(ToneCurve, EveryChannelGoesThroughItsSplineThenTheComposite)
{
    for (const Curves& c : kCurves) {
        SCOPED_TRACE(c.name);
        TRCIRGBToneCurve curve;
        curve.setInputRGBCompositeControlPoints(c.composite);
        curve.setInputRedControlPoints(c.red);
        curve.setInputGreenControlPoints(c.green);
        curve.setInputBlueControlPoints(c.blue);
        const ToneCurveTexture& texture = curve.toneCurveTexture();
        for (size_t k = 0; k < std::size(kLevels); ++k) {
            const size_t at = size_t(4 * kLevels[k]);
            const std::array<int, 3> looked{texture[at], texture[at + 1], texture[at + 2]};
            EXPECT_EQ(looked, c.texels[k]) << "level " << kLevels[k] << " (blue, green, red)";
            EXPECT_EQ(texture[at + 3], 255);
        }
    }
}

// A new channel curve drops that curve and the lookup, nothing else.
TEST(ToneCurve, NewRedPointsPrepareOnlyTheRedCurveAgain)
{
    TRCIRGBToneCurve curve;
    curve.setInputRGBCompositeControlPoints(kFivePoints);
    curve.toneCurveTexture();
    const int prepared = TRCIRGBToneCurve::preparedCurveCount();
    const PreparedCurve composite = curve.rgbCompositeCurve();
    // Points no earlier run in this process prepared: the prepared curves
    // are kept process-wide.
    static int run = 0;
    curve.setInputRedControlPoints({{0, 0.1}, {0.3, 0.2 + 0.001 * ++run}, {0.55, 0.61}, {1, 0.9}});
    EXPECT_TRUE(curve.redCurve().empty());
    EXPECT_EQ(curve.rgbCompositeCurve(), composite);
    curve.toneCurveTexture();
    EXPECT_EQ(TRCIRGBToneCurve::preparedCurveCount(), prepared + 1);
}
