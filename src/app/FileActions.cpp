#include "FileActions.h"

#include "EditingStateJson.h"
#include "FaceSearch.h"
#include "MainWindow.h"
#include "PresetsMenu.h"
#include "RecentPhotos.h"
#include "ui_MainWindow.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QStandardPaths>
#include <QStatusBar>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <future>

FileActions::FileActions(Document& document, Dialogs& dialogs, MainWindow& window, QSettings& settings,
                         const QString& presetsFolder)
    : document_(document)
    , dialogs_(dialogs)
    , window_(window)
{
    const Ui::MainWindow& ui = window.ui();
    recent_ = new RecentPhotos(settings, ui.menuOpenRecent, [this](const QString& path) { openPhoto(path); });
    presets_ = new PresetsMenu(ui.menuPresets, presetsFolder,
                               {[this] { return dialogs_.askPresetName(); },
                                [this](const QString& path) {
                                    QString error;
                                    if (!writeSettingsFile(path, document_.state, error))
                                        refuse(error);
                                    return error.isEmpty();
                                },
                                [this](const QString& path, const QString& step) { applySettingsFile(path, step); },
                                [this](const QString& message) { refuse(message); },
                                [this](const QString& name) {
                                    return dialogs_.showAlert({tr("Delete Preset"),
                                                               tr("Delete the preset \"%1\"? Its settings cannot be "
                                                                  "brought back.").arg(name),
                                                               {tr("Cancel"), tr("Delete")}}) == 1;
                                }});
}

void FileActions::refuse(const QString& message)
{
    dialogs_.showAlert({"Error", message, {"Close"}});
}

void FileActions::openChosen()
{
    const QString path = dialogs_.chooseFileToOpen(openDialogFolder());
    if (!path.isEmpty())
        openPhoto(path);
}

void FileActions::openGivenAtStart(const QStringList& arguments)
{
    for (const QString& argument : arguments)
        if (!argument.startsWith('-')) {
            QTimer::singleShot(0, this, [this, argument] { openPhoto(argument); });
            return;
        }
}

// The open keeps its order and its results; only the waiting changes: the
// work runs on a thread of its own while the window keeps painting, says
// what it is doing and shows the busy cursor, taking no clicks or keys.
template <typename Result>
Result FileActions::whileTheWindowPaints(const QString& doing, std::function<Result()> work)
{
    QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    window_.statusBar()->showMessage(doing);
    std::future<Result> result = std::async(std::launch::async, std::move(work));
    QEventLoop waiting;
    QTimer look;
    connect(&look, &QTimer::timeout, &waiting, [&] {
        if (result.wait_for(std::chrono::seconds(0)) == std::future_status::ready)
            waiting.quit();
    });
    look.start(10);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); // paint at least once
    if (result.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
        waiting.exec(QEventLoop::ExcludeUserInputEvents);
    window_.statusBar()->clearMessage();
    QGuiApplication::restoreOverrideCursor();
    return result.get();
}

void FileActions::openPhoto(const QString& path)
{
    OpenResult opened = whileTheWindowPaints<OpenResult>(tr("Finding the face…"), [path] { return openAndAnalyse(path); });
    if (opened.outcome == OpenResult::NoFace || opened.outcome == OpenResult::SeveralFaces)
        opened = offerFaceChoice(std::move(opened));
    if (opened.outcome != OpenResult::Opened) {
        if (!opened.message.isEmpty())
            refuse(opened.message);
        return;
    }
    lastOpenFolder_ = QFileInfo(path).absolutePath();
    recent_->add(path);
    document_.accept(std::move(opened.photo));
}

