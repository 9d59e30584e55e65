#include "RegularFile.h"

#include <QFile>
#include <QFileInfo>

namespace {

QString sizeText(qint64 bytes)
{
    return bytes >= (qint64(1) << 30) ? QString("%1 GB").arg(bytes >> 30)
         : bytes >= (qint64(1) << 20) ? QString("%1 MB").arg(bytes >> 20)
                                      : QString("%1 bytes").arg(bytes);
}

} // namespace

QString readRegularFile(const QString& path, qint64 maxBytes, QByteArray& bytes, const QString& what)
{
    const QString name = "\"" + QFileInfo(path).fileName() + "\"";
    const QFileInfo info(path);
    if (!info.exists())
        return QString("The %1 %2 does not exist.").arg(what, name);
    if (!info.isFile())
        return QString("The %1 %2 is not a regular file (a folder, pipe or device).").arg(what, name);
    const QString tooLarge = QString("The %1 %2 is larger than %3.").arg(what, name, sizeText(maxBytes));
    if (info.size() > maxBytes)
        return tooLarge;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString("The %1 %2 could not be opened: %3.").arg(what, name, file.errorString());
    bytes = file.read(maxBytes + 1); // a file that grows while it is read stops here
    if (bytes.size() > maxBytes) {
        bytes.clear();
        return tooLarge;
    }
    if (bytes.isEmpty())
        return QString("The %1 %2 is empty.").arg(what, name);
    return {};
}
