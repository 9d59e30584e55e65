#include "EditingStateJson.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gtest/gtest.h>


namespace {

QString readError(const QByteArray& json, EditingState& state)
{
    QString error;
    readJson(QJsonDocument::fromJson(json).object(), state, error);
    return error;
}

} // namespace

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
