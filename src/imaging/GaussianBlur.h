#pragma once

#include <opencv2/core.hpp>

// The one Gaussian blur of the program, for any number of 8-bit channels:
// standard deviation `sigma`, reach ceil(3 sigma), edges handled by
// `borderType` (cv::BORDER_CONSTANT for transparent surroundings,
// cv::BORDER_REPLICATE for repeated edge pixels). `dst` may be `src`.
//
// Below sigma 6 it is OpenCV's exact blur. Wider blurs are computed on a
// copy reduced 2 or 4 times and enlarged again, with the sigma reduced so the
// whole matches a true Gaussian to about 50 dB: several times faster, and
// the difference is below one level in almost every pixel.
void gaussianBlur(const cv::Mat& src, cv::Mat& dst, float sigma, int borderType);

// How far gaussianBlur's result at a pixel reaches into its input: beyond
// this many pixels a change of the input changes nothing.
int gaussianSupport(float sigma);

// The side of the cells a wide blur reduces the picture by (1: none). A part
// of a picture whose origin lies on this grid blurs exactly as the whole does
// there, away from the part's edges.
int gaussianCell(float sigma);

// gaussianBlur of a one-byte plane over the opaque part of a picture only:
// where any pixel within reach is not opaque, each value weighs by its
// pixel's alpha and the sum is divided by the blurred alpha, so transparent
// holes lend their neighbours nothing; elsewhere it is the plain blur. Where
// no opaque pixel is in reach the value stays. `holes` bounds the pixels
// whose alpha is below 255 (empty: none); only around them is the weighing
// done. Edge pixels repeat outward.
// Requires: values 8-bit, one channel; alpha too, the alpha over `holes`
// only (of the holes' size; every other pixel is opaque). The holes may lie
// partly or wholly outside the values: a band of a larger picture.
// Ensures: dst 8-bit, one channel, of that size; dst is not values.
void gaussianBlurOverOpaque(const cv::Mat& values, const cv::Mat& alpha, const cv::Rect& holes, cv::Mat& dst,
                            float sigma);
