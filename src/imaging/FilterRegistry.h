#pragma once

#include "TRCIFilter.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <memory>

// Category names a filter can be listed under.
inline const QString kCategoryStillImage = "CICategoryStillImage";
inline const QString kCategoryVideo = "CICategoryVideo";
inline const QString kCategoryColorAdjustment = "CICategoryColorAdjustment";
inline const QString kCategoryInterlaced = "CICategoryInterlaced";

// The named filters of the program: "TRCIHighPass", "TRCIHighPassSkinSmoothing"
// and "TRCIRGBToneCurve", each with a display name and its categories.
class FilterRegistry {
public:
    struct Entry {
        QString displayName;
        QStringList categories;
        std::function<std::unique_ptr<TRCIFilter>()> make;
    };

    // The registry, with the three filters registered on first use.
    static const FilterRegistry& shared();

    const Entry* find(const QString& name) const;
    QStringList names() const;

private:
    std::map<QString, Entry> entries_;
};

// Makes registered filters by name.
class TRCIFilterConstructor {
public:
    static TRCIFilterConstructor& constructor();

    // A new filter of the registered class `name`, or none.
    std::unique_ptr<TRCIFilter> filterWithName(const QString& name) const;

private:
    TRCIFilterConstructor() = default; // only the shared constructor exists
};
