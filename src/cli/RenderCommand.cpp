#include "BatchRender.h"
#include "CliCommands.h"
#include "EditingStateJson.h"
#include "FaceOptions.h"
#include "Presets.h"
#include "RetouchedFile.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonDocument>

#include <cstdio>

namespace {

int fail(int status, const QString& message)
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
    return status;
}

// What was left out of a photo or a picture: the work goes on.
void tellWarnings(const QStringList& warnings)
{
    for (const QString& warning : warnings)
        std::fprintf(stderr, "%s\n", qPrintable(warning));
}

struct RenderArguments {
    QStringList photos;
    QString settings, preset, output, format, report;
    PictureEncoding encoding;
    bool timings = false, recursive = false, overwrite = false, quiet = false, oneAtATime = false, largestFace = false;
    FacePick face;

    // Several photos, a folder, or an output that is a folder.
    bool batch() const
    {
        return photos.size() > 1 || QFileInfo(photos.value(0)).isDir() || output.endsWith('/')
               || QFileInfo(output).isDir();
    }
};

bool parseQuality(const QString& text, int& quality)
{
    bool number = false;
    quality = text.toInt(&number);
    return number && quality >= 1 && quality <= 100;
}

bool parse(const QStringList& arguments, RenderArguments& parsed)
{
    const std::pair<const char*, bool RenderArguments::*> flags[] = {
        {"--timings", &RenderArguments::timings},     {"--recursive", &RenderArguments::recursive},
        {"--overwrite", &RenderArguments::overwrite}, {"--quiet", &RenderArguments::quiet},
        {"--one-at-a-time", &RenderArguments::oneAtATime}, {"--largest-face", &RenderArguments::largestFace}};
    const std::pair<const char*, QString RenderArguments::*> values[] = {
        {"--settings", &RenderArguments::settings}, {"--preset", &RenderArguments::preset},
        {"-o", &RenderArguments::output},           {"--format", &RenderArguments::format},
        {"--report", &RenderArguments::report}};
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        const auto flag = std::find_if(std::begin(flags), std::end(flags), [&](const auto& f) { return argument == f.first; });
        const auto value = std::find_if(std::begin(values), std::end(values), [&](const auto& v) { return argument == v.first; });
        if (flag != std::end(flags))
            parsed.*flag->second = true;
        else if (value != std::end(values) && i + 1 < arguments.size())
            parsed.*value->second = arguments[++i];
        else if (argument == "--quality" && i + 1 < arguments.size()) {
            if (!parseQuality(arguments[++i], parsed.encoding.quality))
                return false;
        }
        else if (!argument.startsWith('-'))
            parsed.photos << argument;
        else
            return false;
    }
    const bool oneSource = parsed.settings.isEmpty() || parsed.preset.isEmpty();
    return !parsed.photos.isEmpty() && !parsed.output.isEmpty() && oneSource;
}

// The settings file given, or the preset's file, or none (the defaults).
QString settingsFileOf(const RenderArguments& args, QString& error)
{
    if (args.preset.isEmpty())
        return args.settings;
    const QString path = presetPath(defaultPresetsFolder(), args.preset, error);
    if (!path.isEmpty() && !QFileInfo::exists(path))
        error = QString("There is no preset named \"%1\" in %2.").arg(args.preset, defaultPresetsFolder());
    return error.isEmpty() ? path : QString();
}

// Prints "stage: N ms" on stderr when asked.
struct StageClock {
    bool enabled;
    QElapsedTimer timer;
    void lap(const char* stage)
    {
        if (enabled)
            std::fprintf(stderr, "%s: %lld ms\n", stage, timer.restart());
    }
};

} // namespace

int runSettings()
{
    QJsonObject settings = toJson(EditingState{});
    settings.insert("version", kSettingsVersion);
    std::fputs(QJsonDocument(settings).toJson(QJsonDocument::Indented).constData(), stdout);
    return kCliOk;
}

int runRender(const QStringList& given)
{
    RenderArguments args;
    QStringList arguments = given;
    if (QString error; !takeFaceOptions(arguments, args.face, error))
        return fail(kCliUsage, error);
    if (!parse(arguments, args))
        return fail(kCliUsage, "usage: bellavenor-cli render PHOTO... [--settings FILE.json|--preset NAME] "
                               "-o OUT.png|.jpg|.webp|.tif|FOLDER/ [--quality 1-100] [--timings] (see --help)");
    // A batch writes the format --format names (PNG without it); one photo
    // the one its output's name ends in.
    const std::optional<PictureFormat> format
        = args.batch() ? (args.format.isEmpty() ? PictureFormat::Png : pictureFormatOf("picture." + args.format))
                       : pictureFormatOf(args.output);
    if (!format)
        return fail(kCliUsage, QString("Bellavenor cannot write \"%1\": the output's name must end in %2.")
                                   .arg(args.batch() ? args.format : args.output, writtenExtensions()));
    args.encoding.format = *format;
    EditingState state;
    std::optional<PhotoEditsOf> done;
    QString error;
    const QString settings = settingsFileOf(args, error);
    if (!error.isEmpty() || (!settings.isEmpty() && !readSettingsFile(settings, state, error, &done)))
        return fail(kCliUnreadable, error);
    if (args.batch() && (args.face.number != 0 || !args.face.box.isNull()))
        return fail(kCliUsage, "--face and --face-box take one photo; a batch takes --largest-face or --all-faces.");
    if (args.largestFace && args.face.every)
        return fail(kCliUsage, "--largest-face and --all-faces cannot be given together.");
    // A batch never carries what was done on one photo to the others.
    if (args.batch() && done)
        tellWarnings({leftOutFor(done, {}, {})});
    if (args.batch())
        return runBatch({args.photos, args.output, args.encoding, state, args.recursive, args.overwrite, args.quiet,
                         args.oneAtATime, args.report, args.largestFace, args.face.every});
    args.face.largest = args.largestFace;
    StageClock clock{args.timings, {}};
    clock.timer.start();
    const RenderOutcome outcome = renderPhotoFile(args.photos.first(), state, args.output, args.encoding,
                                                  [&](const char* stage) { clock.lap(stage); }, args.face, done);
    tellWarnings(outcome.warnings);
    switch (outcome.result) {
    case RenderOutcome::Written: return kCliOk;
    case RenderOutcome::NoFace: return fail(kCliNoFace, outcome.message);
    case RenderOutcome::SeveralFaces: return fail(kCliSeveralFaces, severalFacesMessage(outcome.faces));
    case RenderOutcome::NoSuchFace:
        return fail(kCliUsage, noSuchFaceMessage(args.face, outcome.faces, outcome.photoSize));
    default: return fail(kCliUnreadable, outcome.message);
    }
}

