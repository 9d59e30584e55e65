#include "PhotoMetadata.h"

// exiv2 0.27's headers still name std::auto_ptr.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop

#include <algorithm>
#include <exception>
#include <mutex>
#include <set>
#include <string>

namespace {

// Tags that describe how a file stores its own pixels: they belong to the
// picture being written, never to the photo it was made from.
const std::set<std::string> kStructureTags = {
    "Exif.Image.NewSubfileType",     "Exif.Image.ImageWidth",       "Exif.Image.ImageLength",
    "Exif.Image.BitsPerSample",      "Exif.Image.Compression",      "Exif.Image.PhotometricInterpretation",
    "Exif.Image.StripOffsets",       "Exif.Image.SamplesPerPixel",  "Exif.Image.RowsPerStrip",
    "Exif.Image.StripByteCounts",    "Exif.Image.PlanarConfiguration", "Exif.Image.TileWidth",
    "Exif.Image.TileLength",         "Exif.Image.TileOffsets",      "Exif.Image.TileByteCounts",
    "Exif.Image.SubIFDs",            "Exif.Image.InterColorProfile", "Exif.Image.ExtraSamples",
    "Exif.Image.SampleFormat",       "Exif.Image.Predictor",        "Exif.Image.JPEGInterchangeFormat",
    "Exif.Image.JPEGInterchangeFormatLength",
};

// exiv2 keeps process-wide state: its XMP toolkit must be set up once, with
// a lock since a batch reads and writes two photos' metadata at once, and
// its log would otherwise print warnings about every odd file on stderr,
// where the command-line tool's messages go.
void prepareExiv2()
{
    static std::once_flag once;
    static std::recursive_mutex xmp;
    std::call_once(once, [] {
        Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
        Exiv2::XmpParser::initialize(
            [](void* lock, bool take) {
                auto* mutex = static_cast<std::recursive_mutex*>(lock);
                take ? mutex->lock() : mutex->unlock();
            },
            &xmp);
    });
}

auto openBytes(const QByteArray& bytes)
{
    prepareExiv2();
    return Exiv2::ImageFactory::open(reinterpret_cast<const Exiv2::byte*>(bytes.constData()), long(bytes.size()));
}

QByteArray toBytes(const Exiv2::byte* data, std::size_t size)
{
    return QByteArray(reinterpret_cast<const char*>(data), qsizetype(size));
}

QByteArray encodedExif(const Exiv2::ExifData& exif)
{
    if (exif.empty())
        return {};
    Exiv2::Blob blob;
    Exiv2::ExifParser::encode(blob, Exiv2::littleEndian, exif);
    return toBytes(blob.data(), blob.size());
}

QByteArray encodedIptc(const Exiv2::IptcData& iptc)
{
    if (iptc.empty())
        return {};
    const Exiv2::DataBuf buffer = Exiv2::IptcParser::encode(iptc);
    return toBytes(buffer.pData_, std::size_t(std::max<long>(buffer.size_, 0)));
}

// The photo's EXIF on top of what the written picture already has, upright
// and without the thumbnail of the photo's pixels.
void mergeExif(Exiv2::ExifData& target, const QByteArray& exif)
{
    Exiv2::ExifData photo;
    Exiv2::ExifParser::decode(photo, reinterpret_cast<const Exiv2::byte*>(exif.constData()), uint32_t(exif.size()));
    Exiv2::ExifThumb(photo).erase();
    for (const Exiv2::Exifdatum& datum : photo) {
        if (kStructureTags.count(datum.key()) == 0 && target.findKey(Exiv2::ExifKey(datum.key())) == target.end())
            target.add(datum);
    }
    if (target.findKey(Exiv2::ExifKey("Exif.Image.Orientation")) != target.end())
        target["Exif.Image.Orientation"] = uint16_t(1);
}

void mergeXmp(Exiv2::XmpData& target, const QByteArray& xmp)
{
    if (Exiv2::XmpParser::decode(target, xmp.toStdString()) != 0)
        throw Exiv2::Error(Exiv2::kerErrorMessage, "unreadable XMP packet");
    if (target.findKey(Exiv2::XmpKey("Xmp.tiff.Orientation")) != target.end())
        target["Xmp.tiff.Orientation"] = "1";
}

void mergeIptc(Exiv2::IptcData& target, const QByteArray& iptc)
{
    if (Exiv2::IptcParser::decode(target, reinterpret_cast<const Exiv2::byte*>(iptc.constData()), uint32_t(iptc.size()))
        != 0)
        throw Exiv2::Error(Exiv2::kerErrorMessage, "unreadable IPTC records");
}

QByteArray wholeFile(Exiv2::BasicIo& io)
{
    io.seek(0, Exiv2::BasicIo::beg);
    const Exiv2::DataBuf buffer = io.read(io.size());
    return toBytes(buffer.pData_, std::size_t(std::max<long>(buffer.size_, 0)));
}

} // namespace

QColorSpace workingColourSpace(const PhotoMetadata& metadata)
{
    return metadata.colourSpace.isValid() ? metadata.colourSpace : QColorSpace(QColorSpace::SRgb);
}

bool isSrgb(const PhotoMetadata& metadata)
{
    return workingColourSpace(metadata) == QColorSpace(QColorSpace::SRgb);
}

namespace {

// Whether exiv2 reads this kind of file at all: BMP and GIF carry none of
// what it copies, and an empty or unknown file is no damaged one.
bool knownToExiv2(const QByteArray& bytes)
{
    try {
        prepareExiv2();
        return Exiv2::ImageFactory::getType(reinterpret_cast<const Exiv2::byte*>(bytes.constData()), long(bytes.size()))
               != Exiv2::ImageType::none;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace

PhotoMetadata readMetadata(const QByteArray& fileBytes, QStringList& warnings, bool* hasIccProfile)
{
    PhotoMetadata metadata;
    if (!knownToExiv2(fileBytes))
        return metadata;
    try {
        auto image = openBytes(fileBytes);
        image->readMetadata();
        if (hasIccProfile)
            *hasIccProfile = image->iccProfileDefined();
        metadata.exif = encodedExif(image->exifData());
        metadata.iptc = encodedIptc(image->iptcData());
        metadata.xmp = QByteArray::fromStdString(image->xmpPacket());
    } catch (const std::exception& failure) {
        // exiv2 gives up on the whole file over a broken profile.
        const auto* exiv2 = dynamic_cast<const Exiv2::AnyError*>(&failure);
        if (hasIccProfile && exiv2 && exiv2->code() == Exiv2::kerInvalidIccProfile)
            *hasIccProfile = true;
        warnings << QString("The photo's metadata could not be read and is left out: %1.").arg(failure.what());
        return {};
    }
    return metadata;
}

QString embedMetadata(QByteArray& encoded, const PhotoMetadata& metadata)
{
    if (!metadata.hasTags())
        return {};
    try {
        auto image = openBytes(encoded);
        image->readMetadata(); // the picture's own structure and profile
        if (!metadata.exif.isEmpty())
            mergeExif(image->exifData(), metadata.exif);
        if (!metadata.xmp.isEmpty())
            mergeXmp(image->xmpData(), metadata.xmp);
        if (!metadata.iptc.isEmpty())
            mergeIptc(image->iptcData(), metadata.iptc);
        image->writeMetadata();
        QByteArray written = wholeFile(image->io());
        if (written.isEmpty())
            return "The photo's metadata could not be written and is left out.";
        encoded = std::move(written);
    } catch (const std::exception& failure) {
        return QString("The photo's metadata could not be written and is left out: %1.").arg(failure.what());
    }
    return {};
}