// The refusal offers a way in: choosing one of several faces, or marking
// the face by hand among what a wider search finds. An empty message: the
// person closed or cancelled, and everything stays as it was.
OpenResult FileActions::offerFaceChoice(OpenResult refused)
{
    const bool several = refused.outcome == OpenResult::SeveralFaces;
    const QString way = several ? tr("Choose a Face…") : tr("Mark the Face…");
    if (dialogs_.showAlert({"Error", refused.message, {"Close", way}}) != 1)
        return {};
    FaceChoice choice{refused.photo.img_Basic, framesOf(refused.faces), !several, int(refused.faces.size())};
    if (!several) {
        const QImage photo = refused.photo.img_Basic;
        choice.frames = whileTheWindowPaints<std::vector<FaceFrame>>(tr("Finding the face…"), [photo] {
            try {
                return facesBeyondLimits(photo);
            } catch (const std::exception&) { // out of memory: the frame is drawn by hand
                return std::vector<FaceFrame>();
            }
        });
    }
    const QString path = refused.photo.path;
    const std::vector<QRect> found = refused.faces;
    for (;;) {
        const ChosenFaces chosen = dialogs_.chooseFace(choice);
        if (!chosen)
            return {};
        OpenResult opened = whileTheWindowPaints<OpenResult>(
            chosen.every ? tr("Finding every face…") : tr("Finding the face…"), [&, refused] {
                return guardedOpen(path, [&] {
                    return chosen.every ? openEveryFace(refused) : openWithFace(refused, *chosen.frame);
                });
            });
        // A frame drawn by hand may hold no face: its landmarks are shown
        // before the photo opens on them.
        const bool drawn = chosen.frame && std::none_of(choice.frames.begin(), choice.frames.end(),
                                                        [&](const FaceFrame& f) { return f.box == chosen.frame->box; });
        if (drawn && opened.outcome == OpenResult::Opened && !dialogs_.confirmDrawnFace(opened.photo))
            continue;
        // Which of the faces found was clicked, for the status line.
        if (chosen.frame && several) {
            const auto clicked = std::find(found.begin(), found.end(), chosen.frame->box);
            opened.photo.faceNumber = clicked == found.end() ? 0 : int(clicked - found.begin()) + 1;
            opened.photo.facesFound = int(found.size());
        }
        return opened;
    }
}

// The open dialog starts in the last photo's folder, else in the pictures
// folder where there is one, else at home.
QString FileActions::openDialogFolder() const
{
    if (!lastOpenFolder_.isEmpty())
        return lastOpenFolder_;
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return QFileInfo(pictures).isDir() ? pictures : QDir::homePath();
}

void FileActions::exportSettings()
{
    const QString folder = lastOpenFolder_.isEmpty() ? QDir::homePath() : lastOpenFolder_;
    const QString path = dialogs_.chooseSettingsPath(QDir(folder).filePath("bellavenor-settings.json"));
    if (path.isEmpty())
        return;
    // What was done on the photo goes with it, and is said to be the photo's.
    const OpenedPhoto& photo = *document_.photo();
    const PhotoEditsOf done{QFileInfo(photo.path).fileName(), photo.imgSize.toSize(), document_.photoEdits};
    const bool keepsDone = document_.isOpen() && done.edits != PhotoEdits::of(photo.regions);
    if (QString error; !writeSettingsFile(path, document_.state, error, keepsDone ? &done : nullptr)) {
        refuse(error);
        return;
    }
    window_.statusBar()->showMessage(tr("Settings exported to %1").arg(QDir::toNativeSeparators(path)), 5000);
}

void FileActions::openSettings()
{
    const QString path = dialogs_.chooseSettingsToOpen(lastOpenFolder_.isEmpty() ? QDir::homePath() : lastOpenFolder_);
    if (!path.isEmpty())
        applySettingsFile(path, tr("Open Settings"));
}

void FileActions::applySettingsFile(const QString& path, const QString& step)
{
    EditingState read;
    std::optional<PhotoEditsOf> photo;
    if (QString error; !readSettingsFile(path, read, error, &photo)) {
        refuse(error);
        return;
    }
    const OpenedPhoto& open = *document_.photo();
    const QString leftOut = leftOutFor(photo, open.path, open.imgSize.toSize());
    document_.replaceSettings(read, step, photo && leftOut.isEmpty() ? &photo->edits : nullptr);
    if (!leftOut.isEmpty())
        window_.statusBar()->showMessage(leftOut, 10000);
}
