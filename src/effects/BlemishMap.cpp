#include "BlemishMap.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>

namespace {

// The contrast, in units of the skin's own variation, that a spot needs at
// Strength 100 and at Strength 0.
constexpr double kFaintest = 2.0;
constexpr double kClearest = 4.5;
constexpr double kEdge = BlemishMap::kEdge;

// The scales spots are looked for at (Gaussian sigmas, working pixels): a
// pinpoint, a papule, a soft mark. A faint wide mark shows only once the
// skin's grain is smoothed away; a sharp dot only before.
constexpr std::array kScales{0.7, 1.4, 2.8};

struct Lab {
    cv::Mat L, a, b; // CV_32F: L* 0 to 100, a* and b* about -100 to 100
};

Lab labOf(const cv::Mat& rgb)
{
    cv::Mat unit, lab;
    rgb.convertTo(unit, CV_32F, 1.0 / 255);
    cv::cvtColor(unit, lab, cv::COLOR_RGB2Lab);
    cv::Mat c[3];
    cv::split(lab, c);
    return {c[0], c[1], c[2]};
}

// The `share` quantile of the distances of `values` from 0 where `mask` is
// set, read at every other pixel.
double quantileOf(const cv::Mat& values, const cv::Mat& mask, double share)
{
    std::vector<float> all;
    all.reserve(size_t(values.total() / 4));
    for (int y = 0; y < values.rows; y += 2)
        for (int x = 0; x < values.cols; x += 2)
            if (mask.at<uchar>(y, x))
                all.push_back(std::abs(values.at<float>(y, x)));
    if (all.empty())
        return 0;
    const auto at = all.begin() + std::ptrdiff_t(share * double(all.size() - 1));
    std::nth_element(all.begin(), at, all.end());
    return *at;
}

// The skin's own variation of `values` (differences from the skin around
// them), read from their calmer part: the 30th percentile of their distance
// from 0, over 0.385 as it is for a normal spread. A face full of spots
// would raise a median and hide them.
double spreadOf(const cv::Mat& values, const cv::Mat& mask, double floor)
{
    return std::max(quantileOf(values, mask, 0.3) / 0.385, floor);
}

// `channel` less the skin around each pixel: its median over `window`, with
// what is not skin (eyes, brows, lips, hair) first filled in from the skin
// nearby so that it pulls no estimate. A median, not a mean: in a cluster
// of spots the skin between them still counts as the skin.
cv::Mat differenceFromSkin(const cv::Mat& channel, const cv::Mat& allowed, const cv::Mat& weight,
                           const cv::Mat& reach, int window, double toBytes, double offset)
{
    cv::Mat filled;
    cv::GaussianBlur(channel.mul(weight), filled, cv::Size(), 6);
    filled /= cv::max(reach, 1e-3);
    channel.copyTo(filled, allowed);
    // OpenCV's median takes bytes for windows over 5: L* and a*, b* fit them
    // at 0.4 and 1 levels.
    cv::Mat bytes, median;
    filled.convertTo(bytes, CV_8U, toBytes, offset);
    cv::medianBlur(bytes, median, window);
    median.convertTo(median, CV_32F, 1 / toBytes, -offset / toBytes);
    return filled - median;
}

struct Differences {
    cv::Mat L, a, b;
};

// How far each pixel stands out, darker, lighter or redder, over the skin's
// own variation at the scale `sigma`.
cv::Mat contrastAt(const Differences& d, const cv::Mat& allowed, double sigma)
{
    cv::Mat L, a;
    cv::GaussianBlur(d.L, L, cv::Size(), sigma);
    cv::GaussianBlur(d.a, a, cv::Size(), sigma);
    const double spreadL = spreadOf(L, allowed, 0.3), spreadA = spreadOf(a, allowed, 0.3);
    // Lighter counts a little less: shine on the skin is lighter too.
    const cv::Mat darker = -L / spreadL, lighter = 0.85 * L / spreadL, redder = a / spreadA;
    cv::Mat contrast = cv::max(cv::max(darker, lighter), redder);
    contrast.setTo(0, allowed == 0);
    return contrast;
}

// Where the skin is busy at the finest scale (stubble, the hairline, lashes):
// 255 where its fine grain is well above the face's own.
cv::Mat busyOf(const cv::Mat& L, const cv::Mat& allowed)
{
    cv::Mat smooth, energy;
    cv::GaussianBlur(L, smooth, cv::Size(), 1.0);
    const cv::Mat grain = L - smooth;
    cv::GaussianBlur(grain.mul(grain), energy, cv::Size(), 4);
    const double usual = std::max(quantileOf(energy, allowed, 0.5), 1e-3);
    return energy > 5 * usual;
}

struct Moments {
    double area = 0, x = 0, y = 0, xx = 0, yy = 0, xy = 0, peak = 0, finest = 0, coarsest = 0, L = 0, a = 0, b = 0;
    double sigma = 0; // the scale it was found at
    cv::Point strongest;
    int peaks = 0; // local maxima at the finest scale
};

double elongationOf(const Moments& m)
{
    const double cx = m.x / m.area, cy = m.y / m.area;
    const double vx = m.xx / m.area - cx * cx + 1.0 / 12, vy = m.yy / m.area - cy * cy + 1.0 / 12;
    const double c = m.xy / m.area - cx * cy;
    const double root = std::sqrt(std::max(0.0, (vx - vy) * (vx - vy) / 4 + c * c));
    const double major = (vx + vy) / 2 + root, minor = std::max((vx + vy) / 2 - root, 1.0 / 12);
    return std::sqrt(major / minor);
}

// The contrast of the whole, at the finest and the coarsest scale, and
// the scale each mark's pixels were found at (CV_32F, 0 where none).
struct Contrasts {
    cv::Mat most, finest, coarsest, foundAt;
};

// Where the finest contrast peaks: the highest within 2 pixels, and clear.
cv::Mat peaksOf(const cv::Mat& finest)
{
    cv::Mat around;
    cv::dilate(finest, around, cv::getStructuringElement(cv::MORPH_RECT, {5, 5}));
    return (finest >= around) & (finest >= kEdge);
}

std::vector<BlemishMark> measured(const cv::Mat& areas, int count, const Contrasts& contrast, const Differences& fine)
{
    const cv::Mat peaks = peaksOf(contrast.finest);
    std::vector<Moments> sums(static_cast<size_t>(count));
    for (int y = 0; y < areas.rows; ++y)
        for (int x = 0; x < areas.cols; ++x) {
            const int k = areas.at<int>(y, x);
            if (k == 0)
                continue;
            Moments& m = sums[size_t(k)];
            m.area += 1, m.x += x, m.y += y, m.xx += double(x) * x, m.yy += double(y) * y, m.xy += double(x) * y;
            if (contrast.most.at<float>(y, x) > m.peak)
                m.peak = contrast.most.at<float>(y, x), m.strongest = {x, y};
            m.sigma = std::max(m.sigma, double(contrast.foundAt.at<float>(y, x)));
            m.peaks += peaks.at<uchar>(y, x) != 0;
            m.finest = std::max(m.finest, double(contrast.finest.at<float>(y, x)));
            m.coarsest = std::max(m.coarsest, double(contrast.coarsest.at<float>(y, x)));
            m.L += fine.L.at<float>(y, x), m.a += fine.a.at<float>(y, x), m.b += fine.b.at<float>(y, x);
        }
    std::vector<BlemishMark> marks;
    for (int k = 1; k < count; ++k) {
        const Moments& m = sums[size_t(k)];
        BlemishMark mark;
        mark.label = k;
        mark.strongest = m.strongest;
        mark.peaks = m.peaks;
        mark.centre = {m.x / m.area, m.y / m.area};
        // The blur of the scale it was found at widens it: taken off.
        const double seen = 2 * std::sqrt(m.area / std::numbers::pi), blur = 2.355 * m.sigma;
        mark.diameter = std::sqrt(std::max(seen * seen - blur * blur, seen * seen / 4));
        mark.peak = m.peak;
        mark.darker = -m.L / m.area, mark.redder = m.a / m.area, mark.yellower = m.b / m.area;
        mark.elongation = elongationOf(m);
        mark.sharpness = m.finest / std::max(m.coarsest, 0.5);
        marks.push_back(mark);
    }
    return marks;
}

// Brown or grey and darker, less red than dark: a freckle's or a mole's
// colour (on rosy skin a freckle is a little redder too).
bool isPigment(const BlemishMark& m)
{
    return m.darker > 0 && m.redder < 0.8 * m.darker;
}

// Freckles come many together, even in colour, darkness and size.
void countAlike(std::vector<BlemishMark>& marks, double reach)
{
    for (BlemishMark& mark : marks) {
        if (!isPigment(mark))
            continue;
        for (const BlemishMark& other : marks)
            mark.alike += &other != &mark && isPigment(other) && cv::norm(other.centre - mark.centre) < reach
                          && other.diameter < 2 * mark.diameter && mark.diameter < 2 * other.diameter
                          && other.darker < 1.6 * mark.darker && mark.darker < 1.6 * other.darker;
    }
}

// Red spots whose healed areas would touch (a spot heals out to its
// diameter and a pixel from its middle) are healed together, as one area
// (dense acne): each takes the smallest index of the spots it touches,
// through them. Brown marks heal one by one: a row of them is not acne.
void groupTouching(std::vector<BlemishMark>& marks)
{
    std::vector<size_t> root(marks.size());
    std::iota(root.begin(), root.end(), size_t(0));
    const auto find = [&](size_t i) {
        while (root[i] != i)
            i = root[i] = root[root[i]];
        return i;
    };
    for (size_t i = 0; i < marks.size(); ++i)
        for (size_t j = i + 1; j < marks.size(); ++j)
            if (marks[i].heals() && marks[j].heals() && !isPigment(marks[i]) && !isPigment(marks[j])
                && cv::norm(marks[i].centre - marks[j].centre) < marks[i].diameter + marks[j].diameter + 2)
                root[find(j)] = find(i);
    for (size_t i = 0; i < marks.size(); ++i)
        marks[i].group = int(find(i)) + 1;
}

// A mole or a beauty mark: small, darker, no redder than it is dark, clear,
// and its edge sharp (it keeps its contrast at the finest scale) or it
// very dark.
bool isMole(const BlemishMark& m, double faceWidth)
{
    return m.diameter <= 0.02 * faceWidth && m.darker >= 3.5 && m.redder <= m.darker && m.peak >= 6
           && (m.sharpness >= 1.6 || m.darker >= 12);
}

// A hair or a fine line: long and thin.
bool isLine(const BlemishMark& m, double faceWidth)
{
    return m.elongation > 3 && m.diameter / std::sqrt(m.elongation) <= 0.0075 * faceWidth;
}

// What a mark is judged against: the largest spot, the face's width (both
// in working pixels) and where the skin is busy.
struct Face {
    double widest, faceWidth;
    const cv::Mat& busyMap;

