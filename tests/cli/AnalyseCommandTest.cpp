#include "CliRun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <functional>
#include <QJsonDocument>
#include <QJsonArray>
#include <QJsonObject>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

// The whole analysis of the portrait, landmarks and every region to the
// last bit, against the one recorded when its regions were checked on the
// photo: a changed formula, order of points, flip or rounding shows here.
// BELLAVENOR_RECORD=1 writes the file anew from the program.
TEST(AnalyseCommand, PrintsTheRecordedAnalysisOfThePortrait)
{
    const CliRun run = runCli({"analyse", QString(BELLAVENOR_TEST_DATA) + "/portrait.png"});
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    const QString path = QString(BELLAVENOR_TEST_DATA) + "/recorded/portrait-analysis.json";
    QFile file(path);
    if (qEnvironmentVariableIsSet("BELLAVENOR_RECORD") && file.open(QIODevice::WriteOnly)) {
        file.write(run.out);
        file.close();
    }
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonObject recorded = QJsonDocument::fromJson(file.readAll()).object();
    const QJsonObject analysis = QJsonDocument::fromJson(run.out).object();
    EXPECT_EQ(analysis.keys(), recorded.keys());
    for (const QString& key : recorded.keys()) {
        if (key != "regions") {
            EXPECT_EQ(analysis[key], recorded[key]) << key.toStdString();
        }
    }
    const QJsonObject regions = analysis["regions"].toObject();
    EXPECT_EQ(regions.keys(), recorded["regions"].toObject().keys());
    for (const QString& name : regions.keys())
        EXPECT_EQ(regions[name], recorded["regions"][name]) << name.toStdString();
}

