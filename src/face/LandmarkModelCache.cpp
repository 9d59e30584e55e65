#include "LandmarkModelCache.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <dlib/image_processing/shape_predictor.h>

#include <cstdint>
#include <cstring>
#include <sstream>

#include <dlib/revision.h>

namespace {

// dlib keeps the model's arrays private and fills them only from its own
// serialised form; its public constructor derives the pixel anchors anew,
// which would not give the same landmarks to the bit. An explicit
// instantiation may name private members, so these reach the four arrays.
template <typename Tag, typename Tag::Type Member>
struct Reach {
    friend typename Tag::Type memberOf(Tag) { return Member; }
};

struct InitialShape {
    using Type = dlib::matrix<float, 0, 1> dlib::shape_predictor::*;
    friend Type memberOf(InitialShape);
};
struct Forests {
    using Type = std::vector<std::vector<dlib::impl::regression_tree>> dlib::shape_predictor::*;
    friend Type memberOf(Forests);
};
struct Anchors {
    using Type = std::vector<std::vector<unsigned long>> dlib::shape_predictor::*;
    friend Type memberOf(Anchors);
};
struct Deltas {
    using Type = std::vector<std::vector<dlib::vector<float, 2>>> dlib::shape_predictor::*;
    friend Type memberOf(Deltas);
};

template struct Reach<InitialShape, &dlib::shape_predictor::initial_shape>;
template struct Reach<Forests, &dlib::shape_predictor::forests>;
template struct Reach<Anchors, &dlib::shape_predictor::anchor_idx>;
template struct Reach<Deltas, &dlib::shape_predictor::deltas>;

constexpr char kMagic[8] = {'B', 'V', 'L', 'M', 'C', 'A', 'C', '1'};

// The model file's identity as the cache records it.
struct Stamp {
    std::int64_t size = 0, modified = 0;
};

// A checksum of the cache's bytes, so that a damaged number is noticed:
// 64-bit words mixed as a multiply-rotate hash (a few milliseconds for the
// whole cache; Qt offers only 16-bit CRCs).
std::uint64_t checksumOf(const char* bytes, std::size_t size)
{
    std::uint64_t hash = 0x9E3779B97F4A7C15ull ^ size;
    std::size_t i = 0;
    for (; i + 8 <= size; i += 8) {
        std::uint64_t word;
        std::memcpy(&word, bytes + i, 8);
        hash = ((hash ^ word) * 0xFF51AFD7ED558CCDull);
        hash ^= hash >> 29;
    }
    for (; i < size; ++i)
        hash = (hash ^ std::uint8_t(bytes[i])) * 0x100000001B3ull;
    return hash;
}

Stamp stampOf(const QString& modelPath)
{
    const QFileInfo file(modelPath);
    return {file.size(), file.lastModified().toMSecsSinceEpoch()};
}

// Appends numbers in the machine's own byte order: the cache never leaves
// the machine that wrote it.
class Writer {
public:
    template <typename Number>
    void put(Number value)
    {
        bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    void putFloats(const float* values, std::size_t count)
    {
        put<std::uint64_t>(count);
        bytes_.append(reinterpret_cast<const char*>(values), qsizetype(count * sizeof(float)));
    }
    const QByteArray& bytes() const { return bytes_; }

private:
    QByteArray bytes_;
};

// Reads what Writer wrote; any count beyond the bytes left fails the read
// before anything is allocated.
class Reader {
public:
    explicit Reader(const QByteArray& bytes)
        : at_(bytes.constData())
        , end_(bytes.constData() + bytes.size())
    {
    }
    bool ok() const { return ok_; }
    bool atEnd() const { return at_ == end_; }

