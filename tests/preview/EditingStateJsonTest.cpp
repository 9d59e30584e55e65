#include "EditingStateJson.h"
#include "Presets.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gtest/gtest.h>


namespace {

QString readError(const QByteArray& json, EditingState& state, std::optional<PhotoEditsOf>* photo = nullptr)
{
    QString error;
    readJson(QJsonDocument::fromJson(json).object(), state, error, photo);
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

// A spot list that is not a list of points inside the photo, or longer than
// any face needs, is refused naming it, as a version-1 setting and as a part
// of the photo alike, and leaves the state alone.
TEST(SettingsFile, SpotListsThatAreNotPointsInsideThePhotoAreRefused)
{
    QByteArray tooMany = "[";
    for (int i = 0; i <= kLongestPointList; ++i)
        tooMany += i ? ",[1,2]" : "[1,2]";
    tooMany += "]";
    const std::pair<QByteArray, QString> refused[] = {
        {"[12, 40]", "has a value of the wrong type"},
        {R"({"x": 12})", "has a value of the wrong type"},
        {"[[12, 40], [100.5, 3]]", "must lie between 0 and 100"},
        {"[[12, -1]]", "must lie between 0 and 100"},
        {"[[12, 40, 7]]", "has a value of the wrong type"},
        {tooMany, "holds more than 10000 points"},
    };
    for (const auto& [list, message] : refused)
        for (const QByteArray& json : {R"({"f_Color_Lips_Transparency": 0.5, "array_Kept_Spots": )" + list + "}",
                                       R"({"version": 2, "f_Color_Lips_Transparency": 0.5, "photo": {"name": "a.png",
                                           "width": 10, "height": 10, "array_Kept_Spots": )" + list + "}}"}) {
            EditingState state;
            std::optional<PhotoEditsOf> photo;
            const QString error = readError(json, state, &photo);
            EXPECT_TRUE(error.contains("\"array_Kept_Spots\" " + message)) << error.toStdString();
            EXPECT_FALSE(photo.has_value());
        }
}

// Every version of the file is read: version 1 (no "version") with the
// spots among the settings, which name no photo and are left out; version 2
// with what was done on a photo, which applies to that photo only; a newer
// file is read while it holds no field this version does not know.
TEST(SettingsFile, AFileOfEveryVersionIsReadAndANewerOnesUnknownFieldIsRefused)
{
    EditingState state;
    std::optional<PhotoEditsOf> photo;
    EXPECT_EQ(readError(R"({"f_Color_Lips_Transparency": 0.35, "array_Healed_Spots": [[0, 100], [12.5, 40]]})", state,
                        &photo), "");
    EXPECT_FLOAT_EQ(state.f_Color_Lips_Transparency, 0.35f);
    ASSERT_TRUE(photo.has_value());
    EXPECT_EQ(photo->edits.array_Healed_Spots, PointList({{0, 100}, {12.5, 40}}));
    EXPECT_TRUE(leftOutFor(photo, "/photos/a.png", {10, 10}).contains("left out"));

    PhotoEditsOf done{"a.png", {640, 480}, {}};
    done.edits.array_Kept_Spots = {{3.25, 97}, {50, 0.5}};
    done.edits.array_Heal_Strokes = {{{10, 20}, {12, 22.5}}, {{40, 41}}};
    done.edits.rect_Cheek_Left_Area_To_Paint = QRectF(10, 20, -30, 40.5);
    done.edits.array_Eye_Darken_Right_Points = {{1, 2}, {3, 4}, {5, 6}, {7, 8}, {9, 10}, {11, 12.5}};
    state.f_Color_Lips_Transparency = 0.6f;
    const QJsonObject written = exportedSettings(state, &done);
    EXPECT_EQ(written.value("version").toInt(), kSettingsVersion);
    EditingState read;
    std::optional<PhotoEditsOf> readPhoto;
    QString error;
    ASSERT_TRUE(readJson(written, read, error, &readPhoto)) << error.toStdString();
    EXPECT_FLOAT_EQ(read.f_Color_Lips_Transparency, 0.6f);
    ASSERT_TRUE(readPhoto.has_value());
    EXPECT_EQ(readPhoto->edits.array_Kept_Spots, done.edits.array_Kept_Spots);
    EXPECT_EQ(readPhoto->edits.array_Heal_Strokes, done.edits.array_Heal_Strokes);
    EXPECT_EQ(readPhoto->edits.rect_Cheek_Left_Area_To_Paint, done.edits.rect_Cheek_Left_Area_To_Paint);
    EXPECT_EQ(readPhoto->edits.array_Eye_Darken_Right_Points, done.edits.array_Eye_Darken_Right_Points);
    EXPECT_EQ(leftOutFor(readPhoto, "/elsewhere/a.png", {640, 480}), "") << "the same photo, wherever it lies";
    EXPECT_TRUE(leftOutFor(readPhoto, "/photos/b.png", {640, 480}).contains("a.png (640 × 480)"));
    EXPECT_FALSE(leftOutFor(readPhoto, "/photos/a.png", {480, 640}).isEmpty());

    EXPECT_EQ(readError(R"({"version": 3, "f_Color_Lips_Transparency": 0.5})", read), "");
    const std::pair<QByteArray, QString> refused[] = {
        {R"({"version": 3, "f_Lips_Gloss": 0.5})",
         R"(There is no setting "f_Lips_Gloss" in this version of Bellavenor: the file is of settings version 3)"},
        {R"({"version": 2, "f_Lips_Gloss": 0.5})", R"(There is no setting "f_Lips_Gloss".)"},
        {R"({"version": 2, "array_Healed_Spots": [[1, 2]]})", R"(There is no setting "array_Healed_Spots".)"},
        {R"({"version": 0})", R"("version" must be a whole number from 1 up)"},
        {R"({"version": "2"})", R"("version" must be a whole number from 1 up)"},
        {R"({"version": 2, "photo": {"name": "a.png", "width": 10}})", "must name the photo and give its width"},
        {R"({"version": 2, "photo": {"name": "a.png", "width": 10, "height": 10,
             "array_Eye_Darken_Left_Points": [[1, 2]]}})", "An under-eye ring has six points."},
    };
    for (const auto& [json, message] : refused) {
        EditingState untouched;
        untouched.f_Color_Lips_Transparency = 0.9f;
        EXPECT_TRUE(readError(json, untouched).contains(message)) << json.toStdString() << ": "
                                                                   << readError(json, untouched).toStdString();
    }
}

// A preset's name is a file of its own in the presets folder: no "/" (even
// where a folder of that name exists), no leading ".", 1 to 80 characters
// once trimmed.
TEST(Presets, ANameIsRefusedUnlessItIsAFileOfItsOwnInTheFolder)
{
    QTemporaryDir folder;
    QDir(folder.path()).mkdir("a");
    const QString longest(80, QChar(u'é'));
    const std::pair<QString, QString> names[] = {{"a/b", ""},          {".hidden", ""},        {"../up", ""},
                                                 {"   ", ""},          {longest + "x", ""},    {" Evening ", "Evening.json"},
                                                 {longest, longest + ".json"}, {"a.b", "a.b.json"}};
    for (const auto& [name, file] : names) {
        QString error;
        const QString path = presetPath(folder.path(), name, error);
        EXPECT_EQ(path, file.isEmpty() ? QString() : QDir(folder.path()).filePath(file)) << name.toStdString();
        EXPECT_EQ(error.isEmpty(), !file.isEmpty()) << name.toStdString();
    }
}
