// Heal blemishes on the portrait enlarged, with soft spots of three kinds
// planted over the face's skin and two moles: the spots are healed, the
// moles, the features and the skin away from the spots stay.
#include "Compositor.h"
#include "HealBlemishes.h"
#include "Picture.h"
#include "RandomSettings.h"
#include "PhotoEdits.h"
#include "TestPortrait.h"

#include <opencv2/imgproc.hpp>

#include <QPainter>

#include <ranges>
#include <tuple>

#include <gtest/gtest.h>

namespace {

struct Planted {
    QPointF centre; // photo pixels, y from the top
    double radius;
    cv::Scalar change; // added at the centre, fading out at the radius
};

struct PlantedPortrait {
    OpenedPhoto photo, unspotted;
    QList<Planted> spots, moles;
};

QPointF lerp(QPointF a, QPointF b, double t) { return a + t * (b - a); }


double distanceTo(QPointF at, const FaceLandmarks& p, int first, int last)
{
    const auto part = p.mid(first, last - first + 1);
    return std::ranges::min(part | std::views::transform([&](QPointF q) { return QLineF(at, q).length(); }));
}

// Places on the skin, a grid over the face below the eyes kept clear of the
// jaw line, eyes, nose and mouth, the nose's bridge and between the brows (the portrait's
// forehead is under its fringe).
std::vector<QPointF> skinPlaces(const FaceLandmarks& p)
{
    const QPointF across = p[16] - p[0], down(-across.y(), across.x()), eyes = (p[39] + p[42]) / 2;
    const double width = QLineF(p[0], p[16]).length();
    const QPolygonF jaw(p.mid(0, 17));
    std::vector<QPointF> places{lerp(p[28], p[29], 0.5), lerp(p[21], p[22], 0.5)};
    for (double x = -0.45; x <= 0.45; x += 0.07)
        for (double y = 0.1; y <= 0.9; y += 0.07) {
            const QPointF at = eyes + x * across + y * down;
            if (jaw.containsPoint(at, Qt::OddEvenFill) && distanceTo(at, p, 0, 16) > 0.06 * width
                && distanceTo(at, p, 36, 47) > 0.12 * width && distanceTo(at, p, 27, 35) > 0.1 * width
                && distanceTo(at, p, 48, 59) > 0.1 * width)
                places.push_back(at);
        }
    return places;
}

// A dark red papule, a red spot and a light spot in turn (small brown-black
// dots are moles: the rules of what is kept are checked apart).
const cv::Scalar kKinds[] = {{-20, -60, -55}, {25, -40, -35}, {40, 38, 36}};
const cv::Scalar kMole{-45, -55, -60};

void plant(QImage& picture, const Planted& spot)
{
    cv::Mat pixels = pixelsOf(picture);
    const int reach = int(std::ceil(spot.radius)) + 1;
    for (int y = int(spot.centre.y()) - reach; y <= int(spot.centre.y()) + reach; ++y)
        for (int x = int(spot.centre.x()) - reach; x <= int(spot.centre.x()) + reach; ++x) {
            const double d = QLineF(QPointF(x, y), spot.centre).length() / spot.radius;
            const double weight = d < 1 ? 0.5 + 0.5 * std::cos(std::numbers::pi * d) : 0;
            for (int k = 0; k < 3; ++k)
                pixels.at<cv::Vec4b>(y, x)[k] = cv::saturate_cast<uchar>(pixels.at<cv::Vec4b>(y, x)[k] + weight * spot.change[k]);
        }
}

// The portrait at `side` pixels square, its landmarks scaled, spots of half
// the default Size planted on its skin, moles of twice it on a cheek and
// the chin.
PlantedPortrait plantedPortrait(int side)
{
    PlantedPortrait planted;
    planted.unspotted = enlargedPortrait(side);
    const FaceLandmarks& p = planted.unspotted.facePointsRelativeToImageSize;
    const double faceWidth = QLineF(p[0], p[16]).length(), size = HealBlemishes::Settings{}.f_Heal_Blemishes_Size / 100;
    planted.moles = {{lerp(p[11], p[54], 0.5), size * faceWidth, kMole}, {lerp(p[8], p[57], 0.75), size * faceWidth, kMole}};
    int k = 0;
    for (QPointF place : skinPlaces(p)) {
        if (std::ranges::all_of(planted.moles, [&](const Planted& m) { return QLineF(m.centre, place).length() > 5 * m.radius; }))
            planted.spots.push_back({place, (0.22 + 0.03 * (k % 4)) * size * faceWidth, kKinds[k % 3]});
        ++k;
    }
    planted.photo = planted.unspotted;
    planted.photo.img_Basic = copied(planted.unspotted.img_Basic);
    for (const Planted& spot : planted.spots + planted.moles)
        plant(planted.photo.img_Basic, spot);
    return planted;
}

// How far a spot stands out of the skin that was there: the mean difference
// of its luma and redness from the unspotted picture's over its middle, in
// units of how much spot-sized areas of that skin differ from their
// surroundings (at least two levels: the enlarged portrait's skin is
// smoother than any camera's).
double standsOut(const QImage& picture, const QImage& unspotted, const Planted& spot)
{
    const int reach = int(std::ceil(4 * spot.radius + 4));
    const cv::Rect box(int(spot.centre.x()) - reach, int(spot.centre.y()) - reach, 2 * reach + 1, 2 * reach + 1);
    const auto lumaAndRedness = [&](const QImage& image) {
        cv::Mat rgba, c[4];
        pixelsOf(image)(box).convertTo(rgba, CV_32FC4);
        cv::split(rgba, c);
        return std::pair<cv::Mat, cv::Mat>{0.2126f * c[0] + 0.7152f * c[1] + 0.0722f * c[2], c[0] - 0.5f * (c[1] + c[2])};
    };
    const auto [luma, redness] = lumaAndRedness(picture);
    const auto [skinLuma, skinRedness] = lumaAndRedness(unspotted);
    cv::Mat middle = cv::Mat::zeros(box.size(), CV_8U), fine, spotSized;
    cv::circle(middle, {reach, reach}, int(std::ceil(0.6 * spot.radius)), 255, cv::FILLED);
    cv::GaussianBlur(skinLuma, spotSized, {0, 0}, spot.radius / 2);
    cv::GaussianBlur(skinLuma, fine, {0, 0}, 2 * spot.radius);
    cv::Scalar ignored, variation;
    cv::meanStdDev(spotSized - fine, ignored, variation);
    const double off = std::max(std::abs(cv::mean(luma - skinLuma, middle)[0]),
                                std::abs(cv::mean(redness - skinRedness, middle)[0]));
    return off / std::max(variation[0], 2.0);
}

QImage composed(const OpenedPhoto& photo, const EditingState& state, const PointList& healed = {},
                const PointList& kept = {})
{
    PhotoEdits edits = PhotoEdits::of(photo.regions);
    edits.array_Healed_Spots = healed;
    edits.array_Kept_Spots = kept;
    return Compositor().compose(photo, edits, state);
}

// The features' outlines from the landmarks: eyes, lips, nostrils, and the
// brows as a band over their points.
QPainterPath features(const FaceLandmarks& p)
{
    QPainterPath path;
    const QPointF lift(0, 0.02 * QLineF(p[0], p[16]).length());
    for (const auto& [first, last, band] : {std::tuple{36, 41, false}, {42, 47, false}, {48, 59, false}, {31, 35, false},
                                            {17, 21, true}, {22, 26, true}}) {
        QPolygonF outline(p.mid(first, last - first + 1));
        for (int i = last; band && i >= first; --i)
            outline << p[i] + lift;
        path.addPolygon(outline);
    }
    return path.simplified();
}

class HealBlemishesTest : public ::testing::TestWithParam<int> {};

} // namespace

