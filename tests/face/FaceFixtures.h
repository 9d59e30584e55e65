#pragma once

#include "Picture.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QString>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <vector>

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

// A group photo made of the portrait's head at these scales, side by side
// on grey, and where each head's pixels went.
struct HeadsFixture {
    QImage picture;
    std::vector<QTransform> heads;
};

inline HeadsFixture headsSideBySide(std::initializer_list<double> scales)
{
    const QImage head = portraitHead();
    HeadsFixture fixture;
    double x = 0;
    for (double scale : scales) {
        fixture.heads.push_back(QTransform::fromTranslate(x, 0).scale(scale, scale));
        x += head.width() * scale;
    }
    fixture.picture = makePicture({int(std::ceil(x)), int(std::ceil(head.height() * std::max(scales)))});
    fixture.picture.fill(Qt::gray);
    QPainter painter(&fixture.picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (const QTransform& placement : fixture.heads) {
        painter.setTransform(placement);
        painter.drawImage(0, 0, head);
    }
    return fixture;
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
