#include "BatchRender.h"

#include "CliCommands.h"
#include "DLibWrapper.h"
#include "PhotoDecoder.h"
#include "RetouchedFile.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <mutex>
#include <map>
#include <optional>
#include <thread>
#include <unistd.h>

namespace {

std::atomic<bool> interrupted{false};

void stopAfterThePhotosInFlight(int)
{
    interrupted = true;
}

struct Job {
    QString input, output;
    QString result = "todo"; // then rendered, kept (its output was there) or refused
    QString kind;               // why refused, as the summary counts it
    QString reason;
    qint64 milliseconds = 0;
    int faces = 0, face = 0; // found, and retouched (1-based)
    int retouched = 0;       // faces retouched
};

void refuse(Job& job, const QString& kind, const QString& reason)
{
    job.result = "refused";
    job.kind = kind;
    job.reason = reason;
}

// One photo, whole, by the one render path of the program.
void render(Job& job, const BatchOptions& options)
{
    QElapsedTimer clock;
    clock.start();
    FacePick pick;
    pick.largest = options.largestFace;
    pick.every = options.allFaces;
    const RenderOutcome outcome = renderPhotoFile(job.input, options.state, job.output, options.encoding, {}, pick);
    job.milliseconds = clock.elapsed();
    job.faces = outcome.faces;
    job.face = outcome.faceTaken;
    job.retouched = outcome.facesRetouched;
    switch (outcome.result) {
    case RenderOutcome::Written: job.result = "rendered"; return;
    case RenderOutcome::NoFace: return refuse(job, "no face", outcome.message);
    case RenderOutcome::SeveralFaces: return refuse(job, "several faces", outcome.message);
    case RenderOutcome::NotRendered: return refuse(job, "not rendered", outcome.message);
    case RenderOutcome::NotWritten: return refuse(job, "not written", outcome.message);
    case RenderOutcome::NoSuchFace: return refuse(job, "no face", outcome.message);
    case RenderOutcome::Unreadable: return refuse(job, outcome.tooLarge ? "too large" : "unreadable", outcome.message);
    }
}

// Which face of a group photo was retouched, for the progress lines.
QString faceOf(const Job& job)
{
    if (job.retouched > 1)
        return QString(", %1 faces").arg(job.retouched);
    return job.faces > 1 ? QString(", face %1 of %2").arg(job.face).arg(job.faces) : QString();
}

QString minutesAndSeconds(qint64 milliseconds)
{
    const qint64 seconds = (milliseconds + 500) / 1000;
    return QString("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QChar('0'));
}

// On a terminal one line redrawn in place; elsewhere a line per photo.
class Progress {
public:
    Progress(qsizetype total, bool quiet)
        : total_(total)
        , quiet_(quiet)
        , terminal_(isatty(fileno(stderr)) != 0)
    {
        clock_.start();
    }

    void photoDone(const Job& job)
    {
        ++done_;
        const bool failed = job.result == "refused";
        const QString name = QFileInfo(job.input).fileName();
        if (quiet_ && !failed)
            return;
        if (terminal_ && !failed) {
            const qint64 elapsed = clock_.elapsed();
            std::fprintf(stderr, "\r\033[K[%lld/%lld] %s · %s elapsed · about %s left", qlonglong(done_),
                         qlonglong(total_), qPrintable(name), qPrintable(minutesAndSeconds(elapsed)),
                         qPrintable(minutesAndSeconds(elapsed * (total_ - done_) / done_)));
            std::fflush(stderr);
            return;
        }
        std::fprintf(stderr, "%s[%lld/%lld] %s: %s\n", terminal_ ? "\r\033[K" : "", qlonglong(done_),
                     qlonglong(total_), qPrintable(name),
                     qPrintable(failed                   ? "refused: " + job.reason
                                : job.result == "kept" ? QString("kept: its picture is there already")
                                                       : QString("rendered in %1 ms%2").arg(job.milliseconds).arg(faceOf(job))));
    }

    qint64 elapsed() const { return clock_.elapsed(); }
    void end() const
    {
        if (terminal_ && !quiet_)
            std::fputs("\n", stderr);
    }

private:
    qsizetype total_, done_ = 0;
    bool quiet_, terminal_;
    QElapsedTimer clock_;
};

// Each photo's output name; existing outputs are kept unless overwritten,
// and two photos of one base name cannot share an output.
std::vector<Job> plan(const QStringList& photos, const BatchOptions& options)
{
    std::vector<Job> jobs;
    std::map<QString, QString> takenBy;
    for (const QString& photo : photos) {
        Job job;
        job.input = photo;
        job.output = withPictureExtension(QDir(options.outputFolder).filePath(QFileInfo(photo).completeBaseName()),
                                          options.encoding.format);
        if (const auto [taken, fresh] = takenBy.emplace(job.output, photo); !fresh)
            refuse(job, "same output name", QString("\"%1\" would be written over by \"%2\": both are named %3.")
                                                 .arg(taken->second, photo, QFileInfo(job.output).fileName()));
        else if (!options.overwrite && QFileInfo::exists(job.output))
            job.result = "kept";
        jobs.push_back(job);
    }
    return jobs;
}

bool writeReport(const QString& path, const std::vector<Job>& jobs)
{
    QJsonArray entries;
    for (const Job& job : jobs) {
        QJsonObject entry{{"input", job.input},
                          {"result", job.result},
                          {"reason", job.reason},
                          {"milliseconds", job.milliseconds},
                          {"facesFound", job.faces},
                          {"face", job.face},
                          {"facesRetouched", job.retouched}};
        if (job.result != "refused") // a refused photo has no picture
            entry.insert("output", job.output);
        entries.append(entry);
    }
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(entries).toJson()) >= 0 && file.commit();
}

void printSummary(const std::vector<Job>& jobs, qint64 milliseconds, bool stopped)
{
    std::map<QString, int> counts, refusals;
    for (const Job& job : jobs)
        ++(job.result == "refused" && !job.kind.isEmpty() ? refusals[job.kind] : counts[job.result]);
    QStringList why;
    int refused = 0;
    for (const auto& [kind, count] : refusals) {
        why << QString("%1 %2").arg(kind).arg(count);
        refused += count;
    }
    const QString notStarted = counts["not started"] ? QString(" Not started: %1.").arg(counts["not started"]) : QString();
    std::fprintf(stderr, "Rendered %d of %d photos in %s; kept %d existing; refused %d%s.%s%s\n", counts["rendered"],
                 int(jobs.size()), qPrintable(minutesAndSeconds(milliseconds)), counts["kept"], refused,
                 why.isEmpty() ? "" : qPrintable(" (" + why.join(", ") + ")"), qPrintable(notStarted),
                 stopped ? " Interrupted: those were not started." : "");
}

} // namespace

