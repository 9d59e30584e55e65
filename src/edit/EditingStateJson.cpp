#include "EditingStateJson.h"

#include "RegularFile.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSaveFile>
#include <QSet>

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>

namespace {

// Settings files are a few hundred bytes; anything near this is not one.
constexpr qint64 kMaxSettingsBytes = 1 << 20;

QJsonValue toJsonValue(bool v) { return v; }
QJsonValue toJsonValue(std::uint64_t v) { return double(v); }
QJsonValue toJsonValue(std::int32_t v) { return v; }
// The shortest decimal that reads back as the same float: 0.8, not
// 0.800000011920929.
QJsonValue toJsonValue(float v)
{
    char text[32];
    const auto written = std::to_chars(text, text + sizeof text, v);
    return std::strtod(std::string(text, written.ptr).c_str(), nullptr);
}
QJsonValue toJsonValue(QPointF v) { return QJsonArray{v.x(), v.y()}; }
QJsonValue toJsonValue(const QRectF& r) { return QJsonArray{r.x(), r.y(), r.width(), r.height()}; }
QJsonValue toJsonValue(const PointList& points)
{
    QJsonArray array;
    for (const QPointF& p : points)
        array.append(toJsonValue(p));
    return array;
}
QJsonValue toJsonValue(const QList<PointList>& lists)
{
    QJsonArray array;
    for (const PointList& points : lists)
        array.append(toJsonValue(points));
    return array;
}

// A component that is a whole number of 255ths, as the hex form reads it.
bool eightBit(float component)
{
    return float(std::lround(component * 255.0f)) / 255.0f == component;
}

// "#rrggbbaa" when that is exact, else the four components: a settings file
// gives back exactly the colour it was written from (orange is 0.5 green).
QJsonValue toJsonValue(const RgbaColor& c)
{
    if (eightBit(c.r) && eightBit(c.g) && eightBit(c.b) && eightBit(c.a))
        return QString::asprintf("#%02x%02x%02x%02x", c.red8(), c.green8(), c.blue8(), c.alpha8());
    return QJsonArray{double(c.r), double(c.g), double(c.b), double(c.a)};
}

// What a value read from a file can be wrong by.
enum class Reading { Ok, WrongType, OutOfRange, TooLong };

// A number is checked against its range before it is converted, so no
// value can overflow the field it goes into.
Reading inRange(double value, const SettingRange* range)
{
    if (!std::isfinite(value))
        return Reading::OutOfRange;
    return !range || (value >= range->min && value <= range->max) ? Reading::Ok : Reading::OutOfRange;
}

Reading fromJsonValue(const QJsonValue& v, bool& out, const SettingRange*)
{
    if (!v.isBool())
        return Reading::WrongType;
    out = v.toBool();
    return Reading::Ok;
}

template <typename Whole>
Reading wholeNumber(const QJsonValue& v, Whole& out, const SettingRange* range)
{
    const double d = v.toDouble();
    if (!v.isDouble() || d != std::floor(d))
        return Reading::WrongType;
    const Reading reading = inRange(d, range);
    if (reading == Reading::Ok)
        out = Whole(d);
    return reading;
}

Reading fromJsonValue(const QJsonValue& v, std::uint64_t& out, const SettingRange* range)
{
    return wholeNumber(v, out, range);
}

Reading fromJsonValue(const QJsonValue& v, std::int32_t& out, const SettingRange* range)
{
    return wholeNumber(v, out, range);
}

Reading fromJsonValue(const QJsonValue& v, float& out, const SettingRange* range)
{
    if (!v.isDouble())
        return Reading::WrongType;
    const Reading reading = inRange(v.toDouble(), range);
    if (reading == Reading::Ok)
        out = float(v.toDouble());
    return reading;
}

Reading fromJsonValue(const QJsonValue& v, QPointF& out, const SettingRange* range)
{
    const QJsonArray a = v.toArray();
    if (!v.isArray() || a.size() != 2 || !a.at(0).isDouble() || !a.at(1).isDouble())
        return Reading::WrongType;
    if (inRange(a.at(0).toDouble(), range) != Reading::Ok || inRange(a.at(1).toDouble(), range) != Reading::Ok)
        return Reading::OutOfRange;
    out = QPointF(a.at(0).toDouble(), a.at(1).toDouble());
    return Reading::Ok;
}

// Each point a pair of numbers in the range; no more than a list may hold.
Reading fromJsonValue(const QJsonValue& v, PointList& out, const SettingRange* range)
{
    const QJsonArray a = v.toArray();
    if (!v.isArray())
        return Reading::WrongType;
    if (a.size() > kLongestPointList)
        return Reading::TooLong;
    PointList points;
    for (const QJsonValue& item : a) {
        QPointF p;
        if (const Reading reading = fromJsonValue(item, p, range); reading != Reading::Ok)
            return reading;
        points.append(p);
    }
    out = points;
    return Reading::Ok;
}

// Paths of points: each at least one point, all of them together no more
// than a list may hold.
Reading fromJsonValue(const QJsonValue& v, QList<PointList>& out, const SettingRange* range)
{
    if (!v.isArray())
        return Reading::WrongType;
    QList<PointList> lists;
    qsizetype points = 0;
    for (const QJsonValue& item : v.toArray()) {
        PointList list;
        if (const Reading reading = fromJsonValue(item, list, range); reading != Reading::Ok)
            return reading;
        if (list.isEmpty())
            return Reading::WrongType;
        if ((points += list.size()) > kLongestPointList)
            return Reading::TooLong;
        lists.append(list);
    }
    out = lists;
    return Reading::Ok;
}

// Four numbers: x, y, width and height; sizes may be negative, as a drag
// past the opposite side leaves them.
Reading fromJsonValue(const QJsonValue& v, QRectF& out, const SettingRange* range)
{
    const QJsonArray a = v.toArray();
    if (!v.isArray() || a.size() != 4)
        return Reading::WrongType;
    double n[4];
    for (int i = 0; i < 4; ++i) {
        if (!a.at(i).isDouble())
            return Reading::WrongType;
        if (n[i] = a.at(i).toDouble(); inRange(n[i], range) != Reading::Ok)
            return Reading::OutOfRange;
    }
    out = QRectF(n[0], n[1], n[2], n[3]);
    return Reading::Ok;
}

Reading colourComponents(const QJsonArray& a, RgbaColor& out)
{
    float c[4];
    for (int i = 0; i < 4; ++i) {
        if (a.size() != 4 || !a.at(i).isDouble())
            return Reading::WrongType;
        const double v = a.at(i).toDouble();
        if (!(v >= 0 && v <= 1))
            return Reading::OutOfRange;
        c[i] = float(v);
    }
    out = {c[0], c[1], c[2], c[3]};
    return Reading::Ok;
}

Reading fromJsonValue(const QJsonValue& v, RgbaColor& out, const SettingRange*)
{
    if (v.isArray())
        return colourComponents(v.toArray(), out);
    static const QRegularExpression hex("^#([0-9a-fA-F]{6}|[0-9a-fA-F]{8})$");
    const QString text = v.toString();
    if (!v.isString() || !hex.match(text).hasMatch())
        return Reading::WrongType;
    const uint value = text.mid(1).toUInt(nullptr, 16);
    const uint rgba = text.size() == 7 ? (value << 8 | 0xff) : value;
    out = {float((rgba >> 24) & 0xff) / 255, float((rgba >> 16) & 0xff) / 255, float((rgba >> 8) & 0xff) / 255,
           float(rgba & 0xff) / 255};
    return Reading::Ok;
}

// `what` names the field: a setting, or a part of what was done on a photo.
QString problemWith(const QString& what, Reading reading, const SettingRange* range)
{
    if (reading == Reading::WrongType)
        return QString("%1 has a value of the wrong type.").arg(what);
    if (reading == Reading::TooLong)
        return QString("%1 holds more than %2 points.").arg(what).arg(kLongestPointList);
    const double min = range ? range->min : 0, max = range ? range->max : 1; // colour components
    return QString("%1 must lie between %2 and %3.").arg(what).arg(min).arg(max);
}

QString problemWith(const char* name, Reading reading)
{
    return problemWith(QString("The setting \"%1\"").arg(name), reading, settingRange(name));
}

// A photo's fields: spots in percent of the photo; areas and ring points in
// its pixels, anywhere a drag can leave them.
const SettingRange kPercent{{"percent of the photo", FieldKind::Setting, 0, 100}};
const SettingRange kPixels{{"pixels", FieldKind::Setting, -1e7, 1e7}};

const SettingRange& rangeOf(PhotoEdits::Unit unit)
{
    return unit == PhotoEdits::Unit::Percent ? kPercent : kPixels;
}

bool readPhoto(const QJsonValue& value, PhotoEditsOf& photo, QString& error)
{
    const QJsonObject json = value.toObject();
    const int width = json.value("width").toInt(-1), height = json.value("height").toInt(-1);
    if (!value.isObject() || !json.value("name").isString() || width < 1 || height < 1) {
        error = "The \"photo\" part must name the photo and give its width and height.";
        return false;
    }
    photo.name = json.value("name").toString();
    photo.size = QSize(width, height);
    QSet<QString> known{"name", "width", "height", "about"};
    photo.edits.forEachField([&](const char* name, auto& field, PhotoEdits::Unit unit) {
        known.insert(name);
        if (!error.isEmpty() || !json.contains(name))
            return;
        if (const Reading reading = fromJsonValue(json.value(name), field, &rangeOf(unit)); reading != Reading::Ok)
            error = problemWith(QString("The photo's \"%1\"").arg(name), reading, &rangeOf(unit));
    });
    for (auto it = json.begin(); error.isEmpty() && it != json.end(); ++it)
        if (!known.contains(it.key()))
            error = QString("The photo has no \"%1\".").arg(it.key());
    for (PointList* ring : {&photo.edits.array_Eye_Darken_Left_Points, &photo.edits.array_Eye_Darken_Right_Points})
        if (error.isEmpty() && !ring->isEmpty() && ring->size() != 6)
            error = "An under-eye ring has six points.";
    const double h = height;
    photo.edits.path_Eye_Darken_Left = outlineThrough(photo.edits.array_Eye_Darken_Left_Points, h);
    photo.edits.path_Eye_Darken_Right = outlineThrough(photo.edits.array_Eye_Darken_Right_Points, h);
    return error.isEmpty();
}

QJsonObject toJson(const PhotoEditsOf& photo)
{
    QJsonObject json{{"about", "What was done on this photo (spots clicked, areas and rings moved): applied only "
                               "to a photo of this name and size."},
                     {"name", photo.name},
                     {"width", photo.size.width()},
                     {"height", photo.size.height()}};
    PhotoEdits edits = photo.edits;
    edits.forEachField([&](const char* name, const auto& field, PhotoEdits::Unit) { json.insert(name, toJsonValue(field)); });
    return json;
}

// The version a file says it is of; 1 when it says none.
bool versionOf(const QJsonObject& json, int& version, QString& error)
{
    const QJsonValue v = json.value("version");
    version = v.isUndefined() ? 1 : v.toInt(0);
    if (version < 1 || (!v.isUndefined() && v.toDouble() != version))
        error = "The settings file's \"version\" must be a whole number from 1 up.";
    return error.isEmpty();
}

// A version-1 file held the spots clicked as settings; they belong to a
// photo it does not name.
bool readVersionOneSpots(const QJsonObject& json, std::optional<PhotoEditsOf>* photo, QString& error)
{
    PhotoEditsOf spots;
    for (auto [name, list] : {std::pair{"array_Healed_Spots", &spots.edits.array_Healed_Spots},
                              std::pair{"array_Kept_Spots", &spots.edits.array_Kept_Spots}})
        if (json.contains(name))
            if (const Reading reading = fromJsonValue(json.value(name), *list, &kPercent); reading != Reading::Ok) {
                error = problemWith(QString("The setting \"%1\"").arg(name), reading, &kPercent);
                return false;
            }
    if (photo && !(spots.edits.array_Healed_Spots.isEmpty() && spots.edits.array_Kept_Spots.isEmpty()))
        *photo = spots;
    return true;
}

} // namespace

