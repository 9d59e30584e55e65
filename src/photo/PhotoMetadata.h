#pragma once

#include <QByteArray>
#include <QColorSpace>
#include <QString>
#include <QStringList>

// What a photo's file says about its pixels besides the pixels themselves,
// carried from the open to every picture made from the photo. The blobs are
// kept as read, so a copy is cheap and nothing is interpreted until a
// picture is written.
struct PhotoMetadata {
    // The colour space the pixel values are in. Invalid for a photo that
    // names none: such a photo is sRGB and its pictures stay untagged.
    QColorSpace colourSpace;
    QByteArray exif; // TIFF-structured EXIF (byte order mark first), or empty
    QByteArray xmp;  // the XMP packet, or empty
    QByteArray iptc; // IPTC IIM records, or empty

    bool hasTags() const { return !exif.isEmpty() || !xmp.isEmpty() || !iptc.isEmpty(); }
    bool operator==(const PhotoMetadata&) const = default;
};

// Said when a photo's colour profile cannot be used.
inline const QString kUnreadableProfile =
    QStringLiteral("The photo's colour profile could not be read; its colours are taken as sRGB.");

// The space pictures of this photo are painted in: its own, or sRGB.
QColorSpace workingColourSpace(const PhotoMetadata& metadata);

// True when pixel values of this photo mean what they mean in sRGB, so that
// nothing needs converting for a screen or for colours chosen in sRGB.
bool isSrgb(const PhotoMetadata& metadata);

// The EXIF, XMP and IPTC of a file's bytes (JPEG, PNG, TIFF, WebP). A file
// without them gives empty blobs; the colour space is left to the decoder.
// Broken or hostile metadata is left out and said in `warnings`; this never
// throws. `hasIccProfile`, when given, tells whether the file embeds an ICC
// profile, readable or not.
PhotoMetadata readMetadata(const QByteArray& fileBytes, QStringList& warnings, bool* hasIccProfile = nullptr);

// Writes the photo's EXIF, XMP and IPTC into an encoded picture (`encoded`
// is a whole JPEG, PNG, TIFF or WebP file), with the orientation set to 1
// (the pixels are already upright) and the EXIF thumbnail dropped; the
// picture's own structure and colour profile stay. Returns why the
// metadata had to be left out (then `encoded` is unchanged), or an empty
// string. Never throws.
QString embedMetadata(QByteArray& encoded, const PhotoMetadata& metadata);
