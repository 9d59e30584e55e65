#include "StartedDelegate.h"
#include "EditingStateJson.h"
#include "EffectCatalogue.h"
#include "EffectPanel.h"
#include "MainWindow.h"
#include "View_Picture.h"
#include "Window_Face_Skin_Smooth.h"
#include "ui_MainWindow.h"
#include "ui_Window_Face_Skin_Smooth.h"

#include <QColorSpace>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

namespace {

class ViewControlsTest : public StartedDelegateTest {
protected:
    void SetUp() override
    {
        StartedDelegateTest::SetUp();
        open(portraitPath());
        ASSERT_TRUE(app->b_Image_Loaded_OK);
        view = app->viewPreview();
        window = app->window();
    }

    void key(QWidget* target, QEvent::Type type, int code, Qt::KeyboardModifiers modifiers = {},
             bool autoRepeat = false)
    {
        QKeyEvent event(type, code, modifiers, code == Qt::Key_Backslash ? "\\" : QString(), autoRepeat);
        QCoreApplication::sendEvent(target, &event);
    }

    // Waits for the action table's refill and returns its row buttons.
    std::vector<QPushButton*> rowButtons()
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return !app->timer_Reload_Toolbar_Arrays.isActive(); }, 5000));
        std::vector<QPushButton*> buttons;
        QTableWidget* table = app->tableActions();
        for (int row = 0; row < table->rowCount(); ++row)
            buttons.push_back(table->cellWidget(row, 0)->findChild<QPushButton*>());
        return buttons;
    }

    View_Picture* view = nullptr;
    MainWindow* window = nullptr;
};

// Every setting at a value no default has, in range, each one different.
EditingState scrambled()
{
    EditingState s;
    s.u_Face_Skin_Smooth_Level = 3;
    s.u_Face_Skin_Smooth_Radius = 17;
    s.u_Remove_Wrinkles_Level = 12;
    s.u_Widen_Eyes_Level = 9;
    s.color_Color_Eyes = {0.1f, 0.2f, 0.3f, 1};
    s.f_Color_Eyes_Transparency = 0.61f;
    s.color_Color_Lips = {0.4f, 0.5f, 0.6f, 1};
    s.f_Color_Lips_Transparency = 0.62f;
    s.color_Eyeshadow = {0.7f, 0.8f, 0.9f, 1};
    s.f_Color_Eyeshadow_Transparency = 0.63f;
    s.f_Eyeshadow_Blur_Level = 11;
    s.f_Darken_Eyes_Transparency = 0.64f;
    s.f_Darken_Eyes_Line_Width = 6;
    s.f_Darken_Eyes_Blur_Level = 2.5f;
    s.color_Color_Cheeks_1 = {0.15f, 0.25f, 0.35f, 1};
    s.color_Color_Cheeks_1_Right = {0.45f, 0.55f, 0.65f, 1};
    s.color_Color_Cheeks_2 = {0.75f, 0.85f, 0.95f, 1};
    s.f_Color_Cheeks_Transparency = 0.33f;
    s.f_Cheeks_Blur_Level_Left = 44;
    s.f_Cheeks_Blur_Level_Right = 55;
    s.pt_MakeUp_Center_Left = {31, 41};
    s.pt_MakeUp_Center_Right = {59, 26};
    return s;
}

// The fields each effect's panel shows and its Defaults button restores.
const std::map<std::string, std::set<std::string>> kEffectSettings = {
    {"b_Face_Skin_Smooth", {"u_Face_Skin_Smooth_Level", "u_Face_Skin_Smooth_Radius"}},
    {"b_Remove_Wrinkles", {"u_Remove_Wrinkles_Level"}},
    {"b_Color_Eyes", {"color_Color_Eyes", "f_Color_Eyes_Transparency"}},
    {"b_Widen_Eyes", {"u_Widen_Eyes_Level"}},
    {"b_Eye_Eyeshadow", {"color_Eyeshadow", "f_Color_Eyeshadow_Transparency", "f_Eyeshadow_Blur_Level"}},
    {"b_Eyes_Darken", {"f_Darken_Eyes_Transparency", "f_Darken_Eyes_Line_Width", "f_Darken_Eyes_Blur_Level"}},
    {"b_Apply_Cheeks",
     {"color_Color_Cheeks_1", "color_Color_Cheeks_1_Right", "color_Color_Cheeks_2", "f_Color_Cheeks_Transparency",
      "f_Cheeks_Blur_Level_Left", "f_Cheeks_Blur_Level_Right", "pt_MakeUp_Center_Left", "pt_MakeUp_Center_Right"}},
    {"b_Color_Lips", {"color_Color_Lips", "f_Color_Lips_Transparency"}},
    {"b_Whiten_Teeth", {}},
};

std::string switchName(bool EditingState::*effectSwitch)
{
    EditingState probe;
    std::string name;
    probe.forEachField([&](const char* field, auto& value) {
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, bool>)
            if (&value == &(probe.*effectSwitch))
                name = field;
    });
    return name;
}

} // namespace

