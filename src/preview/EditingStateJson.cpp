#include "EditingStateJson.h"

#include <QJsonArray>
#include <QSet>

#include <cmath>
#include <type_traits>

namespace {

QJsonValue toJsonValue(bool v) { return v; }
QJsonValue toJsonValue(std::uint64_t v) { return double(v); }
QJsonValue toJsonValue(std::int32_t v) { return v; }
QJsonValue toJsonValue(float v) { return double(v); }
QJsonValue toJsonValue(QPointF v) { return QJsonArray{v.x(), v.y()}; }

QJsonValue toJsonValue(const RgbaColor& c)
{
    return QString::asprintf("#%02x%02x%02x%02x", c.red8(), c.green8(), c.blue8(), c.alpha8());
}

bool fromJsonValue(const QJsonValue& v, bool& out)
{
    out = v.toBool();
    return v.isBool();
}

bool fromJsonValue(const QJsonValue& v, std::uint64_t& out)
{
    const double d = v.toDouble(-1);
    out = std::uint64_t(d);
    return v.isDouble() && d >= 0 && d == std::floor(d);
}

bool fromJsonValue(const QJsonValue& v, std::int32_t& out)
{
    const double d = v.toDouble(0.5);
    out = std::int32_t(d);
    return v.isDouble() && d == std::floor(d);
}

bool fromJsonValue(const QJsonValue& v, float& out)
{
    out = float(v.toDouble());
    return v.isDouble();
}

bool fromJsonValue(const QJsonValue& v, QPointF& out)
{
    const QJsonArray a = v.toArray();
    out = QPointF(a.at(0).toDouble(), a.at(1).toDouble());
    return v.isArray() && a.size() == 2 && a.at(0).isDouble() && a.at(1).isDouble();
}

bool fromJsonValue(const QJsonValue& v, RgbaColor& out)
{
    const QString text = v.toString();
    if (!v.isString() || !text.startsWith('#') || (text.size() != 7 && text.size() != 9))
        return false;
    bool ok = false;
    const uint value = text.mid(1).toUInt(&ok, 16);
    const uint rgba = text.size() == 7 ? (value << 8 | 0xff) : value;
    out = {float((rgba >> 24) & 0xff) / 255, float((rgba >> 16) & 0xff) / 255, float((rgba >> 8) & 0xff) / 255,
           float(rgba & 0xff) / 255};
    return ok;
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
        if (!fromJsonValue(json.value(name), field))
            error = QString("The setting \"%1\" has a value of the wrong type.").arg(name);
    });
    for (auto it = json.begin(); error.isEmpty() && it != json.end(); ++it)
        if (!known.contains(it.key()))
            error = QString("There is no setting \"%1\".").arg(it.key());
    return error.isEmpty();
}
