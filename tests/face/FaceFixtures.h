#pragma once

#include "Picture.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QString>

inline QString testDataPath(const QString& name)
{
    return QString(BELLAVENOR_TEST_DATA) + "/" + name;
}

// Writes `bytes` as the file `name` in `folder`; its path.
inline QString writtenFile(const QDir& folder, const QString& name, const QByteArray& bytes)
{
    QFile file(folder.filePath(name));
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
    return file.fileName();
}

inline QImage portraitPicture()
{
    return toPicture(QImage(testDataPath("portrait.png")));
}

// The portrait's top 340 rows: the face without the mission patch, which
// the detector takes for a second face once a lossy codec (JPEG, 4:2:0
// HEIC) has touched it.
inline QImage portraitHead()
{
    return portraitPicture().copy(0, 0, 512, 340);
}

// Two copies of the portrait side by side: two faces of the same size.
inline QImage twoPortraits()
{
    const QImage one = portraitPicture();
    QImage both = makePicture({one.width() * 2, one.height()});
    QPainter painter(&both);
    painter.drawImage(0, 0, one);
    painter.drawImage(one.width(), 0, one);
    return both;
}
