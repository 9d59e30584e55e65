// What a retoucher heals and keeps, judged on a face's skin made to order:
// skin of one tone with a fine grain, at the working scale, and marks
// painted on it. One rule a row, each with its neighbour across the line.
#include "BlemishMap.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

namespace {

constexpr double kFace = 400; // the working face width
constexpr double kWidest = 12; // the default Size, 3 % of it

FaceSkin calmSkin()
{
    FaceSkin skin;
    skin.area = cv::Rect(0, 0, 320, 320);
    skin.scale = 1;
    skin.workingWidth = kFace;
    skin.rgb = cv::Mat(320, 320, CV_8UC3, cv::Scalar(205, 160, 140));
    // Pores and the skin's mottling: a fine grain and a soft one.
    cv::Mat grain(skin.rgb.size(), CV_32FC3), mottle(skin.rgb.size(), CV_32FC3), tone;
    cv::RNG random(7); // the same skin in any order of tests
    random.fill(grain, cv::RNG::NORMAL, 0, 4);
    random.fill(mottle, cv::RNG::NORMAL, 0, 12);
    cv::GaussianBlur(mottle, mottle, {0, 0}, 4);
    skin.rgb.convertTo(tone, CV_32FC3);
    tone += grain + mottle;
    tone.convertTo(skin.rgb, CV_8UC3);
    skin.allowed = cv::Mat(320, 320, CV_8U, cv::Scalar(255));
    return skin;
}

// A soft round mark: `change` (R, G, B) at its middle, a cosine to nothing
// at `radius`; a hard one keeps it to a pixel from its edge.
void paint(FaceSkin& skin, cv::Point2d at, double radius, cv::Scalar change, bool hard = false)
{
    for (int y = int(at.y - radius) - 1; y <= int(at.y + radius) + 1; ++y)
        for (int x = int(at.x - radius) - 1; x <= int(at.x + radius) + 1; ++x) {
            const double d = std::hypot(x - at.x, y - at.y) / radius;
            const double weight = hard ? std::clamp((1 - d) * radius + 0.5, 0.0, 1.0)
                                       : (d < 1 ? 0.5 + 0.5 * std::cos(CV_PI * d) : 0);
            cv::Vec3b& p = skin.rgb.at<cv::Vec3b>(y, x);
            for (int k = 0; k < 3; ++k)
                p[k] = cv::saturate_cast<uchar>(p[k] + weight * change[k]);
        }
}

const BlemishMark* markAt(const BlemishMap& map, cv::Point2d at)
{
    const BlemishMark* nearest = nullptr;
    double reach = 4;
    for (const BlemishMark& m : map.marks)
        if (cv::norm(m.centre - at) < reach)
            reach = cv::norm(m.centre - at), nearest = &m;
    return nearest;
}

const cv::Scalar kRed{30, -30, -25}, kBrown{-12, -17, -26}, kDarkBrown{-80, -90, -95};

} // namespace

TEST(BlemishMap, EachRuleOfWhatIsKeptAndWhatIsHealed)
{
    FaceSkin skin = calmSkin();
    // A mole: small, dark, sharp-edged. A faint soft brown dot of its size is a spot.
    paint(skin, {40, 40}, 3, kDarkBrown, true);
    paint(skin, {40, 100}, 3, kBrown * 0.7);
    // Four even brown dots together are freckles; three are not yet.
    for (const cv::Point2d at : {cv::Point2d(120, 40), {140, 40}, {120, 60}, {140, 60}})
        paint(skin, at, 2.5, kBrown);
    for (const cv::Point2d at : {cv::Point2d(240, 40), {260, 40}, {240, 60}})
        paint(skin, at, 2.5, kBrown);
    // Two red spots that touch are healed as one; one apart alone.
    paint(skin, {120, 200}, 3, kRed);
    paint(skin, {127, 200}, 3, kRed);
    paint(skin, {200, 200}, 3, kRed);
    // A hair: long and thin. A brown patch wider than Size.
    cv::line(skin.rgb, {40, 240}, {75, 260}, cv::Scalar(120, 90, 80), 1, cv::LINE_AA);
    paint(skin, {250, 260}, 20, kBrown);
    const BlemishMap map = BlemishMap::of(skin, kWidest);

    using Kind = BlemishMark::Kind;
    const struct {
        cv::Point2d at;
        Kind kind;
        const char* what;
    } rows[] = {
        {{40, 40}, Kind::Mole, "mole"},          {{40, 100}, Kind::Spot, "soft brown dot"},
        {{120, 40}, Kind::Freckle, "freckle"},   {{140, 60}, Kind::Freckle, "freckle"},
        {{240, 40}, Kind::Spot, "one of three"}, {{260, 40}, Kind::Spot, "one of three"},
        {{200, 200}, Kind::Spot, "lone red"},    {{57, 250}, Kind::Line, "hair"},
        {{250, 260}, Kind::Large, "patch"},
    };
    for (const auto& row : rows) {
        const BlemishMark* mark = markAt(map, row.at);
        ASSERT_NE(mark, nullptr) << row.what;
        EXPECT_EQ(mark->kind, row.kind) << row.what;
    }
    const BlemishMark *first = markAt(map, {120, 200}), *second = markAt(map, {127, 200}), *lone = markAt(map, {200, 200});
    ASSERT_TRUE(first && second && lone && first != second);
    EXPECT_TRUE(first->heals() && second->heals());
    EXPECT_EQ(first->group, second->group) << "touching: healed as one";
    EXPECT_NE(lone->group, first->group);
}
