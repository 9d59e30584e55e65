#include "OpenedPhoto.h"

#include "DLibWrapper.h"
#include "FaceSearch.h"
#include "PhotoDecoder.h"

#include <QFileInfo>

#include <exception>
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
    opened.faceTaken = number;
    return opened;
}

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
        return pick.isDefault() || result.faces.empty() ? result : takePicked(std::move(result), pick);
    }
    if (pick.number > 1) // one face, and another asked for
        return takePicked(std::move(result), pick);

    OpenedPhoto& photo = result.photo = withoutFace(path, std::move(decoded));
    photo.facePointsRelativeToImageSize = std::move(detection.landmarks);
    deriveRegions(photo);
    result.outcome = OpenResult::Opened;
    result.faceTaken = 1;
    return result;
}

} // namespace

void deriveRegions(OpenedPhoto& photo)
{
    photo.regions = FaceRegions::build(photo.facePointsRelativeToImageSize, photo.imgSize);
    photo.facePointsInPercentRelativeToImage = toPercentOfImage(photo.facePointsRelativeToImageSize, photo.imgSize);
    photo.regions.array_Face_Points = toPercentOfImage(photo.regions.array_Face_Points, photo.imgSize);
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
