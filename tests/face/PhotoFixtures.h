#pragma once

// Photos as phones and cameras write them, made from the test portrait:
// other colour spaces, HEIF, camera metadata.

#include <QBuffer>
#include <QColorSpace>
#include <QImage>
#include <QImageWriter>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop
#include <libheif/heif.h>

#include <cstring>
#include <map>
#include <string>

// The sRGB picture's colours as values of `space`, tagged with it.
inline QImage inColourSpace(QImage srgb, const QColorSpace& space)
{
    srgb = srgb.convertToFormat(QImage::Format_RGB888);
    srgb.setColorSpace(QColorSpace::SRgb);
    if (space.isValid())
        return srgb.convertedToColorSpace(space);
    srgb.setColorSpace(QColorSpace()); // untagged
    return srgb;
}

inline QByteArray encodedAs(const QImage& image, const char* format, int quality = 100)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setQuality(quality);
    writer.write(image);
    return bytes;
}

// A HEIF file (HEVC or AV1) of the picture, its pixels stored turned as
// `orientation` undoes, with the picture's ICC profile; empty when this
// libheif has no encoder for the format. Full chroma unless asked for the
// 4:2:0 phones write.
inline QByteArray heifOf(const QImage& picture, heif_compression_format format,
                         heif_orientation orientation = heif_orientation_normal, const char* chroma = "444")
{
    heif_context* context = heif_context_alloc();
    heif_encoder* encoder = nullptr;
    QByteArray file;
    if (heif_context_get_encoder_for_format(context, format, &encoder).code == heif_error_Ok) {
        heif_encoder_set_lossy_quality(encoder, 95);
        // Full chroma: with 4:2:0 the detector sees a second face on the
        // portrait's mission patch, as it does on the enlarged portrait.
        heif_encoder_set_parameter(encoder, "chroma", chroma);
        heif_encoder_set_parameter(encoder, "speed", "8"); // AV1: a test needs no small file
        const QImage rgb = picture.convertToFormat(QImage::Format_RGB888);
        heif_image* image = nullptr;
        heif_image_create(rgb.width(), rgb.height(), heif_colorspace_RGB, heif_chroma_interleaved_RGB, &image);
        heif_image_add_plane(image, heif_channel_interleaved, rgb.width(), rgb.height(), 8);
        int stride = 0;
        uint8_t* plane = heif_image_get_plane(image, heif_channel_interleaved, &stride);
        for (int y = 0; y < rgb.height(); ++y)
            std::memcpy(plane + y * stride, rgb.constScanLine(y), std::size_t(rgb.width()) * 3);
        const QByteArray icc = picture.colorSpace().iccProfile();
        if (!icc.isEmpty())
            heif_image_set_raw_color_profile(image, "prof", icc.constData(), std::size_t(icc.size()));
        heif_encoding_options* options = heif_encoding_options_alloc();
        options->image_orientation = orientation;
        heif_context_encode_image(context, image, encoder, options, nullptr);
        heif_encoding_options_free(options);
        heif_image_release(image);
        heif_encoder_release(encoder);
        heif_writer writer{1, [](heif_context*, const void* data, size_t size, void* into) {
                               static_cast<QByteArray*>(into)->append(static_cast<const char*>(data), qsizetype(size));
                               return heif_error{heif_error_Ok, heif_suberror_Unspecified, "ok"};
                           }};
        heif_context_write(context, &writer, &file);
    }
    heif_context_free(context);
    return file;
}

// The file with these EXIF tags written into it (key → value as text),
// and an EXIF thumbnail when `thumbnail` is given.
inline QByteArray withExif(const QByteArray& file, const std::map<std::string, std::string>& tags,
                           const QByteArray& thumbnail = {})
{
    auto image = Exiv2::ImageFactory::open(reinterpret_cast<const Exiv2::byte*>(file.constData()), long(file.size()));
    image->readMetadata();
    for (const auto& [key, value] : tags)
        image->exifData()[key] = value;
    if (!thumbnail.isEmpty())
        Exiv2::ExifThumb(image->exifData())
            .setJpegThumbnail(reinterpret_cast<const Exiv2::byte*>(thumbnail.constData()), long(thumbnail.size()));
    image->writeMetadata();
    auto& io = image->io();
    io.seek(0, Exiv2::BasicIo::beg);
    const Exiv2::DataBuf all = io.read(io.size());
    return QByteArray(reinterpret_cast<const char*>(all.pData_), all.size_);
}

// The EXIF tags of a file, as text, for the keys asked; "" for a missing one.
inline std::map<std::string, std::string> exifOf(const QByteArray& file, std::initializer_list<const char*> keys)
{
    auto image = Exiv2::ImageFactory::open(reinterpret_cast<const Exiv2::byte*>(file.constData()), long(file.size()));
    image->readMetadata();
    std::map<std::string, std::string> found;
    for (const char* key : keys) {
        const auto datum = image->exifData().findKey(Exiv2::ExifKey(key));
        found[key] = datum == image->exifData().end() ? "" : datum->toString();
    }
    return found;
}