    // Busy around the mark, not in it: a dark mark makes its own grain.
    bool busy(const BlemishMark& m) const
    {
        const double away = m.diameter / 2 + 4;
        int busySides = 0;
        for (const cv::Point2d side : {cv::Point2d(1, 0), {-1, 0}, {0, 1}, {0, -1}}) {
            const cv::Point at(m.centre + away * side);
            busySides += at.inside(cv::Rect(0, 0, busyMap.cols, busyMap.rows)) && busyMap.at<uchar>(at);
        }
        return busySides >= 3;
    }
};

// Whether a brown mark is part of a larger one (a mole, a birthmark): what
// stands out by half its peak, connected to it, is wider than twice Size.
// A large dome shows several peaks at the spots' scale; it stays whole.
bool partOfLargeMark(const BlemishMark& m, const cv::Mat& contrast, double widest)
{
    if (!isPigment(m))
        return false;
    cv::Mat reach = cv::Mat::zeros(contrast.rows + 2, contrast.cols + 2, CV_8U);
    cv::Mat copy = contrast.clone();
    const int filled = cv::floodFill(copy, reach, m.strongest, 0, nullptr, cv::Scalar(0.5 * m.peak), cv::Scalar(1e9),
                                     4 | cv::FLOODFILL_FIXED_RANGE | cv::FLOODFILL_MASK_ONLY | (255 << 8));
    return 2 * std::sqrt(filled / std::numbers::pi) > 2 * widest;
}

BlemishMark::Kind kindOf(const BlemishMark& m, const Face& face)
{
    using Kind = BlemishMark::Kind;
    // Larger than Size: a mark, not a spot — unless it is red or red-brown
    // spots that touch (several peaks within it, no wider than four spots):
    // dense acne and its marks. A brown patch (a birthmark) is barely red.
    const bool brown = isPigment(m) && m.redder < 0.4 * m.darker;
    if (m.diameter > face.widest && (brown || m.peaks < 2 || m.diameter > 4 * face.widest))
        return Kind::Large;
    if (isLine(m, face.faceWidth))
        return Kind::Line;
    if (m.darker < 0 && m.redder < 0.5 * -m.darker && m.diameter > 0.9 * face.widest)
        return Kind::Large; // lighter and about as wide as Size: shine, not a whitehead
    if (!isPigment(m))
        return Kind::Spot; // red (papules, pustules, red marks) or lighter (whiteheads, scars)
    if (m.alike >= 3 && m.diameter <= 0.015 * face.faceWidth)
        return Kind::Freckle;
    if (isMole(m, face.faceWidth))
        return Kind::Mole;
    if (face.busy(m))
        return Kind::Busy;
    return Kind::Spot; // a dark or brown mark on its own
}

} // namespace

