// A shoot rendered by one bellavenor-cli process: every photo accounted
// for, a rerun finishing only what is missing, Ctrl+C leaving whole files.
#include "../face/FaceFixtures.h"
#include "CliRun.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>

namespace {

class BatchRenderTest : public ::testing::Test {
protected:
    QString in(const QString& name) const { return folder.filePath("shoot/" + name); }
    QString out() const { return folder.filePath("out/"); }
    QStringList written() const { return QDir(out()).entryList(QDir::Files); }
    QTemporaryDir folder;
};

QJsonArray reportOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).array() : QJsonArray();
}

} // namespace

TEST_F(BatchRenderTest, GoodPhotosAreRenderedTheOthersReportedWithTheirReasonsAndARerunKeepsWhatIsThere)
{
    ASSERT_TRUE(QDir().mkpath(in("")));
    ASSERT_TRUE(portraitPicture().save(in("a.png")));
    ASSERT_TRUE(portraitPicture().mirrored(true, false).save(in("b.png")));
    QImage wall(300, 200, QImage::Format_RGB32);
    wall.fill(Qt::gray);
    ASSERT_TRUE(wall.save(in("wall.png")));
    ASSERT_TRUE(twoPortraits().save(in("two.png")));
    writtenFile(QDir(in("")), "cut.jpg", QByteArray("\xff\xd8\xff\xe0", 4) + QByteArray(500, 'x'));
    writtenFile(QDir(in("")), "notes.txt", "not a picture: not looked at");
    const QString report = folder.filePath("report.json");

    const CliRun run = runCli({"render", in(""), "-o", out(), "--report", report});
    EXPECT_EQ(run.status, 5) << run.err.toStdString();
    EXPECT_EQ(written(), (QStringList{"a.png", "b.png"}));
    EXPECT_EQ(QImage(out() + "a.png").size(), QSize(512, 512));
    const std::pair<const char*, const char*> expected[] = {{"rendered", ""},
                                                            {"rendered", ""},
                                                            {"refused", "cut.jpg"},
                                                            {"refused", "More than one face"},
                                                            {"refused", "No face"}};
    const QJsonArray entries = reportOf(report);
    ASSERT_EQ(entries.size(), 5);
    for (qsizetype i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(entries[i]["result"].toString(), expected[i].first) << entries[i]["input"].toString().toStdString();
        EXPECT_TRUE(entries[i]["reason"].toString().contains(expected[i].second));
        EXPECT_EQ(entries[i].toObject().contains("output"), i < 2) << "a refused photo names no picture";
    }
    EXPECT_TRUE(run.err.contains("Rendered 2 of 5 photos")) << run.err.toStdString();

    const CliRun again = runCli({"render", in(""), "-o", out(), "--report", report});
    EXPECT_EQ(again.status, 5);
    EXPECT_EQ(reportOf(report).at(0).toObject()["result"].toString(), "kept");
    EXPECT_TRUE(QString(again.err).contains(QRegularExpression("Rendered 0 of 5 photos in [0-9]+:[0-5][0-9]; kept 2 existing")))
        << again.err.toStdString();
}

TEST_F(BatchRenderTest, CtrlCLeavesOnlyWholePicturesAndTheRerunFinishesTheRest)
{
    ASSERT_TRUE(QDir().mkpath(in("")));
    const QImage head = portraitHead().scaled(2304, 1530, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    for (int i = 0; i < 8; ++i)
        ASSERT_TRUE(head.save(in(QString("photo-%1.png").arg(i))));
    QProcess batch;
    batch.setReadChannel(QProcess::StandardError); // the progress lines
    batch.start(BELLAVENOR_CLI, {"render", in(""), "-o", out()});
    ASSERT_TRUE(batch.waitForStarted());
    QByteArray said;
    while (!said.contains("[1/8]") && batch.state() == QProcess::Running) {
        batch.waitForReadyRead(30000);
        said += batch.readAllStandardError();
    }
    ASSERT_GT(batch.processId(), 0) << "finished before it could be interrupted";
    ::kill(pid_t(batch.processId()), SIGINT);
    ASSERT_TRUE(batch.waitForFinished(60000));
    EXPECT_EQ(batch.exitCode(), 130);
    said += batch.readAllStandardError();
    const QStringList first = written();
    const QRegularExpression summary("refused 0\\. Not started: ([0-9]+)\\. Interrupted");
    const QRegularExpressionMatch counted = summary.match(QString(said));
    ASSERT_TRUE(counted.hasMatch()) << said.toStdString();
    EXPECT_EQ(counted.captured(1).toInt(), 8 - first.size()) << "photos not started are not refused";
    EXPECT_LT(first.size(), 8) << "stopped early";
    EXPECT_GE(first.size(), 1);
    for (const QString& name : first)
        EXPECT_EQ(QImage(out() + name).size(), QSize(2304, 1530)) << name.toStdString() << " is whole";

    const CliRun rerun = runCli({"render", in(""), "-o", out()});
    EXPECT_EQ(rerun.status, 0) << rerun.err.toStdString();
    EXPECT_EQ(written().size(), 8);
    EXPECT_EQ(rerun.err.count("kept: its picture is there already"), first.size());
}
