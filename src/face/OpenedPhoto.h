#pragma once

#include "FaceLandmarks.h"
#include "FaceRegions.h"
#include "PhotoDecoder.h"

#include <QImage>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <functional>
#include <vector>

// One face of a photo retouched with every face: its landmarks (photo
// pixels, y down), in percent, and its regions, as OpenedPhoto has them.
struct PhotoFace {
    FaceLandmarks facePointsRelativeToImageSize;
    PointList facePointsInPercentRelativeToImage;
    FaceRegions regions;
};

// Everything derived from one opened photo: made in one piece by
// openAndAnalyse and swapped in whole, so a refused photo leaves nothing
// half-changed.
struct OpenedPhoto {
    QString path;
    QImage img_Basic;
    QSizeF imgSize; // img_Basic's size: the largest width and height in the file
    // The colour space img_Basic's values are in, and the tags every picture
    // made from it carries.
    PhotoMetadata metadata;
    FaceLandmarks facePointsRelativeToImageSize;
    PointList facePointsInPercentRelativeToImage;
    // The regions; array_Face_Points is already in percent of the photo.
    // The pictures of the regions (RegionImages.h) are made by the effects
    // that paint with them, when they first do.
    FaceRegions regions;
    // Where this picture lies in the photo the user opened, in percent of
    // that photo (y down): all of it, or the part a preview frame shows.
    // Points the user clicks are kept in percent of the photo opened.
    QRectF partOfOpened{0, 0, 100, 100};
    // With every face retouched, the faces after the one above (the
    // largest), largest first; empty when one face is.
    std::vector<PhotoFace> otherFaces;
    // Which face the detector found this is (1-based, largest first; 0 for
    // a frame found otherwise or drawn), of how many it found.
    int faceNumber = 0, facesFound = 0;

    int faceCount() const { return 1 + int(otherFaces.size()); }
    // The same photo seen as face `index` (0 is the one above): that face's
    // landmarks and regions in the fields every effect reads.
    OpenedPhoto asFace(int index) const;
    // Face `index`'s landmarks and regions, without a copy of the photo.
    const FaceLandmarks& landmarksOfFace(int index) const
    {
        return index == 0 ? facePointsRelativeToImageSize : otherFaces[size_t(index - 1)].facePointsRelativeToImageSize;
    }
    const FaceRegions& regionsOfFace(int index) const
    {
        return index == 0 ? regions : otherFaces[size_t(index - 1)].regions;
    }
    // The face a pixel (y down) belongs to: the one whose centre is
    // nearest, measured in each face's own width.
    int faceAt(QPointF pixel) const;

    bool isEmpty() const { return img_Basic.isNull(); }
    // The pixel (y down) of this picture at `percent` of the photo opened.
    QPointF pixelAtOpenedPercent(QPointF percent) const
    {
        const QRectF& r = partOfOpened;
        return {(percent.x() - r.x()) / r.width() * imgSize.width(),
                (percent.y() - r.y()) / r.height() * imgSize.height()};
    }
};

// Fills the regions and the percent landmarks from the photo's size and
// landmarks.
void deriveRegions(OpenedPhoto& photo);
PhotoFace faceOf(FaceLandmarks landmarks, QSizeF imgSize);

struct OpenResult {
    enum Outcome { Opened, NoFace, SeveralFaces, Failed, NoSuchFace };
    Outcome outcome = Failed;
    QString message; // what to tell the user when the photo was not opened
    // Opened: the photo and its face. NoFace and SeveralFaces: the decoded
    // photo without landmarks, so that a face can be chosen or marked on it
    // without reading the file again.
    OpenedPhoto photo;
    // Every face the detector found, largest first (which of them was taken:
    // photo.faceNumber).
    std::vector<QRect> faces;
};

// Which face an open takes. By default exactly one face, refusing a photo
// with none or several; or the Nth face found (1-based, largest first), the
// largest face, or the face in a box drawn on the upright photo (pixels,
// right and bottom inclusive).
struct FacePick {
    int number = 0;
    bool largest = false;
    QRect box;
    // Every face found, each predicted on its box as the Nth would be.
    bool every = false;

    bool isDefault() const { return number == 0 && !largest && box.isNull() && !every; }
};

// Reads the photo, finds exactly one face and derives all its regions and
// region pictures. Never throws (running out of memory is a refusal too)
// and never touches a photo already open.
OpenResult openAndAnalyse(const QString& path);

// The same for a photo already decoded from `path`, taking the face `pick`
// says. A face number beyond the faces found is NoSuchFace; a box outside
// the photo is Failed.
OpenResult analysePhoto(const QString& path, DecodedPhoto decoded, const FacePick& pick = {});

// Completes an open refused for several faces (`found` holds the decoded
// photo and the faces) with every face: the largest as the photo's face,
// the others beside it, each predicted on its own box exactly as taking
// that face alone predicts it.
OpenResult openEveryFace(OpenResult found);

// Runs a stage of an open so that no exception leaves it: running out of
// memory and a failing library call come back as a refusal naming the file.
OpenResult guardedOpen(const QString& path, const std::function<OpenResult()>& stage);