double BlemishMap::thresholdFor(std::uint64_t strength)
{
    return kClearest - (kClearest - kFaintest) * double(std::min<std::uint64_t>(strength, 100)) / 100;
}

BlemishMap BlemishMap::of(const FaceSkin& skin, double widest)
{
    BlemishMap map;
    if (skin.isEmpty())
        return map;
    const Lab lab = labOf(skin.rgb);
    cv::Mat weight, reach;
    skin.allowed.convertTo(weight, CV_32F, 1.0 / 255);
    cv::GaussianBlur(weight, reach, cv::Size(), 6);
    const int window = std::max(3 * int(std::ceil(widest)), 9) | 1;
    const Differences raw{differenceFromSkin(lab.L, skin.allowed, weight, reach, window, 2.55, 0),
                          differenceFromSkin(lab.a, skin.allowed, weight, reach, window, 1, 128),
                          differenceFromSkin(lab.b, skin.allowed, weight, reach, window, 1, 128)};
    // Each scale finds its own marks (a faint wide mark shows only once the
    // skin's grain is smoothed away, a sharp dot only before); a mark
    // reaches as far as half its own peak at the finest scale it shows at,
    // so neighbouring spots part where the skin between them falls back.
    Contrasts contrast{cv::Mat::zeros(raw.L.size(), CV_32F), {}, {}, cv::Mat::zeros(raw.L.size(), CV_32F)};
    cv::Mat cores = cv::Mat::zeros(raw.L.size(), CV_8U);
    const int across = std::max(3, int(widest * 0.75)) | 1;
    const cv::Mat disc = cv::getStructuringElement(cv::MORPH_ELLIPSE, {across, across});
    for (double sigma : kScales) {
        const cv::Mat atScale = contrastAt(raw, skin.allowed, sigma);
        cv::Mat localPeak, core, shown;
        cv::dilate(atScale, localPeak, disc);
        core = (atScale >= kEdge) & (atScale >= 0.5 * localPeak);
        cv::dilate(cores, shown, disc);
        core &= ~shown;
        contrast.foundAt.setTo(sigma, core);
        cores |= core;
        contrast.most = cv::max(contrast.most, atScale);
        (contrast.finest.empty() ? contrast.finest : contrast.coarsest) = atScale;
    }
    Differences fine;
    cv::GaussianBlur(raw.L, fine.L, cv::Size(), kScales[0]);
    cv::GaussianBlur(raw.a, fine.a, cv::Size(), kScales[0]);
    cv::GaussianBlur(raw.b, fine.b, cv::Size(), kScales[0]);
    const int count = cv::connectedComponents(cores, map.areas, 8, CV_32S);
    std::vector<BlemishMark> marks = measured(map.areas, count, contrast, fine);
    std::erase_if(marks, [](const BlemishMark& m) { return m.peak < kFaintest; });
    countAlike(marks, std::max(4 * widest, 30.0));
    const cv::Mat busy = busyOf(lab.L, skin.allowed);
    const Face face{widest, skin.workingWidth, busy};
    for (BlemishMark& mark : marks)
        mark.kind = partOfLargeMark(mark, contrast.most, widest) ? BlemishMark::Kind::Large : kindOf(mark, face);
    groupTouching(marks);
    map.marks = std::move(marks);
    map.contrast = contrast.most;
    return map;
}

cv::Mat BlemishMap::areaOf(const std::function<bool(const BlemishMark&)>& which) const
{
    double labels = 0; // marks too faint to list keep their labels
    cv::minMaxLoc(areas, nullptr, &labels);
    std::vector<uchar> keeps(size_t(labels) + 1, 0);
    for (const BlemishMark& mark : marks)
        if (which(mark))
            keeps[size_t(mark.label)] = 255;
    cv::Mat kept = cv::Mat::zeros(areas.size(), CV_8U);
    for (int y = 0; y < kept.rows; ++y)
        for (int x = 0; x < kept.cols; ++x)
            kept.at<uchar>(y, x) = keeps[size_t(areas.at<int>(y, x))];
    cv::dilate(kept, kept, cv::getStructuringElement(cv::MORPH_ELLIPSE, {5, 5}));
    return kept;
}
