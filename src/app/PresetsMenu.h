#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QMenu;
class QWidget;

// The Presets menu: the saved presets, each applied with a click, then
// "Save as Preset…" and "Delete Preset". The folder's files are the list:
// the menu is filled anew each time it opens.
class PresetsMenu : public QObject {
    Q_OBJECT

public:
    struct Actions {
        std::function<QString()> askName;                        // empty: cancelled
        std::function<bool(const QString& path)> saveTo;          // writes the settings; false when refused
        std::function<void(const QString& path, const QString& step)> apply;
        std::function<void(const QString& message)> refuse;      // an error alert
        std::function<bool(const QString& name)> confirmDelete;  // true: delete the preset so named
    };

    PresetsMenu(QMenu* menu, QString folder, Actions actions);

    const QString& folder() const { return folder_; }
    void saveAsPreset();
    void apply(const QString& name);
    void remove(const QString& name);

private:
    void fill();
    QString pathOf(const QString& name);

    QMenu* menu_;
    QString folder_;
    Actions actions_;
};
