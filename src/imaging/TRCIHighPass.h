#pragma once

#include "TRCIFilter.h"

// What a Gaussian blur of the given radius removes from the picture (its
// fine detail), centred on mid-grey, per colour channel; alpha is kept. The
// picture's edge pixels repeat outward for the blur, so borders do not
// darken.
class TRCIHighPass : public TRCIFilter {
public:
    QImage outputImage() override;
    void setDefaults() override { inputRadius_.reset(); }

    double inputRadius() { return lazyDefault(inputRadius_, 1.0); }
    void setInputRadius(double radius) { inputRadius_ = radius; }

private:
    std::optional<double> inputRadius_;
};
