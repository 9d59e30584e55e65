#include "CliRun.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
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
