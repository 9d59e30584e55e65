#pragma once

#include "PhotoMetadata.h"

#include <QDateTime>
#include <QImage>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

// The file types Bellavenor writes, chosen by a name's extension.
enum class PictureFormat { Png, Jpeg, WebP, Tiff };

// How a picture is encoded: its format and, for JPEG and WebP, the quality
// (1 to 100). PNG and TIFF are lossless and ignore it.
struct PictureEncoding {
    PictureFormat format = PictureFormat::Png;
    int quality = 92;
};

// The format a file name's extension asks for (.png, .jpg, .jpeg, .webp,
// .tif, .tiff, in any case), or none for any other name.
std::optional<PictureFormat> pictureFormatOf(const QString& path);

// The extensions Bellavenor writes, for messages: ".png, .jpg, .jpeg, …".
QString writtenExtensions();

// The save dialog's file types, "PNG (*.png)" and so on, each with its
// format, PNG first.
std::vector<std::pair<QString, PictureFormat>> writtenTypes();

// `path` itself when its extension names a written format; otherwise with
// the first extension of `format` added.
QString withPictureExtension(const QString& path, PictureFormat format);

// Writes `picture` to `path` as `encoding` asks, carrying the photo's
// colour profile (a photo without one gives an untagged picture) and its
// EXIF, XMP and IPTC where the format holds them. The file goes through a
// temporary file renamed into place, so a failed write leaves no half file
// and an existing file untouched. Returns why it failed, or an empty
// string; metadata that could not be written is left out and said in
// `warnings` when given.
QString writePicture(const QImage& picture, const QString& path, const PictureEncoding& encoding,
                     const PhotoMetadata& metadata, QStringList* warnings = nullptr);

// The file name of a picture rendered at `when`: the pattern
// "YYYY-MM-dd-HH-mm-ss" and ".png". "YYYY" is the week-based year, which
// around New Year can differ from the calendar year; kept as it is.
QString renderedPictureName(const QDateTime& when);

// Moves the file `from` to `to`, replacing what is there in one step: on
// the same file system by a rename over it; on another by a copy into a
// temporary file beside `to`, flushed to disk, then renamed over it. Either
// the whole new file is at `to` and `from` is gone, or nothing changed at
// either place. Returns why it failed, or an empty string.
QString moveReplacing(const QString& from, const QString& to);
