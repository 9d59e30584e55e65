#pragma once

#include <QString>

#include <dlib/image_processing/frontal_face_detector.h>

namespace dlib {
class shape_predictor;
}

// The landmark model's numbers kept once in a binary form of the program's
// own, in the user's cache folder, so that a fresh process reads them in
// one go instead of decoding dlib's serialised form number by number (most
// of a second). The cache names the model file's size and time; a cache
// that is missing, stale, truncated or otherwise wrong is not used, and the
// model is read by dlib's reader as before. The model read either way is
// the same to the bit.
namespace LandmarkModelCache {

// Where the cache of the model at `modelPath` is kept.
QString cachePath();

// Fills `model` from the cache; false, leaving it empty, when the cache is
// missing or does not match the model file.
bool read(const QString& modelPath, dlib::shape_predictor& model);

// Writes the cache of a model read by dlib; a failure only means the next
// process reads the model file again.
void write(const QString& modelPath, const dlib::shape_predictor& model);

// The same for dlib's face detector, which dlib builds from a compressed
// form of its own at every start (about a quarter of a second): kept in
// dlib's plain serialised form, checked the same way.
bool readDetector(dlib::frontal_face_detector& detector);
void writeDetector(const dlib::frontal_face_detector& detector);

} // namespace LandmarkModelCache