TEST_F(ViewControlsTest, BackslashHeldShowsThePhotoAndShiftBackslashTogglesTheSplitFromWindowAndPanels)
{
    QWidget* table = app->tableActions();
    key(table, QEvent::KeyPress, Qt::Key_Backslash);
    EXPECT_TRUE(view->showingUntouched());
    key(table, QEvent::KeyRelease, Qt::Key_Backslash, {}, true);
    EXPECT_TRUE(view->showingUntouched()) << "a key repeat's release is no release";
    key(table, QEvent::KeyRelease, Qt::Key_Backslash);
    EXPECT_FALSE(view->showingUntouched());

    app->On_Mouth_Lips();
    QWidget* panel = app->window_Lips_Color();
    key(panel, QEvent::KeyPress, Qt::Key_Backslash);
    EXPECT_TRUE(view->showingUntouched()) << "while a panel has the focus too";
    key(panel, QEvent::KeyRelease, Qt::Key_Backslash);

    key(panel, QEvent::KeyPress, Qt::Key_Bar, Qt::ShiftModifier); // Shift+\ on most layouts
    EXPECT_TRUE(view->splitView());
    EXPECT_TRUE(window->ui().actionSplitView->isChecked());
    key(table, QEvent::KeyPress, Qt::Key_Backslash, Qt::ShiftModifier);
    EXPECT_FALSE(view->splitView());
    EXPECT_FALSE(view->showingUntouched());

    auto* field = new QLineEdit(window);
    field->show();
    field->setFocus();
    key(field, QEvent::KeyPress, Qt::Key_Backslash);
    EXPECT_FALSE(view->showingUntouched()) << "a backslash typed into a text field is text";
}

TEST_F(ViewControlsTest, CompareButtonShowsThePhotoOnlyWhileHeld)
{
    QToolButton* compare = window->compareButton();
    ASSERT_NE(compare, nullptr);
    QTest::mousePress(compare, Qt::LeftButton);
    EXPECT_TRUE(view->showingUntouched());
    QTest::mouseRelease(compare, Qt::LeftButton);
    EXPECT_FALSE(view->showingUntouched());
}

TEST_F(ViewControlsTest, ZoomActionsAndTheStatusLine)
{
    const Ui::MainWindow& ui = window->ui();
    window->resize(1200, 800);
    QCoreApplication::processEvents();
    const QString fitted = window->statusLine()->text();
    EXPECT_TRUE(fitted.contains("portrait.png")) << fitted.toStdString();
    EXPECT_TRUE(fitted.contains("512 × 512 px")) << fitted.toStdString();
    EXPECT_TRUE(fitted.contains("Fit (")) << fitted.toStdString();

    ui.actionZoomActualPixels->trigger();
    EXPECT_EQ(view->zoom(), 1);
    EXPECT_TRUE(window->statusLine()->text().endsWith("    100 %")) << window->statusLine()->text().toStdString();
    ui.actionZoomIn->trigger();
    EXPECT_EQ(view->zoom(), 1.5);
    ui.actionZoomOut->trigger();
    ui.actionZoomOut->trigger();
    EXPECT_EQ(view->zoom(), 2.0 / 3);
    EXPECT_TRUE(window->statusLine()->text().endsWith("    67 %"));
    ui.actionZoomFit->trigger();
    EXPECT_TRUE(view->framing().fitted);
    EXPECT_EQ(window->statusLine()->text(), fitted);
}

TEST_F(ViewControlsTest, RowsShowWhichEffectsAreOnUntilANewPhotoSwitchesThemOff)
{
    std::vector<QPushButton*> face = rowButtons(); // smooth skin, wrinkles, cheeks
    ASSERT_EQ(face.size(), 3u);
    for (QPushButton* row : face)
        EXPECT_FALSE(row->isChecked());

    face[0]->click(); // opens the panel; the click itself switches nothing on
    EXPECT_FALSE(face[0]->isChecked());
    auto* smooth = qobject_cast<Window_Face_Skin_Smooth*>(app->window_Face_Skin_Smooth().data());
    smooth->ui().checkApply->click();
    EXPECT_TRUE(face[0]->isChecked());
    EXPECT_FALSE(face[0]->icon().isNull()) << "ticked";
    EXPECT_FALSE(face[1]->isChecked());
    EXPECT_FALSE(face[2]->isChecked());

    app->state.b_Color_Eyes = true;
    app->OnToolbarEye();
    std::vector<QPushButton*> eye = rowButtons(); // colour, widen, shadow, under-eye
    ASSERT_EQ(eye.size(), 4u);
    EXPECT_TRUE(eye[0]->isChecked());
    EXPECT_FALSE(eye[1]->isChecked());

    open(portraitPath());
    EXPECT_FALSE(eye[0]->isChecked()) << "a new photo switches every effect off";
    EXPECT_TRUE(eye[0]->icon().isNull());
}

