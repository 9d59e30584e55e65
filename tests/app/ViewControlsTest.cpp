#include "StartedDelegate.h"
#include "FileActions.h"
#include "EditingStateJson.h"
#include "EffectCatalogue.h"
#include "EffectPanel.h"
#include "MainWindow.h"
#include "RandomSettings.h"
#include "TestPortrait.h"
#include "View_Picture.h"
#include "Window_Face_Skin_Smooth.h"
#include "ui_MainWindow.h"
#include "ui_Window_Face_Skin_Smooth.h"

#include <QJsonDocument>
#include <QProcess>
#include <QPushButton>
#include <QSlider>
#include <QTableWidget>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>

namespace {

class ViewControlsTest : public StartedDelegateTest {
protected:
    void SetUp() override
    {
        StartedDelegateTest::SetUp();
        open(portraitPath());
        ASSERT_TRUE(app->b_Image_Loaded_OK());
        view = app->viewPreview();
        window = app->window();
    }

    View_Picture* view = nullptr;
    MainWindow* window = nullptr;
};

// The settings whose starting values each effect's Defaults button
// restores, as recorded with the starting values.
std::set<QString> settingsOfEffect(const std::string& effectSwitch)
{
    QFile file(QString(BELLAVENOR_TEST_DATA) + "/starting-values.json");
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonObject ranges = QJsonDocument::fromJson(file.readAll()).object()["ranges"].toObject();
    std::set<QString> own;
    for (const QString& field : ranges.keys())
        if (ranges[field][3].toString().toStdString() == effectSwitch)
            own.insert(field);
    return own;
}

} // namespace

TEST_F(ViewControlsTest, StatusLineNamesThePhotoItsSizeAndTheZoom)
{
    EXPECT_TRUE(window->statusLine()->text().startsWith("portrait.png    512 × 512 px    Fit ("))
        << window->statusLine()->text().toStdString();
    window->ui().actionZoomActualPixels->trigger();
    window->ui().actionZoomOut->trigger();
    EXPECT_TRUE(window->statusLine()->text().endsWith("    67 %")) << window->statusLine()->text().toStdString();
}

namespace {

using S = EditingState;

// The action table's rows and the menus' entries, category by category,
// as the effects they open.
struct CategoryRows {
    QAction* Ui::MainWindow::*toolbar;
    QMenu* Ui::MainWindow::*menu;
    std::vector<bool S::*> rows, menuEntries;
};

const CategoryRows kCategories[] = {
    {&Ui::MainWindow::toolbarItemFace, &Ui::MainWindow::menuItemFace,
     {&S::b_Face_Skin_Smooth, &S::b_Remove_Wrinkles, &S::b_Apply_Cheeks, &S::b_Heal_Blemishes, &S::b_Natural_Skin},
     {&S::b_Face_Skin_Smooth, &S::b_Remove_Wrinkles, &S::b_Heal_Blemishes, &S::b_Natural_Skin}},
    {&Ui::MainWindow::toolbarItemEye, &Ui::MainWindow::menuItemEye,
     {&S::b_Color_Eyes, &S::b_Widen_Eyes, &S::b_Eye_Eyeshadow, &S::b_Eyes_Darken},
     {&S::b_Color_Eyes, &S::b_Widen_Eyes, &S::b_Eye_Eyeshadow}},
    {&Ui::MainWindow::toolbarItemMouth, &Ui::MainWindow::menuItemMouth, {&S::b_Color_Lips, &S::b_Whiten_Teeth},
     {&S::b_Color_Lips, &S::b_Whiten_Teeth}},
};

} // namespace

// Each row and each menu entry opens the panel of its own effect, and a row
// is ticked exactly while its effect is on.
TEST_F(ViewControlsTest, EachRowAndMenuEntryOpensItsOwnEffectAndRowsShowWhatIsOn)
{
    const auto opens = [&](bool S::*expected, const std::function<void()>& trigger) {
        for (const EffectInfo& effect : effects())
            if (app->panels().panelOf(effect))
                app->panels().panelOf(effect)->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        trigger();
        for (const EffectInfo& effect : effects())
            EXPECT_EQ(!app->panels().panelOf(effect).isNull(), effect.effectSwitch == expected) << nameOfSwitch(effect.effectSwitch);
    };
    int k = 0;
    for (const CategoryRows& c : kCategories) {
        (window->ui().*c.toolbar)->trigger();
        ASSERT_TRUE(QTest::qWaitFor([&] { return app->categoryTable().array_Buttons.size() == qsizetype(c.rows.size()); }, 5000));
        for (size_t row = 0; row < c.rows.size(); ++row) {
            SCOPED_TRACE(nameOfSwitch(c.rows[row]));
            app->document().state.*c.rows[row] = ++k % 2 == 0;
            app->categoryTable().showEffectsOn();
            EXPECT_EQ(app->categoryTable().array_Buttons[qsizetype(row)]->isChecked(), app->document().state.*c.rows[row]);
            EXPECT_EQ(app->categoryTable().array_Buttons[qsizetype(row)]->icon().isNull(), !(app->document().state.*c.rows[row])) << "the tick";
            opens(c.rows[row], [&] { app->categoryTable().array_Buttons[qsizetype(row)]->click(); });
        }
        const QList<QAction*> entries = (window->ui().*c.menu)->actions();
        ASSERT_EQ(entries.size(), qsizetype(c.menuEntries.size()));
        for (size_t entry = 0; entry < c.menuEntries.size(); ++entry)
            opens(c.menuEntries[entry], [&] { entries[qsizetype(entry)]->trigger(); });
    }
}

