#include "OpenedPhoto.h"

#include "DLibWrapper.h"
#include "FaceSearch.h"
#include "PhotoDecoder.h"

#include <QFileInfo>
#include <QLineF>

#include <algorithm>
#include <exception>
#include <limits>
#include <new>

namespace {

QString fileNameOf(const QString& path)
{
    return "\"" + QFileInfo(path).fileName() + "\"";
}

// The decoded photo kept in a refusal for a face, landmarks to come.
OpenedPhoto withoutFace(const QString& path, DecodedPhoto decoded)
{
    OpenedPhoto photo;
    photo.path = path;
    photo.img_Basic = std::move(decoded.img_Basic);
    photo.imgSize = decoded.imgSize;
    photo.metadata = std::move(decoded.metadata);
    return photo;
}

// The face `pick` asks for among those found, when it asks for one.
OpenResult takePicked(OpenResult found, const FacePick& pick)
{
    const int count = int(found.faces.size());
    const int number = pick.largest ? 1 : pick.number;
    if (number > count) {
        found.outcome = OpenResult::NoSuchFace;
        found.message = count == 0 ? "No face was found on the picture."
                                   : QString("The picture has %1 face%2.").arg(count).arg(count == 1 ? "" : "s");
        return found;
    }
    const FaceFrame frame = FaceFrame::drawn(found.faces[size_t(number - 1)]);
    OpenResult opened = openWithFace(std::move(found), frame);
    opened.photo.faceNumber = number;
    opened.photo.facesFound = count;
    return opened;
}

} // namespace

OpenResult openEveryFace(OpenResult found)
{
    const std::vector<QRect> boxes = found.faces;
    OpenResult opened = takePicked(std::move(found), FacePick{1, false, {}, false});
    if (opened.outcome != OpenResult::Opened)
        return opened;
    OpenedPhoto& photo = opened.photo;
    for (size_t i = 1; i < boxes.size(); ++i) {
        OpenResult other;
        other.photo.img_Basic = photo.img_Basic;
        other.photo.imgSize = photo.imgSize;
        other = openWithFace(std::move(other), FaceFrame::drawn(boxes[i]));
        if (other.outcome != OpenResult::Opened)
            continue; // a face the detector saw but the landmarks cannot be placed on
        photo.otherFaces.push_back(faceOf(std::move(other.photo.facePointsRelativeToImageSize), photo.imgSize));
    }
    return opened;
}

namespace {

OpenResult analyseDecoded(const QString& path, DecodedPhoto decoded, const FacePick& pick)
{
    OpenResult result;
    if (!decoded.ok()) {
        result.message = decoded.error;
        return result;
    }
    if (!pick.box.isNull()) {
        result.photo = withoutFace(path, std::move(decoded));
        if (!result.photo.img_Basic.rect().contains(pick.box)) {
            result.outcome = OpenResult::NoSuchFace;
            result.message = "The face's box lies outside the photo.";
            return result;
        }
        return openWithFace(std::move(result), FaceFrame::drawn(pick.box));
    }
    DetectionResult detection = DLibWrapper::Detect_Facial_Points(decoded.img_Basic);
    if (!detection.ok()) {
        result.message = detection.error;
        return result;
    }
    result.faces = detection.faces;
    if (detection.code != 0) {
        result.outcome = detection.code == 2 ? OpenResult::SeveralFaces : OpenResult::NoFace;
        result.message = detection.code == 2 ? "More than one face was found on the picture."
                                             : "No face was found on the picture.";
        result.photo = withoutFace(path, std::move(decoded));
        if (pick.isDefault() || result.faces.empty())
            return result;
        return pick.every ? openEveryFace(std::move(result)) : takePicked(std::move(result), pick);
    }
    if (pick.number > 1) // one face, and another asked for
        return takePicked(std::move(result), pick);

    OpenedPhoto& photo = result.photo = withoutFace(path, std::move(decoded));
    photo.facePointsRelativeToImageSize = std::move(detection.landmarks);
    deriveRegions(photo);
    result.outcome = OpenResult::Opened;
    photo.faceNumber = photo.facesFound = 1;
    return result;
}

} // namespace

PhotoFace faceOf(FaceLandmarks landmarks, QSizeF imgSize)
{
    PhotoFace face;
    face.regions = FaceRegions::build(landmarks, imgSize);
    face.facePointsRelativeToImageSize = std::move(landmarks);
    face.facePointsInPercentRelativeToImage = toPercentOfImage(face.facePointsRelativeToImageSize, imgSize);
    face.regions.array_Face_Points = toPercentOfImage(face.regions.array_Face_Points, imgSize);
    return face;
}

OpenedPhoto OpenedPhoto::asFace(int index) const
{
    OpenedPhoto seen = *this;
    seen.otherFaces.clear();
    if (index == 0)
        return seen;
    const PhotoFace& face = otherFaces[size_t(index - 1)];
    seen.facePointsRelativeToImageSize = face.facePointsRelativeToImageSize;
    seen.facePointsInPercentRelativeToImage = face.facePointsInPercentRelativeToImage;
    seen.regions = face.regions;
    return seen;
}

namespace {

// How far `pixel` lies from the face's centre, in the face's width.
double distanceInFaces(QPointF pixel, const FaceLandmarks& face)
{
    if (face.size() < kLandmarkCount)
        return std::numeric_limits<double>::max();
    QPointF centre;
    for (QPointF p : face)
        centre += p / face.size();
    return QLineF(pixel, centre).length() / std::max(1.0, QLineF(face[0], face[16]).length());
}

} // namespace

int OpenedPhoto::faceAt(QPointF pixel) const
{
    int nearest = 0;
    double best = distanceInFaces(pixel, facePointsRelativeToImageSize);
    for (int i = 1; i < faceCount(); ++i)
        if (const double d = distanceInFaces(pixel, landmarksOfFace(i)); d < best) {
            best = d;
            nearest = i;
        }
    return nearest;
}

void deriveRegions(OpenedPhoto& photo)
{
    PhotoFace face = faceOf(photo.facePointsRelativeToImageSize, photo.imgSize);
    photo.facePointsInPercentRelativeToImage = std::move(face.facePointsInPercentRelativeToImage);
    photo.regions = std::move(face.regions);
}

OpenResult guardedOpen(const QString& path, const std::function<OpenResult()>& stage)
{
    OpenResult refused;
    try {
        return stage();
    } catch (const std::bad_alloc&) {
        refused.message = QString("There is not enough memory to open %1.").arg(fileNameOf(path));
    } catch (const std::exception& failure) {
        refused.message = QString("The picture %1 could not be analysed: %2").arg(fileNameOf(path), failure.what());
    }
    return refused;
}

OpenResult openAndAnalyse(const QString& path)
{
    return guardedOpen(path, [&] { return analyseDecoded(path, decodePhoto(path), {}); });
}

OpenResult analysePhoto(const QString& path, DecodedPhoto decoded, const FacePick& pick)
{
    return guardedOpen(path, [&] { return analyseDecoded(path, std::move(decoded), pick); });
}
