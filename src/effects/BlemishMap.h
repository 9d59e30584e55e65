#pragma once

#include "FaceSkin.h"

#include <opencv2/core.hpp>

#include <cstdint>
#include <functional>
#include <vector>

// What a retoucher sees on a face's skin: every mark that stands out of the
// skin around it, measured (size, contrast, colour, shape, how alike its
// neighbours are) and judged — a spot to heal (with the spots it touches, as one area), or a
// mole, freckles, a hair or a line, busy skin or a patch too large to keep.
// The judgement never depends on Strength: Strength only sets how clearly a
// spot must stand out to be healed, so a higher Strength heals a superset.
struct BlemishMark {
    enum class Kind { Spot, Mole, Freckle, Line, Busy, Large };
    Kind kind = Kind::Spot;
    cv::Point2d centre;   // working pixels
    double diameter = 0;  // of the disc of the same area, working pixels
    double peak = 0;      // its strongest contrast, in units of the skin's own variation
    double darker = 0;    // how much darker than the skin around, in L* (0 to 100)
    double redder = 0;    // how much redder, in a*
    double yellower = 0;  // how much yellower (brown against grey), in b*
    double elongation = 1; // its length over its width
    double sharpness = 1; // its contrast at the finest scale over that at the coarsest: a sharp edge keeps it
    int alike = 0;        // neighbours of its colour and size nearby
    int label = 0;        // its area in BlemishMap::areas
    cv::Point strongest;  // where it stands out most
    int peaks = 0;        // how many spots it holds: its local maxima at the finest scale
    int group = 0;        // spots whose healed areas touch share it

    bool heals() const { return kind == Kind::Spot; }
    // Kept for what it is, and spared by the heals around it.
    bool isKeptAsItIs() const { return kind == Kind::Mole || kind == Kind::Freckle; }
};

struct BlemishMap {
    // Where a mark's area ends: its contrast falls to this, in units of the
    // skin's own variation. Skin below it everywhere is calm.
    static constexpr double kEdge = 1.5;

    std::vector<BlemishMark> marks;
    cv::Mat areas;    // CV_32S at the working scale: each mark's label over its pixels, 0 elsewhere
    cv::Mat contrast; // CV_32F: how far each pixel stands out, the most at any scale

    // The contrast a mark needs to be healed at a Strength (0 to 100): the
    // higher the Strength, the fainter the spots healed.
    static double thresholdFor(std::uint64_t strength);

    // 255 over the marks `which` chooses, a little wider; 0 elsewhere.
    cv::Mat areaOf(const std::function<bool(const BlemishMark&)>& which) const;

    // Every mark on `skin`; spots up to `widest` working pixels across.
    static BlemishMap of(const FaceSkin& skin, double widest);
};
