// libFuzzer target: arbitrary bytes as a settings file. A file that is
// accepted leaves every setting inside the range the panels can reach, and
// the spots of a photo inside the photo.
#include "EditingStateJson.h"

#include <QJsonDocument>
#include <QRectF>

#include <algorithm>
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
    std::optional<PhotoEditsOf> photo;
    QString error;
    if (!readJson(document.object(), state, error, &photo)) {
        if (error.isEmpty())
            std::abort();
        return 0;
    }
    state.forEachField(RangeCheck());
    if (photo)
        for (const PointList* spots : {&photo->edits.array_Healed_Spots, &photo->edits.array_Kept_Spots})
            if (spots->size() > kLongestPointList
                || std::ranges::any_of(*spots, [](QPointF p) { return !QRectF(0, 0, 100, 100).contains(p); }))
                std::abort();
    return 0;
}
