#pragma once

#include "PatchedPicture.h"
#include "TRCIRGBToneCurve.h"

#include <QImage>

#include <opencv2/core.hpp>

#include <array>
#include <cstdint>
#include <memory>

// The blend at the heart of skin smoothing, for one amount: every colour
// channel mixed with its tone-lifted value through the mask (255 keeps the
// channel, 0 takes the lifted one), then its luminance or the sharpened
// pixel. The blend is made again by each pass that needs it: that costs
// less than writing and reading a full-colour picture of it.
//
// The kernels are written by hand: no library fuses a per-channel lookup,
// a mix through a mask and a sharpen. Where the processor has AVX2 they work
// on eight pixels at a time; the results are the same to the bit.
class SkinBlend {
public:
    // Requires: `picture` opaque outside `holes`, `mask` one byte a pixel of
    // its size; both outlive the blend.
    SkinBlend(const PatchedPicture& picture, const cv::Rect& holes, const cv::Mat& mask,
              const ToneCurveTexture& texture, float amount);
    ~SkinBlend();
    SkinBlend(const SkinBlend&);

    // The same blend from row `first` on: its pixel numbers, and those of
    // every plane handed to it, start at that row.
    SkinBlend fromRow(int first) const;

    // The blend's luminance (Rec. 709 of straight colour, a byte) of pixels
    // first … first + count - 1, into luma at the same pixel numbers.
    void luminance(qsizetype first, qsizetype count, uchar* luma) const;

    // The same pixels blended, sharpened by gain × (y - yb) (gain with 8
    // fractional bits; the change is premultiplied and kept within alpha)
    // and laid over `under` (same pixel numbers) when given, into out[0 …
    // count - 1], and into also[0 … count - 1] when given.
    void sharpened(const uchar* y, const uchar* yb, int gain, const quint32* under, qsizetype first, qsizetype count,
                   quint32* out, quint32* also = nullptr) const;

    // The tables of one amount (the kernels' own).
    struct Tables;

private:
    quint32 translucent(qsizetype i) const;
    quint32 pixel(qsizetype i) const { return picture_.pixel(int(i % width_), int(i / width_) + firstRow_); }
    // Calls fn(i) for every pixel among first … first + count - 1 that is
    // not opaque; only the holes are looked at.
    template <typename Fn>
    void forTranslucent(qsizetype first, qsizetype count, Fn&& fn) const;

    // The vector passes read the photo; the patch's pixels are all in the
    // holes, which are done again from the picture itself.
    const PatchedPicture& picture_;
    const quint32* pixels_;
    qsizetype width_;
    cv::Rect holes_;
    const uchar* mask_;
    const ToneCurveTexture& texture_;
    float amount_;
    std::shared_ptr<const Tables> tables_;
    int firstRow_ = 0;
};
