#include "PresetsMenu.h"

#include "Presets.h"

#include <QDir>
#include <QFile>
#include <QMenu>

PresetsMenu::PresetsMenu(QMenu* menu, QString folder, Actions actions)
    : QObject(menu)
    , menu_(menu)
    , folder_(std::move(folder))
    , actions_(std::move(actions))
{
    connect(menu_, &QMenu::aboutToShow, this, &PresetsMenu::fill);
    fill();
}

void PresetsMenu::fill()
{
    menu_->clear();
    const QStringList names = presetNames(folder_);
    for (const QString& name : names)
        connect(menu_->addAction(name), &QAction::triggered, this, [this, name] { apply(name); });
    if (names.isEmpty())
        menu_->addAction(tr("No Presets"))->setEnabled(false);
    menu_->addSeparator();
    connect(menu_->addAction(tr("Save as Preset…")), &QAction::triggered, this, &PresetsMenu::saveAsPreset);
    QMenu* deleting = menu_->addMenu(tr("Delete Preset"));
    deleting->setEnabled(!names.isEmpty());
    for (const QString& name : names)
        connect(deleting->addAction(name), &QAction::triggered, this, [this, name] { remove(name); });
}

QString PresetsMenu::pathOf(const QString& name)
{
    QString error;
    const QString path = presetPath(folder_, name, error);
    if (path.isEmpty())
        actions_.refuse(error);
    return path;
}

void PresetsMenu::saveAsPreset()
{
    const QString name = actions_.askName();
    if (name.isEmpty())
        return;
    const QString path = pathOf(name);
    if (path.isEmpty())
        return;
    if (!QDir().mkpath(folder_)) {
        actions_.refuse(tr("The presets folder \"%1\" could not be made.").arg(QDir::toNativeSeparators(folder_)));
        return;
    }
    actions_.saveTo(path);
}

void PresetsMenu::apply(const QString& name)
{
    if (const QString path = pathOf(name); !path.isEmpty())
        actions_.apply(path, tr("Apply Preset %1").arg(name));
}

// A preset's file is gone for good once deleted: the person is asked first.
void PresetsMenu::remove(const QString& name)
{
    const QString path = pathOf(name);
    if (path.isEmpty() || !actions_.confirmDelete(name))
        return;
    if (!QFile::remove(path))
        actions_.refuse(tr("The preset \"%1\" could not be deleted.").arg(name));
}