TEST_F(ViewControlsTest, DefaultsRestoreThatEffectsSettingsOnlyAndRedraw)
{
    for (const EffectEntry& effect : effectCatalogue()) {
        const std::string name = switchName(effect.effectSwitch);
        SCOPED_TRACE(name);
        app->state = scrambled();
        app->state.*effect.effectSwitch = true;
        app->state.b_Color_Lips = true; // another effect's switch
        const EditingState before = app->state;
        app->openEffect(effect);
        auto* panel = qobject_cast<EffectPanel*>(app->panelOf(effect).data());
        ASSERT_NE(panel, nullptr);
        auto* defaults = panel->findChild<QPushButton*>("buttonDefaults");
        ASSERT_NE(defaults, nullptr);
        EXPECT_EQ(defaults->text(), "Defaults");
        view->grab();
        const auto passes = view->compositor().passes();
        defaults->click();
        view->grab();

        const QJsonObject restored = toJson(app->state), original = toJson(before), starting = toJson({});
        const std::set<std::string>& own = kEffectSettings.at(name);
        for (const QString& field : restored.keys())
            EXPECT_EQ(restored[field], own.count(field.toStdString()) ? starting[field] : original[field])
                << field.toStdString();
        EXPECT_TRUE(app->state.*effect.effectSwitch) << "Apply stays";
        EXPECT_EQ(view->compositor().passes(), passes + (own.empty() ? 0 : 1)) << "one redraw with the defaults";
        panel->close();
        QCoreApplication::processEvents();
    }
}

TEST_F(ViewControlsTest, DefaultsMoveTheSlidersBackToo)
{
    app->state.u_Face_Skin_Smooth_Level = 3;
    app->state.u_Face_Skin_Smooth_Radius = 17;
    app->On_Face_Smooth_Skin();
    auto* smooth = qobject_cast<Window_Face_Skin_Smooth*>(app->window_Face_Skin_Smooth().data());
    ASSERT_EQ(smooth->ui().slider_Level->value(), 3);
    smooth->findChild<QPushButton*>("buttonDefaults")->click();
    EXPECT_EQ(smooth->ui().slider_Level->value(), 10);
    EXPECT_EQ(smooth->ui().slider_Ratio->value(), 10);
    EXPECT_EQ(app->state.u_Face_Skin_Smooth_Level, 10u);
}

TEST_F(ViewControlsTest, ExportedSettingsRenderedByTheCommandLineToolGiveTheWindowsPicture)
{
    app->state = scrambled();
    app->state.b_Face_Skin_Smooth = app->state.b_Color_Lips = app->state.b_Apply_Cheeks = true;
    app->state.b_Eye_Eyeshadow = app->state.b_Whiten_Teeth = app->state.b_Widen_Eyes = true;
    app->state.b_Cheeks_Picking_Color = true; // window-only: not exported
    app->state.i_Picking_Color_Index = 2;
    const QString settings = documents.filePath("tuned.json");
    QString suggested;
    app->chooseSettingsPath = [&](const QString& path) {
        suggested = path;
        return settings;
    };
    app->OnMenuExportSettings();
    EXPECT_TRUE(suggested.endsWith("/bellavenor-settings.json"));
    ASSERT_TRUE(alerts.empty());

    QFile file(settings);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonObject json = QJsonDocument::fromJson(file.readAll()).object();
    EXPECT_FALSE(json.contains("b_Cheeks_Picking_Color"));
    EXPECT_FALSE(json.contains("i_Picking_Color_Index"));
    EXPECT_FALSE(json.contains("b_Activated_Cheeks_Reposition"));
    EXPECT_EQ(json.value("u_Face_Skin_Smooth_Radius").toDouble(), 17);

    const QString rendered = documents.filePath("batch.png");
    QProcess cli;
    cli.start(BELLAVENOR_CLI, {"render", portraitPath(), "--settings", settings, "-o", rendered});
    ASSERT_TRUE(cli.waitForFinished(60000));
    ASSERT_EQ(cli.exitCode(), 0) << cli.readAllStandardError().toStdString();

    view->grab();
    QImage windowPicture = view->compositor().working().convertToFormat(QImage::Format_RGB32);
    QImage batchPicture = QImage(rendered).convertToFormat(QImage::Format_RGB32);
    windowPicture.setColorSpace({});
    batchPicture.setColorSpace({});
    EXPECT_TRUE(windowPicture == batchPicture);
}

TEST_F(ViewControlsTest, AnExportThatCannotBeWrittenSaysWhereAndWhy)
{
    const QString blocked = documents.filePath("no-such-folder/settings.json");
    app->chooseSettingsPath = [&](const QString&) { return blocked; };
    app->OnMenuExportSettings();
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(alerts[0].message, "Error");
    EXPECT_TRUE(alerts[0].informativeText.contains(blocked)) << alerts[0].informativeText.toStdString();
}