// At 2048² and at 12 MP: nine spots in ten no longer stand out (their middle
// within one and a half times the skin's spot-sized variation of the skin
// that was there, every one of them well beyond it before), the moles
// (twice the Size) still do, the eyes, brows, nostrils and lips are
// unchanged to the bit, and skin away from the spots keeps its levels.
TEST_P(HealBlemishesTest, PlantedSpotsAreHealedAndMolesFeaturesAndSkinAroundStay)
{
    const PlantedPortrait planted = plantedPortrait(GetParam());
    EditingState healing;
    healing.b_Heal_Blemishes = true;
    const QImage before = composed(planted.photo, EditingState()), after = composed(planted.photo, healing);
    const QImage& skin = planted.unspotted.img_Basic;
    ASSERT_GE(planted.spots.size(), 30u);
    int healed = 0;
    for (const Planted& spot : planted.spots) {
        EXPECT_GT(standsOut(before, skin, spot), 2) << "planted at " << spot.centre.x() << ", " << spot.centre.y();
        healed += standsOut(after, skin, spot) < 1.5;
    }
    EXPECT_GE(healed, int(0.9 * double(planted.spots.size())));
    for (const Planted& mole : planted.moles)
        EXPECT_GT(standsOut(after, skin, mole), 0.8 * standsOut(before, skin, mole)) << "mole at " << mole.centre.x();

    const QPainterPath kept = features(planted.photo.facePointsRelativeToImageSize);
    const QRect box = kept.boundingRect().toAlignedRect();
    for (int y = box.top(); y <= box.bottom(); ++y)
        for (int x = box.left(); x <= box.right(); ++x)
            ASSERT_TRUE(!kept.contains(QPointF(x, y)) || before.pixel(x, y) == after.pixel(x, y)) << "feature pixel " << x << ", " << y;
    cv::Mat far(before.height(), before.width(), CV_8U, cv::Scalar(255)), change;
    for (const Planted& spot : planted.spots)
        cv::circle(far, cv::Point(int(spot.centre.x()), int(spot.centre.y())), int(6 * spot.radius), 0, cv::FILLED);
    cv::absdiff(pixelsOf(before), pixelsOf(after), change);
    const cv::Scalar mean = cv::mean(change, far);
    EXPECT_LE((mean[0] + mean[1] + mean[2]) / 3, 0.5) << "skin away from the spots";
}

