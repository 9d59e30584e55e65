#include "OpenedPhoto.h"

#include "DLibWrapper.h"
#include "PhotoDecoder.h"

#include <QFileInfo>

#include <exception>
#include <new>

namespace {

QString fileNameOf(const QString& path)
{
    return "\"" + QFileInfo(path).fileName() + "\"";
}

OpenResult analyseDecoded(const QString& path, DecodedPhoto decoded)
{
    OpenResult result;
    if (!decoded.ok()) {
        result.message = decoded.error;
        return result;
    }
    DetectionResult detection = DLibWrapper::Detect_Facial_Points(decoded.img_Basic);
    if (!detection.ok()) {
        result.message = detection.error;
        return result;
    }
    if (detection.code == 2) {
        result.outcome = OpenResult::SeveralFaces;
        result.message = "More than one face was found on the picture.";
        return result;
    }
    if (detection.code != 0) {
        result.outcome = OpenResult::NoFace;
        result.message = "No face was found on the picture.";
        return result;
    }

    OpenedPhoto& photo = result.photo;
    photo.path = path;
    photo.img_Basic = std::move(decoded.img_Basic);
    photo.imgSize = decoded.imgSize;
    photo.metadata = std::move(decoded.metadata);
    photo.facePointsRelativeToImageSize = std::move(detection.landmarks);
    deriveRegions(photo);
    result.outcome = OpenResult::Opened;
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
    return guardedOpen(path, [&] { return analyseDecoded(path, decodePhoto(path)); });
}

OpenResult analysePhoto(const QString& path, DecodedPhoto decoded)
{
    return guardedOpen(path, [&] { return analyseDecoded(path, std::move(decoded)); });
}
