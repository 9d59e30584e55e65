#include "RecentPhotos.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QSettings>

namespace {

const char* const kKey = "recentPhotos";

} // namespace

RecentPhotos::RecentPhotos(QSettings& settings, QMenu* menu, std::function<void(const QString& path)> open)
    : QObject(menu)
    , settings_(settings)
    , menu_(menu)
    , open_(std::move(open))
{
    connect(menu_, &QMenu::aboutToShow, this, &RecentPhotos::fill);
    fill();
}

QStringList RecentPhotos::paths() const
{
    return settings_.value(kKey).toStringList().mid(0, kKept);
}

void RecentPhotos::add(const QString& path)
{
    QStringList list = paths();
    const QString absolute = QFileInfo(path).absoluteFilePath();
    list.removeAll(absolute);
    list.prepend(absolute);
    settings_.setValue(kKey, list.mid(0, kKept));
}

void RecentPhotos::remove(const QString& path)
{
    QStringList list = paths();
    list.removeAll(path);
    settings_.setValue(kKey, list);
}

// A photo gone since is taken off the list when chosen; the open then says
// it cannot be read, as for any file.
void RecentPhotos::fill()
{
    menu_->clear();
    for (const QString& path : paths()) {
        QAction* entry = menu_->addAction(QDir::toNativeSeparators(path));
        connect(entry, &QAction::triggered, this, [this, path] {
            if (!QFileInfo::exists(path))
                remove(path);
            open_(path);
        });
    }
    if (menu_->isEmpty())
        menu_->addAction(tr("No Recent Photos"))->setEnabled(false);
}
