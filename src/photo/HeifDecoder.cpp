#include "HeifDecoder.h"

#include "Picture.h"

#include <libheif/heif.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

namespace {

template <auto Free>
struct Freeing {
    template <typename T>
    void operator()(T* object) const { Free(object); }
};
using Context = std::unique_ptr<heif_context, Freeing<heif_context_free>>;
using Handle = std::unique_ptr<heif_image_handle, Freeing<heif_image_handle_release>>;
using Image = std::unique_ptr<heif_image, Freeing<heif_image_release>>;
using Nclx = std::unique_ptr<heif_color_profile_nclx, Freeing<heif_nclx_color_profile_free>>;

struct Failure {
    QString reason;
};

void check(const heif_error& error)
{
    if (error.code == heif_error_Memory_allocation_error)
        throw std::bad_alloc();
    if (error.code != heif_error_Ok)
        throw Failure{QString::fromUtf8(error.message ? error.message : "unknown error")};
}

QColorSpace::TransferFunction transferOf(heif_transfer_characteristics transfer, float& gamma)
{
    switch (transfer) {
    case heif_transfer_characteristic_linear:
        return QColorSpace::TransferFunction::Linear;
    case heif_transfer_characteristic_ITU_R_BT_470_6_System_M:
        gamma = 2.2f;
        return QColorSpace::TransferFunction::Gamma;
    case heif_transfer_characteristic_ITU_R_BT_470_6_System_B_G:
        gamma = 2.8f;
        return QColorSpace::TransferFunction::Gamma;
    default:
        // sRGB itself, and the video curves (BT.709, BT.601, BT.2020) that
        // photos are shown with as if they were sRGB's.
        return QColorSpace::TransferFunction::SRgb;
    }
}

// The colour space an nclx box names, through the primaries libheif has
// already turned into chromaticities.
QColorSpace colourSpaceOf(const heif_color_profile_nclx& nclx)
{
    float gamma = 0;
    const QColorSpace::TransferFunction transfer = transferOf(nclx.transfer_characteristics, gamma);
    switch (nclx.color_primaries) {
    case heif_color_primaries_ITU_R_BT_709_5:
    case heif_color_primaries_unspecified:
        return QColorSpace(QColorSpace::Primaries::SRgb, transfer, gamma);
    case heif_color_primaries_SMPTE_EG_432_1:
        return QColorSpace(QColorSpace::Primaries::DciP3D65, transfer, gamma);
    default:
        return QColorSpace(QPointF(nclx.color_primary_white_x, nclx.color_primary_white_y),
                           QPointF(nclx.color_primary_red_x, nclx.color_primary_red_y),
                           QPointF(nclx.color_primary_green_x, nclx.color_primary_green_y),
                           QPointF(nclx.color_primary_blue_x, nclx.color_primary_blue_y), transfer, gamma);
    }
}

QColorSpace colourSpaceOf(const heif_image_handle* handle, QStringList& warnings)
{
    switch (heif_image_handle_get_color_profile_type(handle)) {
    case heif_color_profile_type_prof:
    case heif_color_profile_type_rICC: {
        QByteArray icc(qsizetype(heif_image_handle_get_raw_color_profile_size(handle)), '\0');
        check(heif_image_handle_get_raw_color_profile(handle, icc.data()));
        const QColorSpace space = QColorSpace::fromIccProfile(icc);
        if (!space.isValid())
            warnings << kUnreadableProfile;
        return space;
    }
    case heif_color_profile_type_nclx: {
        heif_color_profile_nclx* raw = nullptr;
        check(heif_image_handle_get_nclx_color_profile(handle, &raw));
        const Nclx nclx(raw);
        return colourSpaceOf(*nclx);
    }
    default:
        return {};
    }
}

QByteArray metadataBlock(const heif_image_handle* handle, heif_item_id id)
{
    QByteArray block(qsizetype(heif_image_handle_get_metadata_size(handle, id)), '\0');
    check(heif_image_handle_get_metadata(handle, id, block.data()));
    return block;
}

// A HEIF Exif item starts with the offset of the TIFF header behind it.
QByteArray tiffOfExifItem(const QByteArray& item)
{
    if (item.size() < 4)
        return {};
    const quint32 offset = (quint32(uchar(item[0])) << 24) | (quint32(uchar(item[1])) << 16)
                           | (quint32(uchar(item[2])) << 8) | quint32(uchar(item[3]));
    return offset <= quint32(item.size() - 4) ? item.mid(4 + qsizetype(offset)) : QByteArray();
}

void readMetadataBlocks(const heif_image_handle* handle, PhotoMetadata& metadata)
{
    const int count = heif_image_handle_get_number_of_metadata_blocks(handle, nullptr);
    std::vector<heif_item_id> ids(std::size_t(std::max(count, 0)));
    heif_image_handle_get_list_of_metadata_block_IDs(handle, nullptr, ids.data(), count);
    for (const heif_item_id id : ids) {
        const char* type = heif_image_handle_get_metadata_type(handle, id);
        const char* content = heif_image_handle_get_metadata_content_type(handle, id);
        if (type && std::strcmp(type, "Exif") == 0 && metadata.exif.isEmpty())
            metadata.exif = tiffOfExifItem(metadataBlock(handle, id));
        else if (type && std::strcmp(type, "mime") == 0 && content && std::strcmp(content, "application/rdf+xml") == 0)
            metadata.xmp = metadataBlock(handle, id);
    }
}

QImage toQImage(const heif_image* decoded)
{
    int stride = 0;
    const uint8_t* pixels = heif_image_get_plane_readonly(decoded, heif_channel_interleaved, &stride);
    const QSize size(heif_image_get_width(decoded, heif_channel_interleaved),
                     heif_image_get_height(decoded, heif_channel_interleaved));
    if (!pixels || size.isEmpty())
        throw Failure{"no pixels"};
    QImage image(size, QImage::Format_RGBA8888);
    requireAllocated(image, size);
    for (int y = 0; y < size.height(); ++y)
        std::memcpy(image.scanLine(y), pixels + qsizetype(y) * stride, std::size_t(size.width()) * 4);
    return toPicture(image);
}

HeifPhoto decodePrimaryImage(const QByteArray& bytes, qint64 maxPixels)
{
    HeifPhoto photo;
    const Context context(heif_context_alloc());
    if (!context)
        throw std::bad_alloc();
    check(heif_context_read_from_memory_without_copy(context.get(), bytes.constData(), std::size_t(bytes.size()),
                                                       nullptr));
    heif_image_handle* rawHandle = nullptr;
    check(heif_context_get_primary_image_handle(context.get(), &rawHandle));
    const Handle handle(rawHandle);
    const QSize size(heif_image_handle_get_width(handle.get()), heif_image_handle_get_height(handle.get()));
    if (qint64(size.width()) * size.height() > maxPixels) {
        photo.oversize = size;
        return photo;
    }
    photo.metadata.colourSpace = colourSpaceOf(handle.get(), photo.warnings);
    readMetadataBlocks(handle.get(), photo.metadata);
    heif_image* rawImage = nullptr;
    check(heif_decode_image(handle.get(), &rawImage, heif_colorspace_RGB, heif_chroma_interleaved_RGBA, nullptr));
    const Image decoded(rawImage);
    photo.image = toQImage(decoded.get());
    photo.image.setColorSpace(photo.metadata.colourSpace); // as Qt's readers tag theirs
    return photo;
}

} // namespace

bool isHeifFile(const QByteArray& bytes)
{
    const heif_filetype_result type =
        heif_check_filetype(reinterpret_cast<const uint8_t*>(bytes.constData()), int(std::min<qsizetype>(bytes.size(), 64)));
    return type == heif_filetype_yes_supported || type == heif_filetype_yes_unsupported;
}

HeifPhoto decodeHeif(const QByteArray& bytes, qint64 maxPixels)
{
    try {
        return decodePrimaryImage(bytes, maxPixels);
    } catch (const Failure& failure) {
        HeifPhoto refused;
        refused.error = failure.reason;
        return refused;
    }
}
