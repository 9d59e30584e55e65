#pragma once

#include "FilterImage.h"

#include <QImage>

// The image operations the effects are assembled from. Every one takes
// pictures (any QImage; converted to picture form when needed) and returns
// a new picture, never changing its input. Those used on every redraw also
// come in an OpenCV-style form writing into `dst`, which keeps its buffer
// when it already has the right size; `dst` may be the input itself.
//
// Colour maths works on the gamma-encoded values as stored, on straight
// (not premultiplied) colour; luminance has Rec. 709 weights.

// --- Blurs. Outside the picture counts as transparent. ---------------------

// Gaussian blur with standard deviation `radius`, over the grown extent: the
// extent grows by ceil(3 × radius) on every side (its origin goes negative).
// Radius 0 or less returns the input unchanged.
// Requires: radius finite. Ensures: extent = input's grown by ceil(3 radius).
FilterImage gaussianBlur(const FilterImage& image, float radius);

// The whole spread of the Gaussian blur: larger than the input by
// ceil(3 × radius) on every side, the input's corner that far inside.
// Requires: radius finite. Ensures: premultiplied, size grown by 2 ceil(3 radius).
QImage imageBlur(const QImage& image, float radius);

// The Gaussian blur cropped back to the input: the result has its size.
// Requires: radius finite. Ensures: premultiplied, the input's size; dst may be src.
QImage imageBlurDarkenEyes(const QImage& image, float radius);
QImage imageBlurEyeshadow(const QImage& image, float radius);
void gaussianBlurCropped(const QImage& src, QImage& dst, float radius);

// Average over a disc of `radius` pixels, not cropped: the result grows by
// ceil(radius) on every side. Radius 0 or less returns the input unchanged.
// Requires: radius finite. Ensures: premultiplied, size grown by 2 ceil(radius).
QImage imageBlurCheek(const QImage& image, float radius);

// --- Tonal conversions. ----------------------------------------------------

// Saturation 0, contrast 1.1 about mid-grey, then 0.7 stops brighter: a grey,
// harder and about 1.6 times brighter copy. R, G and B come out equal.
// Ensures: premultiplied, the input's size and alpha; dst may be src.
QImage imageBlackAndWhite(const QImage& image);
void imageBlackAndWhite(const QImage& src, QImage& dst);

// As imageBlackAndWhite but keeping half the saturation.
QImage Whiten_Teeth(const QImage& image);
void Whiten_Teeth(const QImage& src, QImage& dst);

// Inverted, edge magnitude at intensity 100, grey, brightened, inverted
// back: dark edge lines on white.
QImage imageEdges(const QImage& image);

// `second` minus `first` per colour channel, clamped at 0, over the union of
// both pictures (placed at the same origin).
QImage Subtract_Image(const QImage& first, const QImage& second);

// --- Compositing. ----------------------------------------------------------

// Lays `src` over `dst` (source-over), both pictures of the same size.
// QPainter's general path is several times slower on this pixel format.
// Requires: the same size, dst premultiplied and not src itself.
void drawOver(QImage& dst, const QImage& src);

// Whether every pixel is fully opaque.
bool isOpaque(const QImage& picture);

// --- Masks and markers. ----------------------------------------------------

// The image with the mask's grey as inverse alpha: black keeps a pixel,
// white removes it, grey keeps part of it. A mask of another size is
// stretched over the image (nearest sample, no interpolation).
// Ensures: premultiplied, the image's size; null when either input is null.
QImage maskImage(const QImage& image, const QImage& mask);

// Paints every bright pixel the marker green (0, 255, 0), alpha untouched
// (ensures: the input's size; dst may be src):
// a pixel qualifies when its stored R, B and G bytes (tested in that order)
// are all at least 100. Despite its name nothing becomes transparent; with
// premultiplied bytes a pixel whose alpha is below 100 never qualifies.
QImage imageReplaceWhiteWithTransparent(const QImage& image);
void imageReplaceWhiteWithTransparent(const QImage& src, QImage& dst);

// `base` with the colour of `source` wherever `marker` holds exactly
// R = 0, B = 0, G = 255 (its alpha not looked at); the alpha stays the
// base's. Requires: the three of the same size. Ensures: the base's size and
// alpha; dst may be base.
QImage imageReplaceGreenWithOriginal(const QImage& marker, const QImage& base, const QImage& source);
void imageReplaceGreenWithOriginal(const QImage& marker, const QImage& base, const QImage& source, QImage& dst);