TEST_F(ViewControlsTest, DefaultsRestoreThatEffectsSettingsOnlyAndRedraw)
{
    for (const EffectInfo& effect : effects()) {
        const std::string name = nameOfSwitch(effect.effectSwitch);
        SCOPED_TRACE(name);
        EditingState before = randomSettings(7);
        before.b_Remove_Wrinkles = false; // another effect's switch, off
        before.*effect.effectSwitch = true;
        app->document().replaceSettings(before, "random settings");
        app->openEffect(effect);
        auto* panel = qobject_cast<EffectPanel*>(app->panels().panelOf(effect).data());
        ASSERT_NE(panel, nullptr);
        auto* defaults = panel->findChild<QPushButton*>("buttonDefaults");
        ASSERT_NE(defaults, nullptr);
        EXPECT_EQ(defaults->text(), "Defaults");
        view->grab();
        const auto passes = app->session().compositor().passes();
        defaults->click();
        view->grab();

        const QJsonObject restored = toJson(app->document().state), original = toJson(before), starting = toJson({});
        const std::set<QString> own = settingsOfEffect(name);
        for (const QString& field : restored.keys())
            EXPECT_EQ(restored[field], own.count(field) ? starting[field] : original[field]) << field.toStdString();
        EXPECT_TRUE(app->document().state.*effect.effectSwitch) << "Apply stays";
        EXPECT_EQ(app->session().compositor().passes(), passes + (own.empty() ? 0 : 1)) << "one redraw with the defaults";
        std::vector<int> shown; // the sliders moved back too: as a panel opened now shows them
        for (const QSlider* slider : panel->findChildren<QSlider*>())
            shown.push_back(slider->value());
        panel->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        app->openEffect(effect);
        std::vector<int> reopened;
        for (const QSlider* slider : app->panels().panelOf(effect)->findChildren<QSlider*>())
            reopened.push_back(slider->value());
        EXPECT_EQ(shown, reopened);
        app->panels().panelOf(effect)->close();
        QCoreApplication::processEvents();
    }
}

// What was done on the photo goes with the file, under the photo's name:
// the tool renders it on that photo and leaves it out, saying so, on another.
TEST_F(ViewControlsTest, ExportedSettingsRenderedByTheCommandLineToolGiveTheWindowsPicture)
{
    app->document().state = randomSettings(8);
    app->document().state.b_Heal_Blemishes = true;
    app->document().state.b_Cheeks_Picking_Color = true; // window-only: not exported
    app->document().state.i_Picking_Color_Index = 2;
    app->document().photoEdits.array_Healed_Spots = {cheekPercent()};
    app->document().photoEdits.rect_Cheek_Left_Area_To_Paint.translate(15, -10);
    const QString settings = documents.filePath("tuned.json");
    QString suggested;
    app->dialogs.chooseSettingsPath = [&](const QString& path) {
        suggested = path;
        return settings;
    };
    app->files().exportSettings();
    EXPECT_TRUE(suggested.endsWith("/bellavenor-settings.json"));
    ASSERT_TRUE(alerts.empty());

    QFile file(settings);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonObject json = QJsonDocument::fromJson(file.readAll()).object();
    EXPECT_FALSE(json.contains("b_Cheeks_Picking_Color"));
    EXPECT_FALSE(json.contains("i_Picking_Color_Index"));
    EXPECT_FALSE(json.contains("b_Activated_Cheeks_Reposition"));
    EXPECT_EQ(json.value("u_Face_Skin_Smooth_Radius").toDouble(), double(app->document().state.u_Face_Skin_Smooth_Radius));
    EXPECT_EQ(json.value("photo").toObject().value("name").toString(), "portrait.png");

    const QString rendered = documents.filePath("batch.png");
    QProcess cli;
    cli.start(BELLAVENOR_CLI, {"render", portraitPath(), "--settings", settings, "-o", rendered});
    ASSERT_TRUE(cli.waitForFinished(60000));
    ASSERT_EQ(cli.exitCode(), 0) << cli.readAllStandardError().toStdString();

    view->grab();
    QImage windowPicture = app->session().compositor().working().convertToFormat(QImage::Format_RGB32);
    QImage batchPicture = QImage(rendered).convertToFormat(QImage::Format_RGB32);
    windowPicture.setColorSpace({});
    batchPicture.setColorSpace({});
    EXPECT_TRUE(windowPicture == batchPicture);

    QFile::copy(portraitPath(), documents.filePath("another.png"));
    cli.start(BELLAVENOR_CLI, {"render", documents.filePath("another.png"), "--settings", settings, "-o", rendered});
    ASSERT_TRUE(cli.waitForFinished(60000));
    EXPECT_EQ(cli.exitCode(), 0);
    EXPECT_TRUE(cli.readAllStandardError().contains("portrait.png (512 × 512), its spots and areas, was left out"));
    EXPECT_FALSE(QImage(rendered).convertToFormat(QImage::Format_RGB32) == windowPicture);

    const QString blocked = documents.filePath("no-such-folder/settings.json");
    app->dialogs.chooseSettingsPath = [&](const QString&) { return blocked; };
    app->files().exportSettings();
    ASSERT_EQ(alerts.size(), 1u) << "an export that cannot be written says where";
    EXPECT_TRUE(alerts[0].message == "Error" && alerts[0].informativeText.contains(blocked));
}