INSTANTIATE_TEST_SUITE_P(Sizes, HealBlemishesTest, ::testing::Values(2048, 3464));

// A stroke along a scar heals it along its path, where the search alone
// leaves most of it.
TEST(HealBlemishes, AStrokeHealsAScarAlongItsPath)
{
    const OpenedPhoto skin = enlargedPortrait(2048);
    const FaceLandmarks& p = skin.facePointsRelativeToImageSize;
    const QPointF from = lerp(p[2], p[31], 0.3), to = lerp(p[2], p[31], 0.7);
    OpenedPhoto scarred = skin;
    scarred.img_Basic = copied(skin.img_Basic);
    std::vector<Planted> scar;
    for (double t = 0; t <= 1; t += 0.02)
        scar.push_back({lerp(from, to, t), 0.004 * QLineF(p[0], p[16]).length(), kMole});
    for (const Planted& mark : scar)
        plant(scarred.img_Basic, mark);
    EditingState healing;
    healing.b_Heal_Blemishes = true;
    healing.u_Heal_Blemishes_Strength = 0;
    PhotoEdits stroke = PhotoEdits::of(scarred.regions);
    stroke.array_Heal_Strokes = {{100 * from / 2048, 100 * to / 2048}};
    const QImage alone = composed(scarred, healing), stroked = Compositor().compose(scarred, stroke, healing);
    cv::Mat line = cv::Mat::zeros(2048, 2048, CV_8U), was;
    for (const Planted& mark : scar)
        cv::circle(line, cv::Point(mark.centre.toPoint().x(), mark.centre.toPoint().y()), int(mark.radius), 255, cv::FILLED);
    pixelsOf(skin.img_Basic).convertTo(was, CV_32F);
    const auto darkerBy = [&](const QImage& picture) { // levels, over the colour channels
        cv::Mat now;
        pixelsOf(picture).convertTo(now, CV_32F);
        const cv::Scalar d = cv::mean(was - now, line);
        return (d[0] + d[1] + d[2]) / 3;
    };
    // Measured: 34 levels darker left by the search, 4 lighter after the
    // stroke (the shading of the skin beside it, smoothed).
    EXPECT_GT(darkerBy(alone), 20) << "the search alone leaves the line";
    EXPECT_LT(std::abs(darkerBy(stroked)), 0.2 * darkerBy(alone)) << "healed along its whole path";
}

// A mole clicked to heal stays healed under every other effect; with the
// switch off, spots in the lists change nothing; Size bounds what is found.
TEST(HealBlemishes, AClickedMoleStaysHealedUnderTheOtherEffectsAndTheSwitchOffChangesNothing)
{
    const PlantedPortrait planted = plantedPortrait(2048);
    const Planted& mole = planted.moles[0];
    EditingState all;
    for (bool EditingState::*effect : switchesInCloseOrder())
        all.*effect = true;
    all.b_Natural_Skin = false; // the nine effects of the window's first design
    all.b_Heal_Blemishes = false;
    const PointList clicked{100 * mole.centre / 2048};
    const QImage nine = composed(planted.photo, all, clicked);
    all.b_Heal_Blemishes = true;
    const QImage ten = composed(planted.photo, all, clicked), skin = composed(planted.unspotted, all);
    EXPECT_GT(standsOut(nine, skin, mole), 1) << "the default smoothing softens the mole, no more";
    EXPECT_LT(standsOut(ten, skin, mole), 0.5);

    EXPECT_EQ(composed(planted.photo, EditingState(), clicked, {{40, 40}}), composed(planted.photo, EditingState()));

    HealBlemishes::Settings smaller;
    smaller.f_Heal_Blemishes_Size = 1;
    const Planted& spot = planted.spots[2];
    const auto near = [&](const HealBlemishes::Settings& s) {
        return std::ranges::count_if(HealBlemishes::spotsOf(planted.photo, s, {}),
                                     [&](const auto& found) { return QLineF(found.centre, spot.centre).length() < spot.radius; });
    };
    EXPECT_EQ(near(HealBlemishes::Settings{}), 1);
    EXPECT_EQ(near(smaller), 0) << "a Size below the spot's leaves it";
}

