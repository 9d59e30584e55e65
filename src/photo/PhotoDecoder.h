#pragma once

#include <QImage>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include "PhotoMetadata.h"

// Pictures above this many pixels are refused before they are decoded: the
// retouching keeps several full-size layers of a photo in memory.
inline constexpr qint64 kMaxPhotoPixels = 120'000'000;

// A photo as read from its file, once, for both face detection and display.
struct DecodedPhoto {
    // Picture form, upright (the file's orientation tag applied): the largest
    // image of the file, at imgSize.
    QImage img_Basic;
    // The largest width and the largest height over all images in the file
    // (a multi-page TIFF, an animated GIF); for a single picture its own size.
    // Always img_Basic's size, so the face found on it and the regions
    // flipped by it agree.
    QSizeF imgSize;
    // Its colour space, EXIF, XMP and IPTC, for the pictures made from it.
    PhotoMetadata metadata;
    // What was left out of an otherwise good photo (an unreadable profile or
    // metadata block): the command-line tool says so, the window opens it.
    QStringList warnings;
    QString error; // says what went wrong and names the file; empty on success
    bool tooLarge = false; // refused for its size, before its pixels were read

    bool ok() const { return error.isEmpty(); }
};

// Reads a BMP, JPEG, PNG, GIF, TIFF, WebP, HEIC/HEIF or AVIF file. Never throws: a missing, empty,
// truncated, unsupported or oversized file (any of its images over the
// pixel limit) comes back with an error before its pixels are read.
DecodedPhoto decodePhoto(const QString& path);

// The same for the bytes of a file already read; `path` names it in messages.
DecodedPhoto decodePhotoData(const QByteArray& bytes, const QString& path);

// The extensions of the pictures Bellavenor reads, lower case.
inline const QStringList& readPictureExtensions()
{
    static const QStringList extensions{"bmp", "jpg", "gif", "png", "jpeg", "tif", "tiff", "webp", "heic", "heif", "avif"};
    return extensions;
}
