#include "CliCommands.h"
#include "DLibWrapper.h"
#include "Picture.h"

#include <QGuiApplication>

#include <opencv2/core/utility.hpp>

#include <cstdio>

namespace {

// Printed after a wrong command line, and first in --help.
constexpr const char* kUsage =
    "Usage: bellavenor-cli analyse PHOTO [--face N | --face-box X,Y,W,H | --all-faces]\n"
    "  or:  bellavenor-cli render PHOTO [--settings FILE.json | --preset NAME] -o OUT [OPTION]...\n"
    "  or:  bellavenor-cli render PHOTO|FOLDER... [--settings FILE.json | --preset NAME] -o FOLDER/ [OPTION]...\n"
    "  or:  bellavenor-cli settings\n"
    "  or:  bellavenor-cli --help | --version\n";

// The rest of --help, in help2man's layout (a heading ending in a colon, an
// option per indented line): the manual page is made from this text.
constexpr const char* kMore =
    "Retouches portraits without a window, with the same engine as the window: analyse\n"
    "prints the face's 68 landmarks and regions as JSON; render writes the retouched\n"
    "picture of one photo, or of every photo given (a batch: an output ending in / or\n"
    "several photos or a folder); settings prints every editing setting at its default.\n"
    "\n"
    "Options:\n"
    "  -o OUT                  the picture to write; its extension picks the format (.png,\n"
    "                          .jpg/.jpeg, .webp, .tif/.tiff). In a batch, a folder ending\n"
    "                          in /: FOLDER/NAME.png (or the --format's) for each photo\n"
    "  --settings FILE.json    the editing settings to apply (see Settings file below)\n"
    "  --preset NAME           a preset saved in the window (see Presets below)\n"
    "  --quality 1-100         for JPEG and WebP (default 92)\n"
    "  --face N                the Nth face found, largest first (a group photo)\n"
    "  --face-box X,Y,W,H      the face in this box, in pixels of the upright photo (a face\n"
    "                          the detector misses)\n"
    "  --all-faces             every face found, each with the same settings; analyse lists\n"
    "                          each face's landmarks and regions under \"faces\"\n"
    "  --timings               print how long each stage of a render took (decode, analyse,\n"
    "                          compose, encode) on standard error\n"
    "  --format png|jpg|webp|tif  a batch's output format (PNG by default)\n"
    "  --recursive             a batch also takes the pictures in the folders' subfolders\n"
    "  --overwrite             a batch writes over existing outputs (kept by default, so a\n"
    "                          rerun finishes what is missing)\n"
    "  --quiet                 a batch prints only its refusals\n"
    "  --report REPORT.json    a batch lists every photo: input, output, result, reason,\n"
    "                          milliseconds, faces found, the face and how many retouched\n"
    "  --largest-face          a batch retouches a group photo on its largest face\n"
    "  --verbose               also print the engine's log: the 68 landmark points\n"
    "  --help                  print this text\n"
    "  --version               print the version\n"
    "\n"
    "A batch runs in one process; a refused photo is reported and skipped, and Ctrl+C\n"
    "stops once the photos in flight are written whole.\n"
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
    "  $XDG_DATA_HOME/Bellavenor/presets (~/.local/share/Bellavenor/presets).\n"
    "\n"
    "Exit status:\n"
    "  0    done (a batch: every photo has its picture)\n"
    "  1    no face on the photo\n"
    "  2    several faces, and no face option\n"
    "  3    an unreadable photo or settings file\n"
    "  5    a batch refused some photos\n"
    "  64   a wrong command line\n"
    "  130  a batch interrupted\n"
    "\n"
    "Files:\n"
    "  $XDG_CACHE_HOME/Bellavenor (~/.cache/Bellavenor) keeps the landmark model and the face\n"
    "  detector in a form read in one go; deleting it costs the next start a second.\n"
    "  /usr/share/dlib/shape_predictor_68_face_landmarks.dat is the landmark model\n"
    "  (Debian's libdlib-data).\n"
    "\n"
    "Examples:\n"
    "  bellavenor-cli analyse family.jpg --face 2\n"
    "  bellavenor-cli render portrait.jpg --preset \"Evening look\" -o retouched.jpg\n"
    "  bellavenor-cli render ~/Pictures/shoot/ --settings tuned.json -o out/ --report report.json\n";

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
