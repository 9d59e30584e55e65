#include "Dialogs.h"

#include "PhotoDecoder.h"
#include "PictureSaver.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLineEdit>

#include <algorithm>

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("Dialogs", text);
}

QString choosePhoto(QWidget* parent, const QString& startFolder)
{
    QFileDialog dialog(parent);
    // Phones and cameras write upper-case extensions as often as not.
    QStringList patterns;
    for (const QString& extension : readPictureExtensions())
        patterns << "*." + extension << "*." + extension.toUpper();
    dialog.setNameFilter(tr("Pictures") + " (" + patterns.join(' ') + ")");
    dialog.setDirectory(startFolder); // a folder only: the name field stays empty
    dialog.setFileMode(QFileDialog::ExistingFile);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

QString chooseSaved(QWidget* parent, const QString& suggestedPath)
{
    QFileDialog dialog(parent, "Select a folder to save the captured image", suggestedPath);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::ShowDirsOnly, false);
    // The name's extension chooses the format; without a known one the
    // chosen type adds its own.
    const auto types = writtenTypes();
    QStringList filters;
    for (const auto& type : types)
        filters << type.first;
    dialog.setNameFilters(filters);
    dialog.selectFile(QFileInfo(suggestedPath).fileName());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    const qsizetype type = std::max<qsizetype>(filters.indexOf(dialog.selectedNameFilter()), 0);
    return withPictureExtension(dialog.selectedFiles().first(), types[std::size_t(type)].second);
}

} // namespace

Dialogs Dialogs::over(std::function<QWidget*()> parent)
{
    Dialogs d;
    d.showAlert = [parent](const Alert& alert) { return presentAlertModally(alert, parent()); };
    d.chooseFileToOpen = [parent](const QString& startFolder) { return choosePhoto(parent(), startFolder); };
    d.chooseSavePath = [parent](const QString& suggestedPath) { return chooseSaved(parent(), suggestedPath); };
    d.chooseSettingsPath = [parent](const QString& suggestedPath) {
        return QFileDialog::getSaveFileName(parent(), tr("Export Settings…"), suggestedPath, tr("Settings") + " (*.json)");
    };
    d.chooseSettingsToOpen = [parent](const QString& startFolder) {
        return QFileDialog::getOpenFileName(parent(), tr("Open Settings…"), startFolder, tr("Settings") + " (*.json)");
    };
    d.askPresetName = [parent] {
        QInputDialog ask(parent());
        ask.setWindowTitle(tr("Save as Preset"));
        ask.setLabelText(tr("Name of the preset:"));
        ask.setTextValue({}); // makes its text field, which sets its width
        // Room for the whole title beside the window manager's buttons.
        const int wide = std::max(320, ask.fontMetrics().horizontalAdvance(ask.windowTitle()) + 160);
        if (auto* field = ask.findChild<QLineEdit*>())
            field->setMinimumWidth(wide);
        return ask.exec() == QDialog::Accepted ? ask.textValue() : QString();
    };
    d.chooseFace = [parent](const FaceChoice& choice) { return FaceChooser::ask(choice, parent()); };
    d.confirmDrawnFace = [parent](const OpenedPhoto& photo) { return FaceChooser::confirm(photo, parent()); };
    d.openWithDefaultApplication = [](const QUrl& url) { QDesktopServices::openUrl(url); };
    d.endProcess = [](int status) { QCoreApplication::exit(status); };
    return d;
}
