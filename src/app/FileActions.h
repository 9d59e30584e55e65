#pragma once

#include "Dialogs.h"
#include "Document.h"

#include <QObject>
#include <QStringList>

#include <functional>

class MainWindow;
class PresetsMenu;
class QSettings;
class RecentPhotos;

// What the File and Presets menus do with files: open a photo (chosen,
// given at start, dropped, or recent), export and open settings files, and
// save, apply and delete presets.
class FileActions : public QObject {
    Q_OBJECT

public:
    FileActions(Document& document, Dialogs& dialogs, MainWindow& window, QSettings& settings,
                const QString& presetsFolder);

    // The open dialog, then the open of the chosen photo.
    void openChosen();
    // Analyses the photo and swaps it in, or shows the refusal and keeps the
    // photo open before.
    void openPhoto(const QString& path);
    // Opens the photo given on the command line (the first argument that is
    // no option) once the event loop runs: how a file manager opens a
    // picture with the program.
    void openGivenAtStart(const QStringList& arguments);

    void exportSettings();
    void openSettings();
    // A settings file read as the command-line tool reads it (fields it
    // leaves out take their starting values), as one step named `step`; a
    // refused file changes nothing.
    void applySettingsFile(const QString& path, const QString& step);

    PresetsMenu& presets() { return *presets_; }
    RecentPhotos& recentPhotos() { return *recent_; }

private:
    OpenResult offerFaceChoice(OpenResult refused);
    template <typename Result>
    Result whileTheWindowPaints(const QString& doing, std::function<Result()> work);
    QString openDialogFolder() const;
    void refuse(const QString& message);

    Document& document_;
    Dialogs& dialogs_;
    MainWindow& window_;
    QString lastOpenFolder_;
    PresetsMenu* presets_ = nullptr;
    RecentPhotos* recent_ = nullptr;
};