bool PhotoEditsOf::belongsTo(const QString& photoPath, QSize photoSize) const
{
    return !name.isEmpty() && name == QFileInfo(photoPath).fileName() && size == photoSize;
}

QString leftOutFor(const std::optional<PhotoEditsOf>& photo, const QString& photoPath, QSize photoSize)
{
    if (!photo || photo->belongsTo(photoPath, photoSize))
        return {};
    if (photo->name.isEmpty())
        return "The spots clicked in the settings file belong to the photo they were clicked on: left out.";
    return QString("What was done on %1 (%2 × %3), its spots and areas, was left out: it belongs to that photo.")
        .arg(photo->name)
        .arg(photo->size.width())
        .arg(photo->size.height());
}

QJsonObject toJson(EditingState state)
{
    QJsonObject json;
    state.forEachField([&](const char* name, const auto& field) { json.insert(name, toJsonValue(field)); });
    return json;
}

bool readJson(const QJsonObject& json, EditingState& state, QString& error, std::optional<PhotoEditsOf>* photo)
{
    int version = 1;
    if (!versionOf(json, version, error))
        return false;
    QSet<QString> known{"version"};
    if (version == 1) {
        known << "array_Healed_Spots" << "array_Kept_Spots";
        if (!readVersionOneSpots(json, photo, error))
            return false;
    } else if (json.contains("photo")) {
        known << "photo";
        PhotoEditsOf read;
        if (!readPhoto(json.value("photo"), read, error))
            return false;
        if (photo)
            *photo = read;
    }
    state.forEachField([&](const char* name, auto& field) {
        known.insert(name);
        if (!error.isEmpty() || !json.contains(name))
            return;
        if (const Reading reading = fromJsonValue(json.value(name), field, settingRange(name)); reading != Reading::Ok)
            error = problemWith(name, reading);
    });
    for (auto it = json.begin(); error.isEmpty() && it != json.end(); ++it)
        if (!known.contains(it.key()))
            error = version <= kSettingsVersion
                        ? QString("There is no setting \"%1\".").arg(it.key())
                        : QString("There is no setting \"%1\" in this version of Bellavenor: the file is of settings "
                                  "version %2, this version reads versions 1 to %3.")
                              .arg(it.key())
                              .arg(version)
                              .arg(kSettingsVersion);
    return error.isEmpty();
}

