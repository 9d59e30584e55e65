#include "CliCommands.h"
#include "DLibWrapper.h"
#include "FaceOptions.h"
#include "OpenedPhoto.h"
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

QJsonArray facesOf(const OpenedPhoto& photo)
{
    QJsonArray faces;
    for (int i = 0; i < photo.faceCount(); ++i) {
        const OpenedPhoto face = photo.asFace(i);
        faces.append(QJsonObject{{"landmarks", toJson(face.facePointsRelativeToImageSize)},
                                 {"facePointsInPercentRelativeToImage", toJson(face.facePointsInPercentRelativeToImage)},
                                 {"regions", toJson(FaceRegions::build(face.facePointsRelativeToImageSize, photo.imgSize))}});
    }
    return faces;
}

} // namespace

int runAnalyse(const QStringList& given)
{
    QStringList arguments = given;
    FacePick pick;
    if (QString error; !takeFaceOptions(arguments, pick, error))
        return fail(kCliUsage, error);
    if (arguments.size() != 1 || arguments.first().startsWith('-'))
        return fail(kCliUsage, "usage: bellavenor-cli analyse PHOTO [--face N | --face-box X,Y,W,H | --all-faces]");
    DLibWrapper::startReadingModel(); // while the photo is decoded
    DecodedPhoto decoded = decodePhoto(arguments.first());
    if (!decoded.ok())
        return fail(kCliUnreadable, decoded.error);
    const QSize size = decoded.img_Basic.size();
    const OpenResult opened = analysePhoto(arguments.first(), std::move(decoded), pick);
    switch (opened.outcome) {
    case OpenResult::Opened: break;
    case OpenResult::NoFace: return fail(kCliNoFace, opened.message);
    case OpenResult::SeveralFaces: return fail(kCliSeveralFaces, severalFacesMessage(int(opened.faces.size())));
    case OpenResult::NoSuchFace: return fail(kCliUsage, noSuchFaceMessage(pick, int(opened.faces.size()), size));
    case OpenResult::Failed: return fail(kCliUnreadable, opened.message);
    }

    const OpenedPhoto& photo = opened.photo;
    const FaceLandmarks& landmarks = photo.facePointsRelativeToImageSize;
    QJsonObject analysis{
        {"result", 0},
        {"imageSize", QJsonArray{photo.imgSize.width(), photo.imgSize.height()}},
        {"landmarks", toJson(landmarks)},
        {"facePointsInPercentRelativeToImage", toJson(toPercentOfImage(landmarks, photo.imgSize))},
        {"regions", toJson(FaceRegions::build(landmarks, photo.imgSize))},
    };
    if (!pick.isDefault()) { // which face of how many
        analysis.insert("facesFound", int(opened.faces.size()));
        analysis.insert("face", opened.photo.faceNumber);
    }
    if (pick.every) // each face as the one above, the largest first
        analysis.insert("faces", facesOf(photo));
    std::fputs(QJsonDocument(analysis).toJson(QJsonDocument::Indented).constData(), stdout);
    return kCliOk;
}
