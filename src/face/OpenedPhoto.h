#pragma once

#include "FaceLandmarks.h"
#include "FaceRegions.h"
#include "PhotoDecoder.h"

#include <QImage>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <functional>

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

struct OpenResult {
    enum Outcome { Opened, NoFace, SeveralFaces, Failed };
    Outcome outcome = Failed;
    QString message; // what to tell the user when the photo was not opened
    OpenedPhoto photo;
};

// Reads the photo, finds exactly one face and derives all its regions and
// region pictures. Never throws (running out of memory is a refusal too)
// and never touches a photo already open.
OpenResult openAndAnalyse(const QString& path);

// The same for a photo already decoded from `path`.
OpenResult analysePhoto(const QString& path, DecodedPhoto decoded);

// Runs a stage of an open so that no exception leaves it: running out of
// memory and a failing library call come back as a refusal naming the file.
OpenResult guardedOpen(const QString& path, const std::function<OpenResult()>& stage);
