// The values the program starts from — every setting's default, the range
// and slider scale settings files and panels are held to, the effect whose
// Defaults button restores it, the English labels — checked at once against a recorded file, so that a changed
// starting value is a deliberate change of tests/data/starting-values.json.
// BELLAVENOR_RECORD=1 writes the file anew from the program.
#include "EditingStateJson.h"
#include "EnglishLabels.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

#include <gtest/gtest.h>

namespace {

const QString kRecorded = QString(BELLAVENOR_TEST_DATA) + "/starting-values.json";

QJsonObject rangesAndScales()
{
    QJsonObject ranges;
    EditingState fields;
    fields.forEachField([&](const char* name, auto&) {
        if (const SettingRange* range = settingRange(name)) {
            const char* scale = range->slider == SliderScale::AsIs         ? "as is"
                                : range->slider == SliderScale::Hundredths ? "hundredths"
                                                                           : "no slider";
            const QJsonValue effect = range->effect ? QJsonValue(nameOfSwitch(range->effect)) : QJsonValue();
            ranges.insert(name, QJsonArray{range->min, range->max, scale, effect});
        }
    });
    return ranges;
}

QJsonObject startingValues()
{
    installEnglishLabelsOnce();
    return {{"settings", toJson(EditingState{})},
            {"ranges", rangesAndScales()},
            {"labels", QJsonArray::fromStringList(LocalisedLabels::load().all())}};
}

} // namespace

TEST(StartingValues, AreTheRecordedOnesInTheWindowAndTheCommandLineTool)
{
    const QJsonObject program = startingValues();
    if (qEnvironmentVariableIsSet("BELLAVENOR_RECORD")) {
        QFile file(kRecorded);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QJsonDocument(program).toJson(QJsonDocument::Indented));
    }
    QFile file(kRecorded);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonObject recorded = QJsonDocument::fromJson(file.readAll()).object();
    for (const QString part : {"settings", "ranges"})
        for (const QString& field : recorded[part].toObject().keys() + program[part].toObject().keys())
            EXPECT_EQ(program[part][field], recorded[part][field]) << part.toStdString() << " of " << field.toStdString();
    EXPECT_EQ(program["labels"], recorded["labels"]);

    QProcess cli;
    cli.start(BELLAVENOR_CLI, {"settings"});
    ASSERT_TRUE(cli.waitForFinished(60000));
    QJsonObject printed = QJsonDocument::fromJson(cli.readAllStandardOutput()).object();
    EXPECT_EQ(printed.take("version").toInt(), kSettingsVersion) << "the file it prints says its version";
    EXPECT_EQ(printed, recorded["settings"].toObject())
        << "bellavenor-cli settings prints the same defaults";
}
