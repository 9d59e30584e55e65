#include "AppDelegate.h"
#include "DLibWrapper.h"
#include "DataFolder.h"
#include "FileActions.h"
#include "LocalisedLabels.h"
#include "Picture.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QIcon>

#include <cstdio>

namespace {

// The manual page is made from this text, in help2man's layout.
constexpr const char* kHelp =
    "Usage: bellavenor [PHOTO]\n"
    "\n"
    "Retouches portraits: finds the face on a photo, its 68 landmarks and regions, and offers\n"
    "ten effects on them (skin smoothing, wrinkle removal, eye colour, eye widening, eye\n"
    "shadow, under-eye darkening, cheek blush, lip colour, teeth whitening, blemish\n"
    "healing); the picture is always rebuilt from the untouched photo.\n"
    "\n"
    "Options:\n"
    "  PHOTO                 open this photo at start (JPEG, PNG, TIFF, WebP, BMP, GIF,\n"
    "                        HEIC/HEIF, AVIF), as a file manager's Open With does\n"
    "  --check-installation  start without showing the window, say where the landmark\n"
    "                        model, the help pages and the translations were found, and\n"
    "                        exit with 0 when all were, 1 when one is missing\n"
    "  --help                print this text\n"
    "  --version             print the version\n"
    "\n"
    "Files:\n"
    "  ~/.config/Bellavenor/bellavenor.conf  the last ten photos opened, the window's layout\n"
    "  ~/.local/share/Bellavenor/presets     presets, one settings file each (see\n"
    "                                        bellavenor-cli(1) for their format)\n"
    "  ~/.cache/Bellavenor                   the landmark model in a form read in one go\n"
    "  ~/Documents/Bellavenro                the working folder pictures are first written to\n"
    "\n"
    "Exit status:\n"
    "  0  the window was closed, or --check-installation found everything\n"
    "  1  --check-installation found something missing\n"
    "\n"
    "Examples:\n"
    "  bellavenor ~/Pictures/portrait.jpg\n"
    "  bellavenor --check-installation\n";

// Where the window looks for what it needs, each found or not.
int checkInstallation()
{
    const QString model = DLibWrapper::modelPath();
    const QString help = QDir(applicationDataFolder()).filePath("help/index.html");
    const bool translated = QFile::exists(":/i18n/bellavenor_de.qm");
    std::printf("landmark model: %s\nhelp pages: %s\ntranslations: %s\n",
                qPrintable(model.isEmpty() ? "missing" : model),
                qPrintable(QFile::exists(help) ? help : "missing (" + help + ")"),
                translated ? "built in (:/i18n)" : "missing");
    return !model.isEmpty() && QFile::exists(help) && translated ? 0 : 1;
}

} // namespace

int main(int argc, char* argv[])
{
    const QStringList given = QStringList(argv + 1, argv + argc);
    if (given.contains("--help") || given.contains("-h")) {
        std::fputs(kHelp, stdout);
        return 0;
    }
    if (given.contains("--version")) {
        std::printf("bellavenor %s\n", BELLAVENOR_VERSION);
        return 0;
    }
    if (given.contains("--check-installation")) { // never needs a display
        QCoreApplication core(argc, argv);
        QCoreApplication::setApplicationName("Bellavenor");
        return checkInstallation();
    }
    keepMemoryOfFreedPictures();
    QApplication application(argc, argv);
    QApplication::setApplicationName("Bellavenor");
    QApplication::setApplicationVersion(BELLAVENOR_VERSION);
    QApplication::setWindowIcon(QIcon(":/icons/bellavenor.svg"));
    LocalisedLabels::installTranslator(&application);

    AppDelegate delegate;
    if (!delegate.applicationDidFinishLaunching())
        return 0;
    delegate.files().openGivenAtStart(QApplication::arguments().mid(1));
    return QApplication::exec();
}
