#include "OpenedPhoto.h"

#include "DLibWrapper.h"
#include "PhotoDecoder.h"

OpenResult openAndAnalyse(const QString& path)
{
    return analysePhoto(path, decodePhoto(path));
}

OpenResult analysePhoto(const QString& path, DecodedPhoto decoded)
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
    photo.facePointsRelativeToImageSize = std::move(detection.landmarks);
    photo.regions = FaceRegions::build(photo.facePointsRelativeToImageSize, photo.imgSize);
    photo.images = RegionImages::build(photo.img_Basic, photo.imgSize, photo.regions);
    photo.facePointsInPercentRelativeToImage = toPercentOfImage(photo.facePointsRelativeToImageSize, photo.imgSize);
    photo.regions.array_Face_Points = toPercentOfImage(photo.regions.array_Face_Points, photo.imgSize);
    result.outcome = OpenResult::Opened;
    return result;
}
