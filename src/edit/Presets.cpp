#include "Presets.h"

#include <QCollator>
#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

#include <algorithm>

namespace {

constexpr qsizetype kLongestName = 80;

} // namespace

QString defaultPresetsFolder()
{
    // Both programs set their own name; the presets must be one folder.
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return QDir(base).filePath("Bellavenor/presets");
}

QStringList presetNames(const QString& folder)
{
    QStringList names;
    for (const QFileInfo& file : QDir(folder).entryInfoList({"*.json"}, QDir::Files | QDir::Readable))
        names << file.completeBaseName();
    QCollator collator;
    collator.setNumericMode(true);
    std::sort(names.begin(), names.end(), collator);
    return names;
}

QString presetPath(const QString& folder, const QString& name, QString& error)
{
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty() || trimmed.size() > kLongestName || trimmed.contains('/') || trimmed.startsWith('.')) {
        error = QCoreApplication::translate("Presets",
                                            "A preset's name is 1 to %1 characters, without \"/\" and not starting "
                                            "with \".\": \"%2\".")
                    .arg(kLongestName)
                    .arg(name);
        return {};
    }
    return QDir(folder).filePath(trimmed + ".json");
}
