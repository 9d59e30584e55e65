#include "DataFolder.h"

#include <QCoreApplication>
#include <QDir>

QString applicationDataFolder()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + "/../share/bellavenor");
}
