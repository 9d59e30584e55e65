#pragma once

#include <dlib/image_processing/frontal_face_detector.h>

#include <cstddef>
#include <vector>

// dlib's frontal face detector run with its work spread over both cores,
// giving exactly what dlib's own call gives.

// A face found: dlib's confidence, which of its filters found it, and its
// box in photo pixels (right and bottom inclusive, as dlib's rectangle).
struct HogDetection {
    double confidence = 0;
    unsigned long filter = 0;
    long left = 0, top = 0, right = 0, bottom = 0;

    bool operator==(const HogDetection&) const = default;
};

// An RGB picture, three bytes a pixel, as dlib reads a colour photo.
struct RgbPixels {
    const unsigned char* bytes = nullptr;
    long width = 0, height = 0;
    std::size_t bytesPerLine = 0;
};

// What `detector(image, detections, adjustThreshold)` gives, in its order.
std::vector<HogDetection> detectFaces(const dlib::frontal_face_detector& detector, const RgbPixels& photo,
                                      double adjustThreshold = 0.0);

// dlib's pyramid_down<6> of an RGB picture, to the byte, in a fraction of
// its time: the same float arithmetic eight pixels at a time where the
// processor has AVX2, rows on both cores.
void pyramidDown(const RgbPixels& photo, dlib::array2d<dlib::rgb_pixel>& smaller);

// dlib's apply_filters_to_fhog: one filter's score at every window of one
// level's features, to the bit, its separable filtering eight columns at a
// time in AVX2 where the processor has it (dlib's own build does the same
// float operations four lanes at a time).
dlib::rectangle hogSaliency(const dlib::frontal_face_detector::image_scanner_type::fhog_filterbank& filter,
                            const dlib::array<dlib::array2d<float>>& features, dlib::array2d<float>& saliency);

// dlib's float_spatially_filter_image_separable on float planes, the same
// way.
dlib::rectangle filterSeparable(const dlib::array2d<float>& in, dlib::array2d<float>& out,
                                const dlib::matrix<float, 0, 1>& rowFilter, const dlib::matrix<float, 0, 1>& colFilter,
                                dlib::array2d<float>& scratch, bool addTo);

// a × b + c computed in the replicas' files as they compute, with the
// processor's fused multiply-add allowed: two roundings unless the build
// fuses them. Lets a test see that those files are built so they never do.
float replicaMultiplyAdd(float a, float b, float c);
