#include "CliCommands.h"
#include "DLibWrapper.h"
#include "FaceRegions.h"
#include "PhotoDecoder.h"
#include "RegionsJson.h"

#include <QJsonDocument>

#include <cstdio>

namespace {

int fail(int status, const QString& message)
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
    return status;
}

} // namespace

int runAnalyse(const QStringList& arguments)
{
    if (arguments.size() != 1)
        return fail(kCliUsage, "usage: bellavenor-cli analyse PHOTO");
    DLibWrapper::startReadingModel(); // while the photo is decoded
    const DecodedPhoto photo = decodePhoto(arguments.first());
    if (!photo.ok())
        return fail(kCliUnreadable, photo.error);
    const DetectionResult detection = DLibWrapper::Detect_Facial_Points(photo.img_Basic);
    if (!detection.ok())
        return fail(kCliUnreadable, detection.error);
    if (detection.code == 1)
        return fail(kCliNoFace, "No face was found on the picture.");
    if (detection.code == 2)
        return fail(kCliSeveralFaces, "More than one face was found on the picture.");

    const FaceRegions regions = FaceRegions::build(detection.landmarks, photo.imgSize);
    const QJsonObject analysis{
        {"result", detection.code},
        {"imageSize", QJsonArray{photo.imgSize.width(), photo.imgSize.height()}},
        {"landmarks", toJson(detection.landmarks)},
        {"facePointsInPercentRelativeToImage", toJson(toPercentOfImage(detection.landmarks, photo.imgSize))},
        {"regions", toJson(regions)},
    };
    std::fputs(QJsonDocument(analysis).toJson(QJsonDocument::Indented).constData(), stdout);
    return kCliOk;
}
