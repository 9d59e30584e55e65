#pragma once

#include "PatchedPicture.h"
#include "TRCIFilter.h"
#include "TRCIRGBToneCurve.h"

#include <opencv2/core.hpp>

#include <cstdint>
#include <memory>

// Each pixel as the overlay of its green over its blue channel, as grey;
// alpha is kept.
class TRCIGreenBlueChannelOverlayBlend : public TRCIFilter {
public:
    QImage outputImage() override;
};

// Pushes a high-pass picture away from mid-grey towards black and white,
// per channel; alpha is kept.
class TRCIHighPassSkinSmoothingMaskBoost : public TRCIFilter {
public:
    QImage outputImage() override;
};

// The skin mask: the picture one stop darker, its green laid over its blue,
// high-passed at `inputRadius` and boosted. Black marks small dark detail
// (blemishes, pores) to be lifted, white small bright detail to be kept.
class TRCIHighPassSkinSmoothingMaskGenerator : public TRCIFilter {
public:
    QImage outputImage() override; // the mask as a grey picture
    cv::Mat outputMask();          // the mask as one float channel in 0..1

    double inputRadius = 0; // no default: always set by its user
};

// Brightens the picture through a soft tone curve except where it has fine
// bright detail, then sharpens it lightly: blemishes and pores fade, the
// face is gently lifted, nothing is blurred.
class TRCIHighPassSkinSmoothing : public TRCIFilter {
public:
    // Input 120 of 255 maps to 146 of 255: a mid-tone lift.
    static ControlPoints defaultInputRGBCompositeControlPoints();

    QImage outputImage() override;
    void setDefaults() override;

    double inputAmount() { return lazyDefault(inputAmount_, 0.75); }
    double inputRadius() { return lazyDefault(inputRadius_, 8.0); }
    static constexpr double kDefaultSharpnessFactor = 0.6;
    double inputSharpnessFactor() { return lazyDefault(inputSharpnessFactor_, kDefaultSharpnessFactor); }
    void setInputAmount(double amount) { inputAmount_ = amount; }
    void setInputRadius(double radius) { inputRadius_ = radius; }
    void setInputSharpnessFactor(double factor) { inputSharpnessFactor_ = factor; }

    // The composite points of the tone filter; an empty list installs the
    // default three points.
    const ControlPoints& inputToneCurveControlPoints();
    void setInputToneCurveControlPoints(const ControlPoints& points);

    TRCIRGBToneCurve& skinToneCurveFilter();

private:
    std::optional<double> inputAmount_, inputRadius_, inputSharpnessFactor_;
    std::unique_ptr<TRCIRGBToneCurve> skinToneCurveFilter_;
};

// What the two settings of skin smoothing make of the filter's inputs.
struct SkinSmoothingAmounts {
    float amount;    // level / 10, in single precision
    float sharpness; // the default sharpness factor times the amount
    float radius;
};
SkinSmoothingAmounts skinSmoothingAmounts(std::uint64_t level, std::uint64_t radius);

// The parts of skin smoothing that depend on the picture alone, made once
// per picture: where it is not opaque (the bounding box of its pixels with
// alpha below 255, and the alpha over it; both empty when it is opaque) and
// the doubled green-blue overlay the mask is made of.
struct SkinSmoothingPlanes {
    cv::Rect holes;
    cv::Mat alpha;
    cv::Mat doubled;

    static SkinSmoothingPlanes of(const PatchedPicture& picture);
};

// The skin mask at `radius` (0 black: lifted, 255 white: kept), one byte a
// pixel: the overlay high-passed over the opaque pixels and boosted.
// Depends on the picture and the radius only.
void skinMask(const SkinSmoothingPlanes& planes, float radius, cv::Mat& mask);

// Buffers of one run, kept by a caller that smooths often.
struct SkinSmoothingScratch {
    cv::Mat luma, lumaBlur;
};

// The smoothed picture into `out` (its buffer is reused when it has the
// size): the blend through the mask at `amount`, sharpened by `sharpness`,
// laid over `under` when given (an opaque picture of the same size), and
// written into `also` as well when given (one pass instead of a copy).
// `photoPixelsPerPixel` above 1 sharpens a shrunk copy of the photo as the
// photo itself would be sharpened and then shrunk.
// Requires: planes and mask made from `picture`. Ensures: `out` (and
// `also`) has the picture's size, opaque when laid over `under`; out may be
// *under.
void smoothSkin(const PatchedPicture& picture, const cv::Mat& mask, const SkinSmoothingPlanes& planes, float amount,
                float sharpness, const ToneCurveTexture& texture, SkinSmoothingScratch& scratch, const QImage* under,
                QImage& out, QImage* also = nullptr, float photoPixelsPerPixel = 1);

// The tone lift of the default control points.
const ToneCurveTexture& defaultSkinToneTexture();

// Skin smoothing of the full-face picture from the two settings: amount
// level / 10, radius as given, sharpness factor and tone curve at their
// defaults. The result has the input's size.
QImage trc_Face_Smooth(const QImage& face, std::uint64_t level, std::uint64_t radius);
