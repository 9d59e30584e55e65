#include "FilterRegistry.h"

#include "TRCIHighPass.h"
#include "TRCIHighPassSkinSmoothing.h"
#include "TRCIRGBToneCurve.h"

namespace {

template <typename Filter>
FilterRegistry::Entry entryOf(const QString& displayName, const QStringList& categories)
{
    return {displayName, categories, [] { return std::make_unique<Filter>(); }};
}

} // namespace

const FilterRegistry& FilterRegistry::shared()
{
    static const FilterRegistry registry = [] {
        FilterRegistry r;
        r.entries_["TRCIHighPass"] =
            entryOf<TRCIHighPass>("High Pass", {kCategoryStillImage, kCategoryVideo});
        r.entries_["TRCIHighPassSkinSmoothing"] =
            entryOf<TRCIHighPassSkinSmoothing>("High Pass Skin Smoothing", {kCategoryStillImage, kCategoryVideo});
        r.entries_["TRCIRGBToneCurve"] = entryOf<TRCIRGBToneCurve>(
            "RGB Tone Curve", {kCategoryStillImage, kCategoryVideo, kCategoryColorAdjustment, kCategoryInterlaced});
        return r;
    }();
    return registry;
}

const FilterRegistry::Entry* FilterRegistry::find(const QString& name) const
{
    const auto found = entries_.find(name);
    return found == entries_.end() ? nullptr : &found->second;
}

QStringList FilterRegistry::names() const
{
    QStringList list;
    for (const auto& [name, entry] : entries_)
        list.append(name);
    return list;
}

TRCIFilterConstructor& TRCIFilterConstructor::constructor()
{
    static TRCIFilterConstructor shared;
    return shared;
}

std::unique_ptr<TRCIFilter> TRCIFilterConstructor::filterWithName(const QString& name) const
{
    const FilterRegistry::Entry* entry = FilterRegistry::shared().find(name);
    return entry ? entry->make() : nullptr;
}
