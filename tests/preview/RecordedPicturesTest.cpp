// The portrait composed under a table of settings, checked against pictures
// recorded when each effect was looked at closely: a changed pixel anywhere
// (a formula, a region, a blend, an order) fails here. Each recording keeps
// only the pixels the settings change; the rest is transparent, so the files
// stay small. BELLAVENOR_RECORD=1 writes them anew from the program.
#include "TestPortrait.h"
#include "Compositor.h"
#include "EditingStateJson.h"
#include "OpenedPhoto.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

namespace {

// Every setting at a value other than its default, so that two settings
// exchanged or one read in place of another show.
const struct RecordedCase {
    const char* name;
    const char* settings;
} kCases[] = {
    {"none", "{}"},
    {"skin", R"({"b_Face_Skin_Smooth": true})"},
    {"skin-strong", R"({"b_Face_Skin_Smooth": true, "u_Face_Skin_Smooth_Level": 17, "u_Face_Skin_Smooth_Radius": 4})"},
    {"wrinkles", R"({"b_Remove_Wrinkles": true, "u_Remove_Wrinkles_Level": 13})"},
    {"eye-colour", R"({"b_Color_Eyes": true, "color_Color_Eyes": "#2e8b57", "f_Color_Eyes_Transparency": 0.35})"},
    {"widen-eyes", R"({"b_Widen_Eyes": true, "u_Widen_Eyes_Level": 23})"},
    {"eye-shadow", R"({"b_Eye_Eyeshadow": true, "color_Eyeshadow": "#8a2be2", "f_Color_Eyeshadow_Transparency": 0.45,
                      "f_Eyeshadow_Blur_Level": 3.5})"},
    {"under-eye", R"({"b_Eyes_Darken": true, "f_Darken_Eyes_Transparency": 0.55, "f_Darken_Eyes_Line_Width": 6,
                     "f_Darken_Eyes_Blur_Level": 2.5})"},
    {"cheeks", R"({"b_Apply_Cheeks": true})"},
    {"cheeks-own", R"({"b_Apply_Cheeks": true, "color_Color_Cheeks_1": "#ffd700", "color_Color_Cheeks_1_Right": "#40e0d0",
                      "color_Color_Cheeks_2": "#dc143c", "f_Color_Cheeks_Transparency": 0.3, "f_Cheeks_Blur_Level_Left": 11,
                      "f_Cheeks_Blur_Level_Right": 2, "pt_MakeUp_Center_Left": [35, 70], "pt_MakeUp_Center_Right": [60, 45]})"},
    {"lips", R"({"b_Color_Lips": true, "color_Color_Lips": "#c71585", "f_Color_Lips_Transparency": 0.15})"},
    {"teeth", R"({"b_Whiten_Teeth": true})"},
    {"all", R"({"b_Face_Skin_Smooth": true, "b_Remove_Wrinkles": true, "b_Color_Eyes": true, "b_Widen_Eyes": true,
               "u_Widen_Eyes_Level": 12, "b_Eye_Eyeshadow": true, "b_Eyes_Darken": true, "f_Darken_Eyes_Transparency": 0.4,
               "b_Apply_Cheeks": true, "b_Color_Lips": true, "b_Whiten_Teeth": true})"},
    {"handles", R"({"b_Apply_Cheeks": true, "b_Eyes_Darken": true, "f_Darken_Eyes_Transparency": 0.7})"},
};

EditingState settingsOf(const RecordedCase& recorded)
{
    EditingState state;
    QString error;
    EXPECT_TRUE(readJson(QJsonDocument::fromJson(recorded.settings).object(), state, error)) << error.toStdString();
    state.b_Activated_Cheeks_Reposition = state.b_Activated_Darken_Eyes_Reposition = recorded.name == std::string("handles");
    return state;
}

// The composed picture where it differs from the photo, transparent elsewhere.
QImage changesOf(const QImage& picture, const QImage& photo)
{
    QImage changes = picture.convertToFormat(QImage::Format_ARGB32);
    const QImage original = photo.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < changes.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(changes.scanLine(y));
        const auto* was = reinterpret_cast<const QRgb*>(original.constScanLine(y));
        for (int x = 0; x < changes.width(); ++x)
            if (row[x] == was[x])
                row[x] = 0;
    }
    return changes;
}

// The largest channel difference and how many pixels differ at all.
std::pair<int, int> differenceOf(const QImage& a, const QImage& b)
{
    int largest = 0, pixels = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            const int d = std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                    std::abs(qBlue(p) - qBlue(q)), std::abs(qAlpha(p) - qAlpha(q))});
            largest = std::max(largest, d);
            pixels += d > 0;
        }
    return {largest, pixels};
}

} // namespace

class RecordedPictures : public testing::TestWithParam<RecordedCase> {};

// A library build choosing other vector instructions may round a pixel
// differently by one level; anything more is a changed picture.
TEST_P(RecordedPictures, PortraitComposedAsRecorded)
{
    const QString path = QString(BELLAVENOR_TEST_DATA) + "/recorded/" + GetParam().name + ".png";
    Compositor compositor;
    const QImage changes
        = changesOf(compositor.compose(portrait(), PhotoEdits::of(portrait().regions), settingsOf(GetParam())), portrait().img_Basic);
    if (qEnvironmentVariableIsSet("BELLAVENOR_RECORD")) {
        ASSERT_TRUE(changes.save(path));
    }
    const QImage recorded = QImage(path).convertToFormat(QImage::Format_ARGB32);
    ASSERT_EQ(recorded.size(), changes.size()) << path.toStdString();
    const auto [largest, pixels] = differenceOf(changes, recorded);
    EXPECT_LE(largest, 1) << pixels << " pixels differ";
    EXPECT_LE(pixels, changes.width() * changes.height() / 1000);
}

INSTANTIATE_TEST_SUITE_P(EffectsAndSettings, RecordedPictures, testing::ValuesIn(kCases),
                         [](const auto& info) {
                             QString name = info.param.name;
                             return name.remove('-').toStdString();
                         });