namespace {

// The portrait at 2048² with marks planted on its skin.
OpenedPhoto marked(const std::vector<Planted>& marks)
{
    OpenedPhoto photo = enlargedPortrait(2048);
    photo.img_Basic = copied(photo.img_Basic);
    for (const Planted& mark : marks)
        plant(photo.img_Basic, mark);
    return photo;
}

// How far a spot still stands out of the skin around it in the picture
// itself: its disc against the ring from two to three and a half radii,
// smoothed at half its radius, in levels over two, luma or redness.
double standsOutAround(const QImage& picture, const Planted& spot)
{
    const int reach = int(std::ceil(3.5 * spot.radius + 4));
    const cv::Rect box(int(spot.centre.x()) - reach, int(spot.centre.y()) - reach, 2 * reach + 1, 2 * reach + 1);
    cv::Mat rgba, c[4], disc = cv::Mat::zeros(box.size(), CV_8U), ring = disc.clone();
    pixelsOf(picture)(box).convertTo(rgba, CV_32FC4);
    cv::GaussianBlur(rgba, rgba, {0, 0}, std::max(1.0, spot.radius / 2));
    cv::split(rgba, c);
    cv::circle(disc, {reach, reach}, int(std::ceil(spot.radius)), 255, cv::FILLED);
    cv::circle(ring, {reach, reach}, int(3.5 * spot.radius), 255, cv::FILLED);
    cv::circle(ring, {reach, reach}, int(2 * spot.radius), 0, cv::FILLED);
    const cv::Mat luma = 0.2126f * c[0] + 0.7152f * c[1] + 0.0722f * c[2], redness = c[0] - 0.5f * (c[1] + c[2]);
    const double off = std::max(std::abs(cv::mean(luma, disc)[0] - cv::mean(luma, ring)[0]),
                                std::abs(cv::mean(redness, disc)[0] - cv::mean(redness, ring)[0]));
    return off / 2;
}

} // namespace

// Spots of graded contrast and size: each step up in Strength heals every
// spot the step below healed (no spot comes back on the picture) and more:
// many more at the top than at the bottom.
TEST(HealBlemishes, AHigherStrengthNeverHealsFewerSpotsNorLessOfOne)
{
    const OpenedPhoto plain = enlargedPortrait(2048);
    const FaceLandmarks& p = plain.facePointsRelativeToImageSize;
    const double faceWidth = QLineF(p[0], p[16]).length();
    std::vector<Planted> spots;
    int k = 0;
    for (QPointF place : skinPlaces(p)) {
        const double contrast = 0.05 + 0.06 * (k % 7), radius = (0.003 + 0.001 * (k % 5)) * faceWidth;
        spots.push_back({place, radius, kKinds[1] * contrast});
        ++k;
    }
    const OpenedPhoto m = marked(spots);
    EditingState healing;
    healing.b_Heal_Blemishes = true;
    std::vector<double> previous(spots.size(), 1e9);
    std::vector<int> healedAt;
    for (std::uint64_t strength : {0, 25, 50, 75, 100}) {
        healing.u_Heal_Blemishes_Strength = strength;
        const QImage after = composed(m, healing);
        int healed = 0;
        for (size_t i = 0; i < spots.size(); ++i) {
            const double left = standsOutAround(after, spots[i]);
            EXPECT_LE(left, std::max(previous[i] + 0.25, 1.5)) << "Strength " << strength << ", spot " << i;
            previous[i] = std::min(previous[i], left);
        }
        const auto found = HealBlemishes::spotsOf(m, healing, {});
        for (const Planted& spot : spots)
            healed += std::ranges::any_of(found, [&](const auto& f) { return QLineF(f.centre, spot.centre).length() < spot.radius; });
        healedAt.push_back(healed);
    }
    EXPECT_TRUE(std::ranges::is_sorted(healedAt));
    EXPECT_GT(healedAt.back(), healedAt.front() + 3);
}