    template <typename Number>
    Number get()
    {
        Number value{};
        take(&value, sizeof value);
        return value;
    }
    // A count of items of `itemBytes` each that the bytes left can hold.
    std::size_t count(std::size_t itemBytes)
    {
        const auto n = get<std::uint64_t>();
        if (n > std::uint64_t(end_ - at_) / std::max<std::size_t>(itemBytes, 1))
            ok_ = false;
        return ok_ ? std::size_t(n) : 0;
    }
    void take(void* into, std::size_t bytes)
    {
        if (!ok_ || bytes > std::size_t(end_ - at_)) {
            ok_ = false;
            return;
        }
        std::memcpy(into, at_, bytes);
        at_ += bytes;
    }
    void getFloats(dlib::matrix<float, 0, 1>& values)
    {
        const std::size_t n = count(sizeof(float));
        values.set_size(long(n));
        if (n)
            take(&values(0), n * sizeof(float));
    }

private:
    const char* at_;
    const char* end_;
    bool ok_ = true;
};

void writeModel(Writer& out, const dlib::shape_predictor& model)
{
    const auto& shape = model.*memberOf(InitialShape{});
    out.putFloats(shape.size() ? &shape(0) : nullptr, std::size_t(shape.size()));
    const auto& forests = model.*memberOf(Forests{});
    out.put<std::uint64_t>(forests.size());
    for (const auto& forest : forests) {
        out.put<std::uint64_t>(forest.size());
        for (const auto& tree : forest) {
            out.put<std::uint64_t>(tree.splits.size());
            for (const auto& split : tree.splits) {
                out.put<std::uint64_t>(split.idx1);
                out.put<std::uint64_t>(split.idx2);
                out.put<float>(split.thresh);
            }
            out.put<std::uint64_t>(tree.leaf_values.size());
            for (const auto& leaf : tree.leaf_values)
                out.putFloats(leaf.size() ? &leaf(0) : nullptr, std::size_t(leaf.size()));
        }
    }
    for (const auto& anchors : model.*memberOf(Anchors{})) {
        out.put<std::uint64_t>(anchors.size());
        for (unsigned long anchor : anchors)
            out.put<std::uint64_t>(anchor);
    }
    for (const auto& deltas : model.*memberOf(Deltas{})) {
        out.put<std::uint64_t>(deltas.size());
        for (const auto& delta : deltas)
            out.put<float>(delta.x()), out.put<float>(delta.y());
    }
}

// What the predictor indexes with stays inside what it indexes: a cache
// damaged where its counts still add up is refused, not run.
bool consistent(dlib::shape_predictor& model)
{
    const auto& shape = model.*memberOf(InitialShape{});
    const auto& forests = model.*memberOf(Forests{});
    const auto& anchors = model.*memberOf(Anchors{});
    const auto& deltas = model.*memberOf(Deltas{});
    if (shape.size() == 0 || shape.size() % 2 != 0)
        return false;
    for (std::size_t cascade = 0; cascade < forests.size(); ++cascade) {
        const std::size_t pixels = anchors[cascade].size();
        if (deltas[cascade].size() != pixels)
            return false;
        for (unsigned long anchor : anchors[cascade])
            if (anchor >= static_cast<unsigned long>(shape.size() / 2))
                return false;
        for (const auto& tree : forests[cascade]) {
            if (tree.leaf_values.size() != tree.splits.size() + 1)
                return false;
            for (const auto& split : tree.splits)
                if (split.idx1 >= pixels || split.idx2 >= pixels)
                    return false;
            for (const auto& leaf : tree.leaf_values)
                if (leaf.size() != shape.size())
                    return false;
        }
    }
    return true;
}

bool readModel(Reader& in, dlib::shape_predictor& model)
{
    in.getFloats(model.*memberOf(InitialShape{}));
    auto& forests = model.*memberOf(Forests{});
    forests.resize(in.count(8));
    for (auto& forest : forests) {
        forest.resize(in.count(16));
        for (auto& tree : forest) {
            tree.splits.resize(in.count(20));
            for (auto& split : tree.splits) {
                split.idx1 = in.get<std::uint64_t>();
                split.idx2 = in.get<std::uint64_t>();
                split.thresh = in.get<float>();
            }
            tree.leaf_values.resize(in.count(8));
            for (auto& leaf : tree.leaf_values)
                in.getFloats(leaf);
        }
    }
    auto& anchors = model.*memberOf(Anchors{});
    anchors.resize(forests.size());
    for (auto& cascade : anchors) {
        cascade.resize(in.count(8));
        for (unsigned long& anchor : cascade)
            anchor = in.get<std::uint64_t>();
    }
    auto& deltas = model.*memberOf(Deltas{});
    deltas.resize(forests.size());
    for (auto& cascade : deltas) {
        cascade.resize(in.count(8));
        for (auto& delta : cascade) {
            delta.x() = in.get<float>();
            delta.y() = in.get<float>();
        }
    }
    return in.ok() && in.atEnd() && consistent(model);
}

} // namespace

namespace {

// A file of `payload` and its checksum, written whole or not at all.
void writeChecked(const QString& path, QByteArray payload)
{
    const std::uint64_t sum = checksumOf(payload.constData(), std::size_t(payload.size()));
    payload.append(reinterpret_cast<const char*>(&sum), sizeof sum);
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(payload) == payload.size())
        file.commit();
}

QString detectorPath()
{
    return QFileInfo(LandmarkModelCache::cachePath()).absoluteDir().filePath(
        QString("face-detector-%1.%2.%3.dat").arg(DLIB_MAJOR_VERSION).arg(DLIB_MINOR_VERSION).arg(DLIB_PATCH_VERSION));
}

} // namespace

