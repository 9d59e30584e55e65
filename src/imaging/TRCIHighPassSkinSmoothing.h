#pragma once

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
    double inputSharpnessFactor() { return lazyDefault(inputSharpnessFactor_, 0.6); }
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

// Skin smoothing of the full-face picture from the two settings: amount
// level / 10, radius as given, sharpness factor and tone curve at their
// defaults. The result has the input's size.
QImage trc_Face_Smooth(const QImage& face, std::uint64_t level, std::uint64_t radius);
