#include "CliCommands.h"
#include "DLibWrapper.h"
#include "Picture.h"

#include <QGuiApplication>

#include <opencv2/core/utility.hpp>

#include <cstdio>

namespace {

constexpr const char* kUsage =
    "Usage: bellavenor-cli analyse PHOTO [--face N | --face-box X,Y,W,H | --all-faces]\n"
    "       bellavenor-cli render PHOTO [--settings FILE.json | --preset NAME] -o OUT [--quality 1-100]\n"
    "         [--face N | --face-box X,Y,W,H | --all-faces] [--timings]\n"
    "         --face N takes the Nth face found, largest first (a group photo); --face-box takes the\n"
    "         face in that box, in pixels of the upright photo (a face the detector misses);\n"
    "         --all-faces retouches every face found, each with the same settings (analyse lists\n"
    "         each face's landmarks and regions under \"faces\").\n"
    "         OUT's extension picks the format: .png, .jpg/.jpeg, .webp, .tif/.tiff;\n"
    "         --quality is for JPEG and WebP (default 92). A preset is one saved in the window\n"
    "         (Presets > Save as Preset...), kept in ~/.local/share/Bellavenor/presets.\n"
    "       bellavenor-cli render PHOTO|FOLDER... [--settings FILE.json | --preset NAME] -o FOLDER/\n"
    "         [--format png|jpg|webp|tif] [--quality 1-100] [--recursive] [--overwrite] [--quiet]\n"
    "         [--report REPORT.json] [--largest-face | --all-faces]\n"
    "         A whole shoot in one process: FOLDER/NAME.png (or the --format's) for each photo; an\n"
    "         existing output is kept unless --overwrite, so a rerun finishes what is missing. A\n"
    "         refused photo is reported and skipped; Ctrl+C stops once the photos in flight are\n"
    "         written whole. --largest-face retouches a group photo on its largest face,\n"
    "         --all-faces on every face; the progress and the report say which face of how many,\n"
    "         or how many faces.\n"
    "       bellavenor-cli settings\n"
    "       bellavenor-cli --help | --version\n"
    "--verbose (anywhere) also prints the engine's log: the 68 landmark points.\n"
    "Exit status: 0 done (a batch: every photo has its picture), 1 no face, 2 several faces,\n"
    "3 unreadable photo or settings file, 5 a batch refused some photos, 64 wrong command line,\n"
    "130 a batch interrupted.\n";

// What --help adds to the usage: the manual page is made from this text.
constexpr const char* kMore =
    "\n"
    "Settings file:\n"
    "  A JSON object of editing settings under their own names; a field left out keeps its\n"
    "  default (bellavenor-cli settings prints them all). Switches are true or false\n"
    "  (b_Color_Lips), numbers lie in the range a panel can set (f_Color_Lips_Transparency\n"
    "  0 to 1), colours are \"#rrggbb\", \"#rrggbbaa\" or [r, g, b, a] in 0 to 1, points are\n"
    "  [x, y] in percent of the photo, spot lists are lists of points (at most 10000). An\n"
    "  unknown field, a wrong type or a value out of range is refused naming the field.\n"
    "  File > Export Settings... in the window writes one.\n"
    "\n"
    "Presets:\n"
    "  Settings files saved by the window (Presets > Save as Preset...) as NAME.json in\n"
    "  $XDG_DATA_HOME/Bellavenor/presets (~/.local/share/Bellavenor/presets); --preset NAME\n"
    "  reads one.\n"
    "\n"
    "Files:\n"
    "  $XDG_CACHE_HOME/Bellavenor (~/.cache/Bellavenor) keeps the landmark model and the face\n"
    "  detector in a form read in one go; deleting it costs the next start a second.\n"
    "  /usr/share/dlib/shape_predictor_68_face_landmarks.dat is the landmark model\n"
    "  (Debian's libdlib-data).\n";

bool verbose = false;

// stderr carries the one-line messages a script reads; the engine's log
// lines (the landmark points) only when asked for. Qt's chatter about the
// environment and decoders' warnings would only confuse scripts.
void keepOwnLogLines(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (verbose && type == QtInfoMsg && qstrcmp(context.category, "default") == 0)
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

int usageError(const QString& problem)
{
    std::fprintf(stderr, "bellavenor-cli: %s\n%s", qPrintable(problem), kUsage);
    return kCliUsage;
}

} // namespace

// bellavenor-cli: the retouching engine without a window, for scripts and
// batches. It runs the same code as the window.
int main(int argc, char* argv[])
{
    keepMemoryOfFreedPictures();
#if defined(__SANITIZE_THREAD__)
    cv::setNumThreads(1); // as the tests do under ThreadSanitizer (tests/TestMain.cpp)
#endif
    qInstallMessageHandler(keepOwnLogLines);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    QStringList arguments = QGuiApplication::arguments().mid(1);
    verbose = arguments.removeAll("--verbose") > 0;
    if (arguments.isEmpty())
        return usageError("no command given");
    const QString command = arguments.takeFirst();
    if (command == "--help" || command == "-h") {
        std::fputs(kUsage, stdout);
        std::fputs(kMore, stdout);
        return kCliOk;
    }
    if (command == "--version") {
        std::printf("bellavenor-cli %s\n", BELLAVENOR_VERSION);
        return kCliOk;
    }
    if (command == "analyse" || command == "render") {
        const int status = command == "analyse" ? runAnalyse(arguments) : runRender(arguments);
        DLibWrapper::finishReadingModel(); // a photo refused early leaves the model half read
        return status;
    }
    if (command == "settings")
        return arguments.isEmpty() ? runSettings() : usageError("settings takes no arguments");
    return usageError(QString("unknown command \"%1\"").arg(command));
}
