#pragma once

#include "PhotoMetadata.h"

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QStringList>

// True when the bytes start like a HEIF file: HEIC from a phone, AVIF.
bool isHeifFile(const QByteArray& bytes);

struct HeifPhoto {
    QImage image;           // upright (rotation and mirror applied), RGBA
    PhotoMetadata metadata; // its colour space (ICC or nclx), EXIF and XMP
    QSize oversize;         // the header's size when it is over the limit
    QStringList warnings;   // what was left out (an unreadable profile)
    QString error;          // what went wrong, in words; empty on success
};

// Decodes the primary image of a HEIF file. The size is read from the
// header first: a picture over `maxPixels` is not decoded, and comes back
// with only `oversize` set. Never throws but std::bad_alloc.
HeifPhoto decodeHeif(const QByteArray& bytes, qint64 maxPixels);
