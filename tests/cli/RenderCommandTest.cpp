#include "CliRun.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class RenderCommandTest : public ::testing::Test {
protected:
    QString settingsFile(const QByteArray& json)
    {
        QFile file(folder.filePath("settings.json"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(json);
        return file.fileName();
    }

    QString portrait() const { return QString(BELLAVENOR_TEST_DATA) + "/portrait.png"; }
    QTemporaryDir folder;
};

} // namespace

TEST_F(RenderCommandTest, RendersEveryEffectAtFullSizeAndReportsItsStages)
{
    const QString settings = settingsFile(R"({"b_Face_Skin_Smooth": true, "b_Remove_Wrinkles": true,
        "b_Color_Eyes": true, "b_Widen_Eyes": true, "b_Eye_Eyeshadow": true, "b_Eyes_Darken": true,
        "b_Apply_Cheeks": true, "b_Color_Lips": true, "b_Whiten_Teeth": true,
        "color_Color_Lips": "#c0304a", "f_Color_Lips_Transparency": 0.4, "pt_MakeUp_Center_Left": [30, 40]})");
    const QString out = folder.filePath("out.png");

    const CliRun run = runCli({"render", portrait(), "--settings", settings, "-o", out, "--timings"});

    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    const QImage rendered(out);
    EXPECT_EQ(rendered.size(), QSize(512, 512));
    EXPECT_NE(rendered.convertToFormat(QImage::Format_RGB32), QImage(portrait()).convertToFormat(QImage::Format_RGB32));
    for (const char* stage : {"decode: ", "analyse: ", "compose: ", "encode: "})
        EXPECT_TRUE(run.err.contains(stage)) << stage;
}

// A settings file that cannot be used is an unreadable file: one line that
// names the file and the field, nothing written.
TEST_F(RenderCommandTest, SettingsErrorsNameTheField)
{
    const QString out = folder.filePath("out.png");
    const std::pair<QByteArray, const char*> refused[] = {
        {R"({"b_Colour_Lips": true})", R"(In the settings file "settings.json": There is no setting "b_Colour_Lips")"},
        {R"({"f_Color_Lips_Transparency": "high"})", R"("f_Color_Lips_Transparency" has a value of the wrong type)"},
        {R"({"f_Cheeks_Blur_Level_Left": 100000})", R"("f_Cheeks_Blur_Level_Left" must lie between 0 and 100)"},
        {{}, "not a regular file"},
    };
    for (const auto& [json, message] : refused) {
        const CliRun run = runCli({"render", portrait(), "--settings", json.isNull() ? "/dev/zero" : settingsFile(json), "-o", out});
        EXPECT_EQ(run.status, 3) << message;
        EXPECT_TRUE(run.err.contains(message) && run.err.count('\n') == 1) << run.err.toStdString();
    }
    EXPECT_FALSE(QFile::exists(out));
}

TEST_F(RenderCommandTest, APresetSavedInTheWindowRendersAsItsFile)
{
    const QByteArray look = R"({"b_Color_Lips": true, "color_Color_Lips": "#8a2be2", "b_Whiten_Teeth": true})";
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_DATA_HOME", folder.path());
    ASSERT_TRUE(QDir().mkpath(folder.filePath("Bellavenor/presets")));
    QFile preset(folder.filePath("Bellavenor/presets/Evening look.json"));
    ASSERT_TRUE(preset.open(QIODevice::WriteOnly));
    preset.write(look);
    preset.close();

    const QString byPreset = folder.filePath("preset.png"), byFile = folder.filePath("file.png");
    ASSERT_EQ(runCli({"render", portrait(), "--preset", "Evening look", "-o", byPreset}, environment).status, 0);
    ASSERT_EQ(runCli({"render", portrait(), "--settings", settingsFile(look), "-o", byFile}).status, 0);
    EXPECT_EQ(QImage(byPreset), QImage(byFile));
    EXPECT_NE(QImage(byPreset).convertToFormat(QImage::Format_RGB32), QImage(portrait()).convertToFormat(QImage::Format_RGB32));

    const CliRun missing = runCli({"render", portrait(), "--preset", "Morning", "-o", byPreset}, environment);
    EXPECT_EQ(missing.status, 3);
    EXPECT_TRUE(missing.err.contains("no preset named \"Morning\"")) << missing.err.toStdString();
}
