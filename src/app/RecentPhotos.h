#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

class QMenu;
class QSettings;

// File → Open Recent: the last photos opened, newest first, kept in the
// window's settings file so they are there at the next start.
class RecentPhotos : public QObject {
    Q_OBJECT

public:
    static constexpr qsizetype kKept = 10;

    // Fills `menu` each time it opens; a chosen entry goes to `open`.
    RecentPhotos(QSettings& settings, QMenu* menu, std::function<void(const QString& path)> open);

    QStringList paths() const;
    // A photo opened: first in the list, once.
    void add(const QString& path);
    void remove(const QString& path);

private:
    void fill();

    QSettings& settings_;
    QMenu* menu_;
    std::function<void(const QString&)> open_;
};
