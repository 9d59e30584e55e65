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
QJsonValue toJsonValue(const PointList& points)
{
    QJsonArray array;
    for (const QPointF& p : points)
        array.append(toJsonValue(p));
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

QString problemWith(const char* name, Reading reading)
{
    if (reading == Reading::WrongType)
        return QString("The setting \"%1\" has a value of the wrong type.").arg(name);
    if (reading == Reading::TooLong)
        return QString("The setting \"%1\" holds more than %2 points.").arg(name).arg(kLongestPointList);
    const SettingRange* range = settingRange(name);
    const double min = range ? range->min : 0, max = range ? range->max : 1; // colour components
    return QString("The setting \"%1\" must lie between %2 and %3.").arg(name).arg(min).arg(max);
}

} // namespace

QJsonObject toJson(EditingState state)
{
    QJsonObject json;
    state.forEachField([&](const char* name, const auto& field) { json.insert(name, toJsonValue(field)); });
    return json;
}

bool readJson(const QJsonObject& json, EditingState& state, QString& error)
{
    QSet<QString> known;
    state.forEachField([&](const char* name, auto& field) {
        known.insert(name);
        if (!error.isEmpty() || !json.contains(name))
            return;
        if (const Reading reading = fromJsonValue(json.value(name), field, settingRange(name)); reading != Reading::Ok)
            error = problemWith(name, reading);
    });
    for (auto it = json.begin(); error.isEmpty() && it != json.end(); ++it)
        if (!known.contains(it.key()))
            error = QString("There is no setting \"%1\".").arg(it.key());
    return error.isEmpty();
}

bool readSettingsFile(const QString& path, EditingState& state, QString& error)
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
    if (!readJson(document.object(), read, error)) {
        error = QString("In the settings file \"%1\": %2").arg(QFileInfo(path).fileName(), error);
        return false;
    }
    state = read;
    return true;
}

QJsonObject exportedSettings(const EditingState& state)
{
    QJsonObject json = toJson(state);
    state.forEachField([&](const char* name, const auto&) {
        if (const SettingRange* range = settingRange(name); range && range->kind == FieldKind::Mode)
            json.remove(name); // the window's, not a setting
    });
    return json;
}

bool writeSettingsFile(const QString& path, const EditingState& state, QString& error)
{
    QSaveFile file(path);
    const QByteArray bytes = QJsonDocument(exportedSettings(state)).toJson(QJsonDocument::Indented);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        error = QString("The settings could not be saved to \"%1\": %2.")
                    .arg(QDir::toNativeSeparators(path), file.errorString());
        return false;
    }
    return true;
}