// A click beside a found spot, within its reach, keeps that spot (it is no
// new spot to heal), and the picture shows it kept at once: nothing cached
// forgot the kept list.
TEST(HealBlemishes, AClickBesideAFoundSpotKeepsItAndThePictureShowsItKept)
{
    const OpenedPhoto plain = enlargedPortrait(2048);
    const FaceLandmarks& p = plain.facePointsRelativeToImageSize;
    const double w = QLineF(p[0], p[16]).length();
    const Planted spot{lerp(p[12], p[54], 0.5), 0.006 * w, kKinds[1]};
    const OpenedPhoto m = marked({spot});
    const HealBlemishes::Settings s;
    const auto found = HealBlemishes::spotsOf(m, s, {});
    const auto it = std::ranges::find_if(found, [&](const auto& f) { return QLineF(f.centre, spot.centre).length() < spot.radius; });
    ASSERT_NE(it, found.end());
    const double reach = std::max(it->radius, HealBlemishes::brushRadius(m, s));
    PhotoEdits edits = PhotoEdits::of(m.regions);
    EditingState healing;
    healing.b_Heal_Blemishes = true;
    Compositor compositor;
    const QImage healed = compositor.compose(m, edits, healing).copy();
    EXPECT_LT(standsOutAround(healed, spot), 1.5);

    const QPointF beside = it->centre + QPointF(0.8 * reach, 0);
    EXPECT_STREQ(HealBlemishes::click(m, s, edits, 100 * beside / 2048), HealBlemishes::kKeepSpot);
    EXPECT_TRUE(edits.array_Healed_Spots.isEmpty());
    ASSERT_EQ(edits.array_Kept_Spots.size(), 1);
    const QImage kept = compositor.compose(m, edits, healing);
    EXPECT_GT(standsOutAround(kept, spot), 0.8 * standsOutAround(m.img_Basic, spot));
}

// Red spots close enough to be seen as one mark wider than Size heal over
// that mark with its grain kept, never as a flat patch.
TEST(HealBlemishes, TouchingSpotsSeenAsOneWideMarkHealWithoutAFlatPatch)
{
    const OpenedPhoto plain = enlargedPortrait(2048);
    const FaceLandmarks& p = plain.facePointsRelativeToImageSize;
    const double w = QLineF(p[0], p[16]).length(), size = HealBlemishes::Settings{}.f_Heal_Blemishes_Size / 100 * w;
    const QPointF centre = lerp(p[4], p[48], 0.5), across = (p[16] - p[0]) / w;
    std::vector<Planted> spots;
    for (double k : {-1.0, 0.0, 1.0})
        spots.push_back({centre + k * 0.8 * size * across, 0.7 * size, kKinds[1]});
    const OpenedPhoto m = marked(spots);
    const auto judged = HealBlemishes::judgedMarks(m, HealBlemishes::Settings{});
    ASSERT_TRUE(std::ranges::any_of(judged, [&](const auto& j) {
        return j.mark.heals() && j.mark.peaks >= 2 && 2 * j.spot.radius > size && QLineF(j.spot.centre, centre).length() < size;
    })) << "the spots are seen as one wide mark";
    EditingState healing;
    healing.b_Heal_Blemishes = true;
    const QImage after = composed(m, healing);
    for (const Planted& spot : spots) // a disc as wide as the mark leaves more than half (measured 4.7 of 8.7)
        EXPECT_LT(standsOutAround(after, spot), 0.5 * standsOutAround(m.img_Basic, spot));
    cv::Mat change, changed, luma, grain, around;
    cv::absdiff(pixelsOf(after), pixelsOf(m.img_Basic), change);
    cv::transform(change, changed, cv::Matx14f(1, 1, 1, 0));
    cv::Mat healedHere = cv::Mat::zeros(2048, 2048, CV_8U);
    cv::circle(healedHere, cv::Point(centre.toPoint().x(), centre.toPoint().y()), int(2 * size), 255, cv::FILLED);
    changed = (changed > 6) & healedHere;
    cv::cvtColor(pixelsOf(after), luma, cv::COLOR_RGBA2GRAY);
    luma.convertTo(luma, CV_32F);
    cv::GaussianBlur(luma, grain, {0, 0}, 1);
    grain = cv::abs(luma - grain);
    cv::dilate(changed, around, cv::getStructuringElement(cv::MORPH_ELLIPSE, {31, 31}));
    EXPECT_GT(cv::mean(grain, changed)[0], 0.5 * cv::mean(grain, around & ~changed)[0]) << "a flat patch";
}
