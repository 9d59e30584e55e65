#include "WorkingFolder.h"

#include <QDir>
#include <QFileInfo>

QString workingFolderPath(const QString& documentsFolder)
{
    return QDir(documentsFolder).filePath("Bellavenro");
}

bool ensureWorkingFolder(const QString& path)
{
    if (QFileInfo::exists(path))
        return true;
    return QDir().mkpath(path);
}
