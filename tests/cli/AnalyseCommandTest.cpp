#include "CliRun.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(AnalyseCommand, PrintsTheWholeAnalysisOfThePortraitAsJson)
{
    const CliRun run = runCli({"analyse", QString(BELLAVENOR_TEST_DATA) + "/portrait.png"});
    ASSERT_EQ(run.status, 0) << run.err.toStdString();

    const QJsonObject analysis = QJsonDocument::fromJson(run.out).object();
    EXPECT_EQ(analysis["result"].toInt(), 0);
    EXPECT_EQ(analysis["imageSize"].toArray(), (QJsonArray{512, 512}));
    EXPECT_EQ(analysis["landmarks"].toArray().size(), 68);
    const QJsonObject regions = analysis["regions"].toObject();
    EXPECT_EQ(regions["array_Face_Points"].toArray().size(), 34);
    EXPECT_EQ(regions["path_Face"].toArray().size(), 35);
    EXPECT_EQ(regions["rect_Cheek_Left_Area_To_Paint"].toArray().size(), 4);
    EXPECT_EQ(regions.size(), 44) << "every region field, under its own name";
}

TEST(AnalyseCommand, UnreadableFileEndsWithOneLineOnStderr)
{
    QTemporaryDir folder;
    QFile notes(folder.filePath("notes.jpg"));
    ASSERT_TRUE(notes.open(QIODevice::WriteOnly));
    notes.write("not a picture");
    notes.close();

    const CliRun run = runCli({"analyse", notes.fileName()});

    EXPECT_EQ(run.status, 3);
    EXPECT_TRUE(run.out.isEmpty());
    EXPECT_TRUE(run.err.trimmed().contains("notes.jpg"));
    EXPECT_EQ(run.err.trimmed().count('\n'), 0);
}

TEST(CommandLine, HelpVersionUnknownWordsAndTheLogOnlyWhenAsked)
{
    for (const char* help : {"--help", "-h"}) {
        const CliRun run = runCli({help});
        EXPECT_EQ(run.status, 0);
        EXPECT_TRUE(run.out.startsWith("usage: bellavenor-cli analyse PHOTO")) << help;
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