bool LandmarkModelCache::readDetector(dlib::frontal_face_detector& detector)
{
    QFile file(detectorPath());
    constexpr qint64 kSum = sizeof(std::uint64_t);
    if (!file.open(QIODevice::ReadOnly) || file.size() > (qint64(1) << 28) || file.size() < kSum)
        return false;
    const uchar* mapped = file.map(0, file.size());
    if (!mapped)
        return false;
    const std::size_t payload = std::size_t(file.size() - kSum);
    std::uint64_t recorded = 0;
    std::memcpy(&recorded, mapped + payload, kSum);
    if (recorded != checksumOf(reinterpret_cast<const char*>(mapped), payload))
        return false;
    try {
        std::istringstream in(std::string(reinterpret_cast<const char*>(mapped), payload));
        dlib::deserialize(detector, in);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void LandmarkModelCache::writeDetector(const dlib::frontal_face_detector& detector)
{
    std::ostringstream out;
    dlib::serialize(detector, out);
    const std::string bytes = out.str();
    writeChecked(detectorPath(), QByteArray(bytes.data(), qsizetype(bytes.size())));
}

QString LandmarkModelCache::cachePath()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation))
        .filePath("Bellavenor/landmark-model.bin");
}

bool LandmarkModelCache::read(const QString& modelPath, dlib::shape_predictor& model)
{
    QFile file(cachePath());
    constexpr qsizetype kSum = sizeof(std::uint64_t);
    if (!file.open(QIODevice::ReadOnly) || file.size() > (qint64(1) << 31) || file.size() < kSum)
        return false;
    // Mapped, not copied: the numbers go straight from the page cache into
    // the model.
    const uchar* mapped = file.map(0, file.size());
    if (!mapped)
        return false;
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(mapped), file.size() - kSum);
    std::uint64_t recorded = 0;
    std::memcpy(&recorded, mapped + bytes.size(), kSum);
    if (recorded != checksumOf(bytes.constData(), std::size_t(bytes.size())))
        return false;
    Reader in(bytes);
    char magic[sizeof kMagic] = {};
    in.take(magic, sizeof magic);
    const Stamp stamp = stampOf(modelPath);
    const bool same = std::memcmp(magic, kMagic, sizeof kMagic) == 0 && in.get<std::int64_t>() == stamp.size
                      && in.get<std::int64_t>() == stamp.modified;
    if (same && readModel(in, model))
        return true;
    model = dlib::shape_predictor();
    return false;
}

void LandmarkModelCache::write(const QString& modelPath, const dlib::shape_predictor& model)
{
    Writer out;
    for (char c : kMagic)
        out.put(c);
    const Stamp stamp = stampOf(modelPath);
    out.put(stamp.size);
    out.put(stamp.modified);
    writeModel(out, model);
    out.put(checksumOf(out.bytes().constData(), std::size_t(out.bytes().size())));
    QDir().mkpath(QFileInfo(cachePath()).absolutePath());
    QSaveFile file(cachePath()); // whole or not at all: a reader never sees half a cache
    if (file.open(QIODevice::WriteOnly) && file.write(out.bytes()) == out.bytes().size())
        file.commit();
}
