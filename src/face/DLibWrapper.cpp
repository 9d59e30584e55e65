#include "DLibWrapper.h"

#include "DataFolder.h"
#include "HogFaceDetector.h"
#include "LandmarkModelCache.h"
#include "Picture.h"

#include <QFileInfo>
#include <QtDebug>

#include <dlib/image_processing.h>
#include <dlib/opencv/cv_image.h>

#include <opencv2/core.hpp>

#include <algorithm>
#include <array>
#include <functional>
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
    static const dlib::frontal_face_detector detector = [] {
        dlib::frontal_face_detector built;
        if (!LandmarkModelCache::readDetector(built)) {
            built = dlib::get_frontal_face_detector();
            LandmarkModelCache::writeDetector(built);
        }
        return built;
    }();
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
        if (!LandmarkModelCache::read(path, fresh)) {
            dlib::deserialize(QFile::encodeName(path).toStdString()) >> fresh;
            LandmarkModelCache::write(path, fresh);
        }
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

// dlib reads colour photos as R, G, B bytes; its detector takes the
// strongest gradient over the three channels, which it would not do on
// four.
QImage rgbOf(const QImage& photo)
{
    QImage rgb = photo.convertToFormat(QImage::Format_RGB888);
    requireAllocated(rgb, photo.size());
    return rgb;
}

// The faces, largest first; ties keep dlib's order (left to right).
std::vector<QRect> facesOn(const QImage& rgb)
{
    const RgbPixels pixels{rgb.constBits(), rgb.width(), rgb.height(), size_t(rgb.bytesPerLine())};
    std::vector<QRect> faces;
    for (const HogDetection& face : detectFaces(faceDetector(), pixels, 0.0))
        faces.push_back(QRect(QPoint(int(face.left), int(face.top)), QPoint(int(face.right), int(face.bottom))));
    std::stable_sort(faces.begin(), faces.end(), [](const QRect& a, const QRect& b) {
        return qint64(a.width()) * a.height() > qint64(b.width()) * b.height();
    });
    return faces;
}

// The landmarks in `box`; the pixels are wrapped, not copied again.
FaceLandmarks landmarksIn(const QImage& rgb, const QRect& box, QString& error)
{
    const dlib::shape_predictor* predictor = loadedModel(error);
    if (!predictor)
        return {};
    const cv::Mat pixels(rgb.height(), rgb.width(), CV_8UC3, const_cast<uchar*>(rgb.constBits()),
                         size_t(rgb.bytesPerLine()));
    const dlib::cv_image<dlib::rgb_pixel> image(pixels);
    return toLandmarks((*predictor)(image, dlib::rectangle(box.left(), box.top(), box.right(), box.bottom())));
}

// Faces are looked for while the model may still be read on another
// thread; the landmarks of the one face wait for it.
DetectionResult detect(const QImage& photo)
{
    const QImage rgb = rgbOf(photo);
    DetectionResult result;
    result.faces = facesOn(rgb);
    result.code = result.faces.empty() ? 1 : result.faces.size() > 1 ? 2 : 0;
    if (result.code == 0)
        result.landmarks = landmarksIn(rgb, result.faces.front(), result.error);
    return result;
}

// A dlib call whose failure comes back as an error.
DetectionResult guarded(const QImage& photo, const std::function<DetectionResult()>& call)
{
    DetectionResult result;
    if (photo.isNull()) {
        result.error = "There is no picture to look for a face on.";
        return result;
    }
    try {
        return call();
    } catch (const std::exception& failure) {
        result.error = QString("The face could not be analysed: %1").arg(failure.what());
        return result;
    }
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
    return guarded(photo, [&] { return detect(photo); });
}

DetectionResult DLibWrapper::Find_Faces(const QImage& photo)
{
    return guarded(photo, [&] {
        DetectionResult result;
        result.faces = facesOn(rgbOf(photo));
        result.code = result.faces.empty() ? 1 : result.faces.size() > 1 ? 2 : 0;
        return result;
    });
}

DetectionResult DLibWrapper::Predict_Facial_Points(const QImage& photo, const QRect& box)
{
    return guarded(photo, [&] {
        DetectionResult result;
        result.landmarks = landmarksIn(rgbOf(photo), box, result.error);
        result.code = 0;
        result.faces = {box};
        return result;
    });
}