TEST(CommandLine, HelpVersionUnknownWordsAndTheLogOnlyWhenAsked)
{
    for (const char* help : {"--help", "-h"}) {
        const CliRun run = runCli({help});
        EXPECT_EQ(run.status, 0);
        EXPECT_TRUE(run.out.startsWith("Usage: bellavenor-cli analyse PHOTO")) << help;
        EXPECT_TRUE(run.err.isEmpty());
    }
    const CliRun version = runCli({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_TRUE(version.out.startsWith("bellavenor-cli ")) << version.out.toStdString();

    const CliRun unknown = runCli({"analyze", "photo.jpg"});
    EXPECT_EQ(unknown.status, 64);
    EXPECT_TRUE(unknown.err.startsWith("bellavenor-cli: unknown command \"analyze\"")) << unknown.err.toStdString();

    const QString portrait = QString(BELLAVENOR_TEST_DATA) + "/portrait.png";
    EXPECT_FALSE(runCli({"analyse", portrait}).err.contains("Point 0 => "));
    const CliRun verbose = runCli({"analyse", portrait, "--verbose"});
    EXPECT_EQ(verbose.status, 0);
    EXPECT_EQ(verbose.err.count("Point "), 68);
}

// A group photo: --face N analyses the Nth face, largest first, and render
// retouches it; a face beyond those found, a box outside the photo or of no
// size, malformed numbers: one line naming the option and its range, the
// usage status, nothing written. A batch with --largest-face says which face
// of how many. --all-faces lists every face as --face N gives it.
TEST(FaceOptions, TakeTheFaceAskedForOrSayWhatTheyAllow)
{
    QTemporaryDir folder;
    QImage head = QImage(QString(BELLAVENOR_TEST_DATA) + "/portrait.png").copy(0, 0, 512, 340);
    QImage group(1024 + 256, 512, QImage::Format_RGB32);
    group.fill(Qt::gray);
    QPainter painter(&group);
    painter.drawImage(QRect(0, 0, 768, 510), head); // the larger face: the first
    painter.drawImage(768, 0, head);
    painter.end();
    const QString photo = folder.filePath("group.png");
    ASSERT_TRUE(group.save(photo));

    const QJsonObject second = QJsonDocument::fromJson(runCli({"analyse", photo, "--face", "2"}).out).object();
    EXPECT_EQ(second["facesFound"].toInt(), 2);
    EXPECT_GT(second["landmarks"][30][0].toDouble(), 768) << "the nose of the smaller head, on the right";
    const QJsonObject first = QJsonDocument::fromJson(runCli({"analyse", photo, "--face", "1"}).out).object();
    EXPECT_LT(first["landmarks"][30][0].toDouble(), 768);
    const QString boxed = QString("%1,%2,%3,%4").arg(768 + 170).arg(60).arg(110).arg(120);
    const QJsonObject inBox = QJsonDocument::fromJson(runCli({"analyse", photo, "--face-box", boxed}).out).object();
    EXPECT_NEAR(inBox["landmarks"][30][0].toDouble(), second["landmarks"][30][0].toDouble(), 3);
    const QJsonArray every = QJsonDocument::fromJson(runCli({"analyse", photo, "--all-faces"}).out)["faces"].toArray();
    ASSERT_EQ(every.size(), 2);
    EXPECT_EQ(every[0]["landmarks"], first["landmarks"]);
    EXPECT_EQ(every[1]["landmarks"], second["landmarks"]) << "each face as --face N gives it";
    EXPECT_EQ(every[1]["regions"], second["regions"]);
    const CliRun several = runCli({"analyse", photo});
    EXPECT_EQ(several.status, 2);
    EXPECT_TRUE(several.err.contains("2 faces: --face N takes one (1 is the largest), --all-faces")) << several.err.toStdString();

    const QString out = folder.filePath("out.png");
    const std::pair<QStringList, QString> refused[] = {
        {{"analyse", photo, "--face", "3"}, "--face 3: the picture has 2 faces; choose 1 to 2."},
        {{"render", photo, "--face", "3", "-o", out}, "--face 3: the picture has 2 faces; choose 1 to 2."},
        {{"render", photo, "--face", "0", "-o", out}, "--face needs a face number from 1 up, not \"0\"."},
        {{"render", photo, "--face", "two", "-o", out}, "--face needs a face number from 1 up"},
        {{"render", photo, "--face-box", "10,10,0,50", "-o", out}, "--face-box needs X,Y,W,H"},
        {{"analyse", photo, "--face-box", "10,10,50"}, "--face-box needs X,Y,W,H"},
        {{"analyse", photo, "--face-box", "10,10,50,7"}, "--face-box needs X,Y,W,H"},
        {{"render", photo, "--face-box", "1200,10,100,100", "-o", out}, "lies outside the photo: X and X+W up to 1280, Y and Y+H up to 512"},
        {{"render", photo, "--face", "1", "--face-box", "0,0,100,100", "-o", out}, "cannot be given together"},
        {{"render", photo, "--all-faces", "--face", "2", "-o", out}, "--all-faces cannot be given with --face."},
        {{"render", photo, "--largest-face", "--all-faces", "-o", folder.filePath("b/")}, "cannot be given together"},
    };
    for (const auto& [arguments, message] : refused) {
        const CliRun run = runCli(arguments);
        EXPECT_EQ(run.status, 64) << arguments.join(' ').toStdString();
        EXPECT_TRUE(run.err.contains(message.toUtf8()) && run.err.count('\n') == 1) << run.err.toStdString();
        EXPECT_FALSE(QFile::exists(out));
    }
    ASSERT_EQ(runCli({"render", photo, "--face", "2", "-o", out}).status, 0);
    const QString report = folder.filePath("report.json");
    const CliRun batch = runCli({"render", photo, "-o", folder.filePath("batch/"), "--largest-face", "--report", report});
    EXPECT_EQ(batch.status, 0) << batch.err.toStdString();
    EXPECT_TRUE(batch.err.contains("face 1 of 2"));
    QFile reportFile(report);
    ASSERT_TRUE(reportFile.open(QIODevice::ReadOnly));
    const QJsonObject entry = QJsonDocument::fromJson(reportFile.readAll())[0].toObject();
    EXPECT_EQ(entry["face"].toInt(), 1);
    EXPECT_EQ(entry["facesFound"].toInt(), 2);
    EXPECT_EQ(runCli({"render", photo, "-o", folder.filePath("refused/")}).status, 5) << "without it, refused as before";
    const CliRun all = runCli({"render", photo, "-o", folder.filePath("all/"), "--all-faces"});
    EXPECT_EQ(all.status, 0);
    EXPECT_TRUE(all.err.contains("2 faces")) << all.err.toStdString();
}

// The landmark model's cache: made by the first process, used by the next;
// a cache that is cut short, damaged by one byte or not a cache at all is
// passed over for dlib's reader and made anew. The analysis is the same to
// the bit every time.
TEST(LandmarkModelCache, AnyCacheGivesTheSameAnalysisAndABadOneIsMadeAnew)
{
    QTemporaryDir cache;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_CACHE_HOME", cache.path());
    const QString file = cache.filePath("Bellavenor/landmark-model.bin");
    const QStringList analyse{"analyse", QString(BELLAVENOR_TEST_DATA) + "/portrait.png"};
    const QByteArray byDlib = runCli(analyse, environment).out;
    ASSERT_TRUE(QFile::exists(file)) << "the first read leaves the cache";
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    const QByteArray good = written.readAll();
    written.close();
    const std::pair<const char*, std::function<QByteArray()>> caches[] = {
        {"the cache", [&] { return good; }},
        {"cut short", [&] { return good.left(good.size() / 2); }},
        {"one byte damaged", [&] { QByteArray b = good; b[b.size() / 3] = char(b[b.size() / 3] ^ 0x40); return b; }},
        {"not a cache", [] { return QByteArray(4096, 'x'); }},
        {"empty", [] { return QByteArray(); }},
    };
    // The face detector's cache beside it is damaged the same way.
    const QString detector = QDir(cache.filePath("Bellavenor")).entryInfoList({"face-detector-*.dat"}).value(0).filePath();
    ASSERT_FALSE(detector.isEmpty());
    const qint64 detectorSize = QFileInfo(detector).size();
    for (const auto& [name, bytes] : caches) {
        for (const QString& path : {file, detector}) {
            QFile damaged(path);
            ASSERT_TRUE(damaged.open(QIODevice::WriteOnly | QIODevice::Truncate));
            damaged.write(path == file ? bytes() : bytes().left(int(detectorSize)));
        }
        const CliRun run = runCli(analyse, environment);
        EXPECT_EQ(run.status, 0) << name;
        EXPECT_EQ(run.out, byDlib) << name;
        EXPECT_EQ(QFileInfo(file).size(), good.size()) << name << ": made anew";
    }
}
