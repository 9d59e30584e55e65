#pragma once

#include <QImage>

#include <optional>

// The base of the skin-smoothing filter family: an object with input
// properties and an output computed from them on request. Inputs left unset
// read as their defaults; a getter that finds its value unset stores the
// default, and setDefaults() clears them again.
class TRCIFilter {
public:
    virtual ~TRCIFilter() = default;

    // The filtered picture, or a null picture without an input image.
    virtual QImage outputImage() = 0;
    virtual void setDefaults() {}

    QImage inputImage;
};

// Reads an optional input, storing `fallback` first when it is unset.
template <typename T>
T& lazyDefault(std::optional<T>& value, const T& fallback)
{
    if (!value)
        value = fallback;
    return *value;
}