bool readSettingsFile(const QString& path, EditingState& state, QString& error, std::optional<PhotoEditsOf>* photo)
{
    QByteArray bytes;
    if (error = readRegularFile(path, kMaxSettingsBytes, bytes, "settings file"); !error.isEmpty())
        return false;
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &parseError);
    if (!document.isObject()) {
        error = QString("The settings file \"%1\" is not a JSON object: %2.")
                    .arg(QFileInfo(path).fileName(), parseError.errorString());
        return false;
    }
    // Read into a copy: a refused file changes nothing.
    EditingState read = state;
    std::optional<PhotoEditsOf> readPhoto;
    if (!readJson(document.object(), read, error, &readPhoto)) {
        error = QString("In the settings file \"%1\": %2").arg(QFileInfo(path).fileName(), error);
        return false;
    }
    state = read;
    if (photo)
        *photo = readPhoto;
    return true;
}

QJsonObject exportedSettings(const EditingState& state, const PhotoEditsOf* photo)
{
    QJsonObject json = toJson(state);
    json.insert("version", kSettingsVersion);
    if (photo)
        json.insert("photo", toJson(*photo));
    state.forEachField([&](const char* name, const auto&) {
        if (const SettingRange* range = settingRange(name); range && range->kind == FieldKind::Mode)
            json.remove(name); // the window's, not a setting
    });
    return json;
}

bool writeSettingsFile(const QString& path, const EditingState& state, QString& error, const PhotoEditsOf* photo)
{
    QSaveFile file(path);
    const QByteArray bytes = QJsonDocument(exportedSettings(state, photo)).toJson(QJsonDocument::Indented);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        error = QString("The settings could not be saved to \"%1\": %2.")
                    .arg(QDir::toNativeSeparators(path), file.errorString());
        return false;
    }
    return true;
}
