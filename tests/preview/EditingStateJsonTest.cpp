#include "EditingStateJson.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

QString readError(const QByteArray& json, EditingState& state)
{
    QString error;
    readJson(QJsonDocument::fromJson(json).object(), state, error);
    return error;
}

} // namespace

TEST(SettingsFile, ValuesOutsideWhatThePanelsCanSetAreRefusedNamingTheFieldAndItsRange)
{
    const std::pair<const char*, const char*> refused[] = {
        {R"({"u_Face_Skin_Smooth_Radius": 1e9})", "\"u_Face_Skin_Smooth_Radius\" must lie between 1 and 30"},
        {R"({"u_Remove_Wrinkles_Level": 1e9})", "\"u_Remove_Wrinkles_Level\" must lie between 0 and 20"},
        {R"({"f_Cheeks_Blur_Level_Left": 100000})", "\"f_Cheeks_Blur_Level_Left\" must lie between 0 and 100"},
        {R"({"pt_MakeUp_Center_Left": [1e100, 50]})", "\"pt_MakeUp_Center_Left\" must lie between 0 and 100"},
        {R"({"pt_MakeUp_Center_Right": [50, -0.5]})", "\"pt_MakeUp_Center_Right\" must lie between 0 and 100"},
        {R"({"f_Darken_Eyes_Line_Width": 1e9})", "\"f_Darken_Eyes_Line_Width\" must lie between 1 and 10"},
        {R"({"u_Widen_Eyes_Level": 1e20})", "\"u_Widen_Eyes_Level\" must lie between 0 and 30"},
        {R"({"f_Color_Lips_Transparency": 1.01})", "\"f_Color_Lips_Transparency\" must lie between 0 and 1"},
        {R"({"f_Eyeshadow_Blur_Level": 15.5})", "\"f_Eyeshadow_Blur_Level\" must lie between 0 and 15"},
        {R"({"i_Picking_Color_Index": 4})", "\"i_Picking_Color_Index\" must lie between 0 and 3"},
        {R"({"color_Color_Eyes": "#+fffff"})", "\"color_Color_Eyes\" has a value of the wrong type"},
        {R"({"color_Color_Lips": "#12345"})", "\"color_Color_Lips\" has a value of the wrong type"},
        {R"({"color_Eyeshadow": "#00ff00zz"})", "\"color_Eyeshadow\" has a value of the wrong type"},
        {R"({"u_Widen_Eyes_Level": 2.5})", "\"u_Widen_Eyes_Level\" has a value of the wrong type"},
        {R"({"color_Color_Cheeks_2": [1, 0, 1.5, 1]})", "\"color_Color_Cheeks_2\" must lie between 0 and 1"},
    };
    for (const auto& [json, message] : refused) {
        EditingState state;
        const QString error = readError(json, state);
        EXPECT_TRUE(error.contains(message)) << json << " gave: " << error.toStdString();
    }
}

TEST(SettingsFile, EndsOfTheRangesAreAcceptedAndEveryFieldSurvivesTheRoundTrip)
{
    EditingState state;
    EXPECT_EQ(readError(R"({"u_Face_Skin_Smooth_Radius": 30, "f_Cheeks_Blur_Level_Right": 0,
                            "pt_MakeUp_Center_Left": [0, 100], "color_Color_Eyes": "#10e0a0",
                            "color_Color_Lips": "#c0304a80"})",
                        state),
              "");
    EXPECT_EQ(state.u_Face_Skin_Smooth_Radius, 30u);
    EXPECT_EQ(state.pt_MakeUp_Center_Left, QPointF(0, 100));
    EXPECT_EQ(state.color_Color_Eyes, (RgbaColor{16 / 255.0f, 224 / 255.0f, 160 / 255.0f, 1}));
    EXPECT_FLOAT_EQ(state.color_Color_Lips.a, 128 / 255.0f);

    state.b_Whiten_Teeth = true;
    state.f_Darken_Eyes_Transparency = 0.35f;
    state.i_Picking_Color_Index = 2;
    EditingState read;
    QString error;
    ASSERT_TRUE(readJson(toJson(state), read, error)) << error.toStdString();
    EXPECT_TRUE(read == state);
}

TEST(SettingsFile, PipesDevicesAndBrokenFilesAreRefusedAndChangeNothing)
{
    QTemporaryDir folder;
    const QString pipe = folder.filePath("mine.json");
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EditingState state;
    state.u_Widen_Eyes_Level = 7;
    const EditingState before = state;
    QString error;

    EXPECT_FALSE(readSettingsFile(pipe, state, error));
    EXPECT_TRUE(error.contains("\"mine.json\" is not a regular file")) << error.toStdString();
    EXPECT_FALSE(readSettingsFile("/dev/zero", state, error));
    EXPECT_TRUE(error.contains("not a regular file")) << error.toStdString();

    const QString half = folder.filePath("half.json");
    QFile file(half);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"({"b_Color_Lips": true, "u_Widen_Eyes_Level": 99})");
    file.close();
    EXPECT_FALSE(readSettingsFile(half, state, error));
    EXPECT_TRUE(state == before) << "a refused file changes no field, not even the ones before the bad one";
}
