#pragma once

#include <QImage>
#include <QRect>

#include <opencv2/core.hpp>

// The skin's detail parted by size, as a retoucher's frequency separation
// does, but read over the skin alone: eyes, brows, lips and hair around it
// take no part in its blurs, so nothing of theirs bleeds into it.

// A Gaussian blur of `values` (CV_32FC3) in which only the pixels `weight`
// gives (CV_32F, 0 to 1) take part, each by its weight: a normalised
// convolution. Where no weight is in reach the values stay.
cv::Mat blurOver(const cv::Mat& values, const cv::Mat& weight, double sigma);

// The medium band of `rgb` (8-bit): its detail between the scales `fine`
// and `coarse` (Gaussian sigmas in its pixels), both read over `skin`
// (8-bit, non-zero on skin) — blotches, redness and small shadows, not the
// pores below `fine` nor the light that models the face above `coarse`.
// Taking it away leaves an eighth of what a difference of those blurs
// finds. CV_32FC3, in levels.
cv::Mat mediumBandOf(const cv::Mat& rgb, const cv::Mat& skin, double fine, double coarse);

// `picture` (the picture format, detached) changed within `area` by
// `change` (CV_32FC3, levels, at any scale: brought to the area's size)
// and by its own fine detail below `fine` picture pixels times `texture`
// less 1 (1 leaves it), each pixel by `weight` (CV_32F, 0 to 1, at the
// change's scale). Only opaque pixels change; a weight of 0 leaves a pixel
// to the bit.
void applySkinChange(QImage& picture, const QRect& area, const cv::Mat& change, const cv::Mat& weight, double fine,
                     double texture);
