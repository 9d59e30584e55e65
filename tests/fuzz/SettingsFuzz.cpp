// libFuzzer target: arbitrary bytes as a settings file. A file that is
// accepted leaves every setting inside the range the panels can reach.
#include "EditingStateJson.h"

#include <QJsonDocument>

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

void requireInRange(double value, double min, double max)
{
    if (!(value >= min && value <= max))
        std::abort();
}

struct RangeCheck {
    template <typename Number>
    void operator()(const char* name, Number& value) const
    {
        if constexpr (std::is_arithmetic_v<Number>) {
            if (const SettingRange* range = settingRange(name))
                requireInRange(double(value), range->min, range->max);
        }
    }
    void operator()(const char* name, QPointF& point) const
    {
        const SettingRange* range = settingRange(name);
        requireInRange(point.x(), range->min, range->max);
        requireInRange(point.y(), range->min, range->max);
    }
    void operator()(const char* name, PointList& points) const
    {
        if (points.size() > kLongestPointList)
            std::abort();
        for (QPointF& point : points)
            (*this)(name, point);
    }
    void operator()(const char*, RgbaColor& c) const
    {
        for (float component : {c.r, c.g, c.b, c.a})
            requireInRange(component, 0, 1);
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    EditingState state;
    QString error;
    if (readJson(document.object(), state, error))
        state.forEachField(RangeCheck());
    else if (error.isEmpty())
        std::abort();
    return 0;
}
