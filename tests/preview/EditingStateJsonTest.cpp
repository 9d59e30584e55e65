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
    state.array_Kept_Spots = {{3.25, 97}, {50, 0.5}};
    EditingState read;
    QString error;
    ASSERT_TRUE(readJson(toJson(state), read, error)) << error.toStdString();
    EXPECT_TRUE(read == state);
}

// A spot list that is not a list of points inside the photo, or longer than
// any face needs, is refused naming the field and leaves the state alone.
TEST(SettingsFile, SpotListsThatAreNotPointsInsideThePhotoAreRefused)
{
    QByteArray tooMany = R"({"array_Kept_Spots": [)";
    for (int i = 0; i <= kLongestPointList; ++i)
        tooMany += i ? ",[1,2]" : "[1,2]";
    tooMany += "]}";
    const std::pair<QByteArray, QString> refused[] = {
        {R"({"array_Healed_Spots": [12, 40]})", R"("array_Healed_Spots" has a value of the wrong type)"},
        {R"({"array_Healed_Spots": {"x": 12}})", R"("array_Healed_Spots" has a value of the wrong type)"},
        {R"({"array_Healed_Spots": [[12, 40], [100.5, 3]]})", R"("array_Healed_Spots" must lie between 0 and 100)"},
        {R"({"array_Kept_Spots": [[12, -1]]})", R"("array_Kept_Spots" must lie between 0 and 100)"},
        {R"({"array_Kept_Spots": [[12, 40, 7]]})", R"("array_Kept_Spots" has a value of the wrong type)"},
        {tooMany, R"("array_Kept_Spots" holds more than 10000 points)"},
    };
    for (const auto& [json, message] : refused) {
        EditingState state;
        state.array_Healed_Spots = {{5, 6}};
        EXPECT_TRUE(readError(json, state).contains(message)) << readError(json, state).toStdString();
        EXPECT_EQ(state.array_Healed_Spots, PointList({{5, 6}}));
        EXPECT_TRUE(state.array_Kept_Spots.isEmpty());
    }
    EditingState state;
    EXPECT_EQ(readError(R"({"array_Healed_Spots": [[0, 100], [12.5, 40]], "array_Kept_Spots": []})", state), "");
    EXPECT_EQ(state.array_Healed_Spots, PointList({{0, 100}, {12.5, 40}}));
}