QStringList photosIn(const QStringList& inputs, bool recursive, const QString& outputFolder)
{
    // Pictures already written by a batch into a folder inside the shoot
    // are no photos of it.
    const QString written = QDir(outputFolder).absolutePath() + "/";
    QStringList photos;
    for (const QString& input : inputs) {
        if (!QFileInfo(input).isDir()) {
            photos << input;
            continue;
        }
        QStringList found;
        QDirIterator files(input, QDir::Files | QDir::Readable,
                           recursive ? QDirIterator::Subdirectories : QDirIterator::NoIteratorFlags);
        while (files.hasNext()) {
            const QString path = files.next();
            if (readPictureExtensions().contains(QFileInfo(path).suffix().toLower())
                && !QFileInfo(path).absoluteFilePath().startsWith(written))
                found << path;
        }
        found.sort();
        photos << found;
    }
    return photos;
}

int runBatch(const BatchOptions& options)
{
    const QStringList photos = photosIn(options.inputs, options.recursive, options.outputFolder);
    if (photos.isEmpty()) {
        std::fprintf(stderr, "There is no picture Bellavenor reads in %s.\n", qPrintable(options.inputs.join(", ")));
        return kCliUsage;
    }
    if (!QDir().mkpath(options.outputFolder)) {
        std::fprintf(stderr, "The folder \"%s\" could not be made.\n", qPrintable(options.outputFolder));
        return kCliUnreadable;
    }
    DLibWrapper::startReadingModel(); // while the first photos are decoded
    std::signal(SIGINT, stopAfterThePhotosInFlight);
    std::signal(SIGTERM, stopAfterThePhotosInFlight);
    std::vector<Job> jobs = plan(photos, options);
    std::vector<Job*> todo;
    Progress progress(qsizetype(jobs.size()), options.quiet);
    for (Job& job : jobs) {
        if (job.result == "todo")
            todo.push_back(&job);
        else
            progress.photoDone(job);
    }

    // Two photos at a time, each taken whole (decode, analyse, compose,
    // write) by one of two threads: measured faster than one photo at a time
    // using both cores inside the engine, or than overlapping one photo's
    // writing and the next one's decoding with its composing.
    std::atomic<std::size_t> next{0};
    std::mutex printing;
    const auto work = [&] {
        for (std::size_t k = 0; !interrupted && (k = next++) < todo.size();) {
            Job& job = *todo[k];
            render(job, options);
            const std::lock_guard<std::mutex> locked(printing);
            progress.photoDone(job);
        }
    };
    std::optional<std::thread> second;
    if (!options.oneAtATime)
        second.emplace(work);
    work();
    if (second)
        second->join();
    progress.end();
    const bool stopped = interrupted && std::any_of(todo.begin(), todo.end(), [](const Job* job) { return job->result == "todo"; });
    for (Job* job : todo) // neither made nor refused: a rerun makes them
        if (job->result == "todo") {
            job->result = "not started";
            job->reason = "Interrupted before this photo.";
        }
    if (!options.report.isEmpty() && !writeReport(options.report, jobs))
        std::fprintf(stderr, "The report \"%s\" could not be written.\n", qPrintable(options.report));
    if (!options.quiet)
        printSummary(jobs, progress.elapsed(), stopped);
    if (stopped)
        return kCliInterrupted;
    const bool allThere = std::all_of(jobs.begin(), jobs.end(), [](const Job& job) { return job.result != "refused"; });
    return allThere ? kCliOk : kCliSomeRefused;
}
