#include "DLibWrapper.h"

#include "DataFolder.h"
#include "HogFaceDetector.h"
#include "Picture.h"

#include <QFileInfo>
#include <QtDebug>

#include <dlib/image_processing.h>
#include <dlib/opencv/cv_image.h>

#include <opencv2/core.hpp>

#include <array>
#include <atomic>
#include <future>
#include <mutex>
#include <optional>

namespace {

const char* const kModelFileName = "shape_predictor_68_face_landmarks.dat";

// The face detector is built from dlib's own code, at once; only the
// landmark model is read from a file.
const dlib::frontal_face_detector& faceDetector()
{
    static const dlib::frontal_face_detector detector = dlib::get_frontal_face_detector();
    return detector;
}

std::atomic<int> reads{0};

// Reading the model takes most of a second, so it is read once per process
// and reused; a failed read is tried again on the next call. A batch asks
// from two threads; landmarks only read the model.
const dlib::shape_predictor* loadedModel(QString& error)
{
    static std::mutex loading;
    static std::optional<dlib::shape_predictor> model;
    const std::lock_guard<std::mutex> locked(loading);
    if (model)
        return &*model;
    const QString path = DLibWrapper::modelPath();
    if (path.isEmpty()) {
        error = QString("The face landmark model \"%1\" is missing; install the Debian package libdlib-data.")
                    .arg(kModelFileName);
        return nullptr;
    }
    try {
        dlib::shape_predictor fresh;
        ++reads;
        dlib::deserialize(QFile::encodeName(path).toStdString()) >> fresh;
        model = std::move(fresh);
        return &*model;
    } catch (const std::exception& failure) {
        error = QString("The face landmark model \"%1\" could not be loaded: %2").arg(path, failure.what());
        return nullptr;
    }
}

FaceLandmarks toLandmarks(const dlib::full_object_detection& shape)
{
    FaceLandmarks points;
    points.reserve(int(shape.num_parts()));
    for (unsigned long i = 0; i < shape.num_parts(); ++i) {
        const dlib::point& part = shape.part(i);
        points.append(QPointF(double(part.x()), double(part.y())));
        qInfo("Point %d => x=%d ; y=%d", int(i), int(part.x()), int(part.y()));
    }
    return points;
}

// Faces are looked for while the model may still be read on another
// thread; the landmarks of the one face wait for it.
DetectionResult detect(const QImage& photo)
{
    // dlib reads colour photos as R, G, B bytes; its detector takes the
    // strongest gradient over the three channels, which it would not do on
    // four. The pixels are wrapped, not copied again.
    const QImage rgb = photo.convertToFormat(QImage::Format_RGB888);
    requireAllocated(rgb, photo.size());
    const cv::Mat pixels(rgb.height(), rgb.width(), CV_8UC3, const_cast<uchar*>(rgb.constBits()),
                         size_t(rgb.bytesPerLine()));
    const dlib::cv_image<dlib::rgb_pixel> image(pixels);

    const RgbPixels rgbPixels{rgb.constBits(), rgb.width(), rgb.height(), size_t(rgb.bytesPerLine())};
    const std::vector<HogDetection> faces = detectFaces(faceDetector(), rgbPixels, 0.0);
    DetectionResult result;
    if (faces.empty())
        result.code = 1;
    else if (faces.size() > 1)
        result.code = 2;
    else if (const dlib::shape_predictor* predictor = loadedModel(result.error)) {
        result.code = 0;
        const HogDetection& face = faces.front();
        result.landmarks = toLandmarks((*predictor)(image, dlib::rectangle(face.left, face.top, face.right, face.bottom)));
    }
    return result;
}

} // namespace

int DLibWrapper::modelReads()
{
    return reads;
}

QString DLibWrapper::modelPath()
{
    for (const QString& folder : {applicationDataFolder(), QString("/usr/share/dlib")}) {
        const QString candidate = folder + "/" + kModelFileName;
        if (QFileInfo(candidate).isFile())
            return candidate;
    }
    return {};
}

namespace {

// The detector and the landmark model are made on threads of their own,
// side by side: the detector is needed first, the model only once a face
// was found.
std::array<std::future<void>, 2>& modelReading()
{
    static std::array<std::future<void>, 2> reading;
    return reading;
}

} // namespace

// A failed read is said by the detection that needs the model, which tries
// again.
void DLibWrapper::startReadingModel()
{
    auto& [detector, model] = modelReading();
    if (detector.valid())
        return;
    // dlib builds the detector from its own serialised form: about a sixth
    // of a second; the model takes about twice that.
    detector = std::async(std::launch::async, [] { faceDetector(); });
    model = std::async(std::launch::async, [] {
        QString error;
        loadedModel(error);
    });
}

void DLibWrapper::finishReadingModel()
{
    for (std::future<void>& reading : modelReading())
        if (reading.valid())
            reading.wait();
}

DetectionResult DLibWrapper::Detect_Facial_Points(const QImage& photo)
{
    DetectionResult result;
    if (photo.isNull()) {
        result.error = "There is no picture to look for a face on.";
        return result;
    }
    try {
        return detect(photo);
    } catch (const std::exception& failure) {
        result.error = QString("The face could not be analysed: %1").arg(failure.what());
        return result;
    }
}
