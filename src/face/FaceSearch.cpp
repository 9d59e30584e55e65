#include "FaceSearch.h"

#include "DLibWrapper.h"
#include "Picture.h"

#include <QTransform>

#include <algorithm>
#include <cmath>

namespace {

// The search beyond the limits runs on a copy of at most this many pixels:
// the detector finds faces from 80 pixels up, and a face that small on a
// larger photo is found by the enlarged search only on photos of up to
// kEnlargedAtMost pixels.
constexpr double kSearchedAtMost = 2.0e6;
constexpr double kEnlargedAtMost = 1.5e6;

QTransform turnedBy(double degrees)
{
    QTransform turn;
    turn.rotate(degrees);
    return turn;
}

// Where the pixels of a picture of `size` land on it turned by `degrees`
// (the turned picture's own origin, as QImage::transformed makes it).
QTransform placementOf(QSize size, double degrees)
{
    return QImage::trueMatrix(turnedBy(degrees), size.width(), size.height());
}

double areaOf(const FaceFrame& frame)
{
    const QRectF box = frame.outline.boundingRect();
    return box.width() * box.height();
}

// The faces found on `photo` turned by `degrees` (a copy `scale` times its
// size), as frames on the photo and boxes on the full-size turned photo.
void addTurned(std::vector<FaceFrame>& frames, const QImage& copy, double scale, QSize photoSize, double degrees)
{
    const QImage turned = degrees == 0 ? copy : copy.transformed(turnedBy(degrees), Qt::SmoothTransformation);
    const QTransform back = placementOf(copy.size(), degrees).inverted();
    const QTransform onFullTurned = placementOf(photoSize, degrees);
    for (const QRect& face : DLibWrapper::Find_Faces(turned).faces) {
        FaceFrame frame;
        frame.outline = QTransform::fromScale(1 / scale, 1 / scale).map(back.map(QPolygonF(QRectF(face))));
        frame.box = onFullTurned.map(frame.outline).boundingRect().toAlignedRect().adjusted(0, 0, -1, -1);
        const bool quarter = std::abs(std::fmod(std::abs(degrees), 180.0) - 90) < 1e-9;
        frame.quarterTurns = quarter ? (degrees > 0 ? 1 : 3) : 0;
        frame.degrees = quarter ? 0 : degrees;
        frames.push_back(frame);
    }
}

} // namespace

FaceFrame FaceFrame::drawn(const QRect& box)
{
    return {QPolygonF(QRectF(box)), box, 0, 0};
}

std::vector<FaceFrame> framesOf(const std::vector<QRect>& faces)
{
    std::vector<FaceFrame> frames;
    for (const QRect& face : faces)
        frames.push_back(FaceFrame::drawn(face));
    return frames;
}

bool searchedEnlarged(QSize photo)
{
    return double(photo.width()) * photo.height() <= kEnlargedAtMost;
}

std::vector<FaceFrame> facesBeyondLimits(const QImage& photo)
{
    std::vector<FaceFrame> frames;
    const double pixels = double(photo.width()) * photo.height();
    if (pixels <= 0)
        return frames;
    const double scale = std::min(1.0, std::sqrt(kSearchedAtMost / pixels));
    const QImage copy = scale < 1 ? photo.scaled(QSize(int(photo.width() * scale), int(photo.height() * scale)),
                                                 Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                                  : photo;
    const double exactScale = double(copy.width()) / photo.width();
    for (double degrees : {90.0, -90.0, 30.0, -30.0})
        addTurned(frames, copy, exactScale, photo.size(), degrees);
    if (searchedEnlarged(photo.size()))
        addTurned(frames, photo.scaled(photo.size() * 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation), 2,
                  photo.size(), 0);
    std::stable_sort(frames.begin(), frames.end(), [](const FaceFrame& a, const FaceFrame& b) { return areaOf(a) > areaOf(b); });
    return frames;
}

OpenResult openWithFace(OpenResult refused, const FaceFrame& frame)
{
    OpenResult result;
    result.faces = refused.faces;
    OpenedPhoto& photo = refused.photo;
    if (frame.quarterTurns != 0) {
        photo.img_Basic = photo.img_Basic.transformed(turnedBy(90.0 * frame.quarterTurns));
        photo.imgSize = photo.imgSize.transposed();
    }
    const QImage searched = frame.degrees == 0 ? photo.img_Basic
                                               : photo.img_Basic.transformed(turnedBy(frame.degrees), Qt::SmoothTransformation);
    // A face the detector found at the photo's edge has a box that runs
    // past it: taken on the part inside.
    const QRect box = frame.box & searched.rect();
    if (box.width() < 8 || box.height() < 8) {
        result.message = "The face's frame must lie inside the photo and be at least 8 pixels wide and high.";
        return result;
    }
    DetectionResult landmarks = DLibWrapper::Predict_Facial_Points(searched, box);
    if (!landmarks.ok()) {
        result.message = landmarks.error;
        return result;
    }
    if (frame.degrees != 0) {
        const QTransform back = placementOf(photo.img_Basic.size(), frame.degrees).inverted();
        for (QPointF& point : landmarks.landmarks)
            point = back.map(point);
    }
    photo.facePointsRelativeToImageSize = std::move(landmarks.landmarks);
    deriveRegions(photo);
    result.photo = std::move(photo);
    result.outcome = OpenResult::Opened;
    return result;
}
