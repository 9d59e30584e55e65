// Undo and Redo, settings files and presets, the panels' dock and what
// comes back at the next start.
#include "StartedDelegate.h"
#include "FileActions.h"
#include "EditHistory.h"
#include "EditingStateJson.h"
#include "EffectCatalogue.h"
#include "RandomSettings.h"
#include "MainWindow.h"
#include "Presets.h"
#include "PresetsMenu.h"
#include "RecentPhotos.h"
#include "View_Picture.h"
#include "face/FaceFixtures.h"
#include "Window_Cheek.h"
#include "Window_Lips_Color.h"
#include "ui_MainWindow.h"
#include "ui_Window_Cheek.h"
#include "ui_Window_Lips_Color.h"

#include <QCheckBox>
#include <QDirIterator>
#include <QJsonDocument>
#include <QAbstractButton>
#include <QDockWidget>
#include <QSlider>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QSlider>
#include <QTest>

#include <functional>

#include <gtest/gtest.h>

namespace {

Window_Lips_Color* lipsPanel(AppDelegate& app)
{
    app.On_Mouth_Lips();
    return qobject_cast<Window_Lips_Color*>(app.panels().panelOf(&EditingState::b_Color_Lips).data());
}

// A view position over a photo point (pixels, y up), as MouseTest maps it.
QPoint inView(const View_Picture& view, QPointF imagePoint)
{
    const QRectF frame = view.rectDrawCamera();
    const double scale = frame.width() / 512;
    return QPointF(frame.x() + imagePoint.x() * scale, view.height() - frame.y() - imagePoint.y() * scale).toPoint();
}

struct Change {
    const char* name;
    const char* step; // as the Edit menu names it
    void (*setUp)(AppDelegate&);
    void (*make)(AppDelegate&, const QString& folder);
};

// Every file below `folder`, hidden ones too.
QStringList filesIn(const QString& folder)
{
    QStringList files;
    QDirIterator all(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (all.hasNext())
        files << all.next();
    files.sort();
    return files;
}

void cheeksOn(AppDelegate& app)
{
    app.document().state.b_Apply_Cheeks = true;
}

const Change kChanges[] = {
    {"switch", "Lips On", [](AppDelegate&) {}, [](AppDelegate& app, const QString&) { lipsPanel(app)->ui().checkApply->click(); }},
    {"slider drag", "Lip Colour Transparency", [](AppDelegate&) {},
     [](AppDelegate& app, const QString&) {
         for (int step = 0; step < 12; ++step)
             lipsPanel(app)->ui().slider_Transparency->triggerAction(QAbstractSlider::SliderSingleStepAdd);
     }},
    {"colour", "Lip Colour", [](AppDelegate&) {},
     [](AppDelegate& app, const QString&) { emit lipsPanel(app)->ui().colorwellColor->colourChosen({0.3f, 0.6f, 0.2f, 1}); }},
    {"pick", "Right Outer Blush Colour", cheeksOn,
     [](AppDelegate& app, const QString&) {
         app.On_Face_Cheek();
         qobject_cast<Window_Cheek*>(app.panels().panelOf(&EditingState::b_Apply_Cheeks).data())->ui().btn_Pick_Color_1_Right->click();
         QTest::mouseClick(app.viewPreview(), Qt::LeftButton, {}, inView(*app.viewPreview(), {300, 300}));
     }},
    {"blush area drag", "Move Blush Area", [](AppDelegate& app) { app.document().state.b_Apply_Cheeks = app.document().state.b_Activated_Cheeks_Reposition = true; },
     [](AppDelegate& app, const QString&) {
         View_Picture& view = *app.viewPreview();
         const QPoint from = inView(view, app.document().photoEdits.rect_Cheek_Left_Area_To_Paint.center());
         QTest::mousePress(&view, Qt::LeftButton, {}, from);
         QMouseEvent move(QEvent::MouseMove, from + QPoint(25, 15), view.mapToGlobal(from + QPoint(25, 15)),
                          Qt::NoButton, Qt::LeftButton, {});
         QCoreApplication::sendEvent(&view, &move);
         QTest::mouseRelease(&view, Qt::LeftButton, {}, from + QPoint(25, 15));
     }},
    {"Defaults", "Lips Defaults",
     [](AppDelegate& app) { lipsPanel(app)->ui().slider_Transparency->setValue(65); },
     [](AppDelegate& app, const QString&) { lipsPanel(app)->findChild<QPushButton*>("buttonDefaults")->click(); }},
    {"settings file", "Open Settings", [](AppDelegate&) {},
     [](AppDelegate& app, const QString& folder) {
         const QString path = writtenFile(
             folder, "look.json", R"({"b_Color_Eyes": true, "color_Color_Eyes": "#2e8b57", "u_Face_Skin_Smooth_Radius": 3})");
         app.dialogs.chooseSettingsToOpen = [path](const QString&) { return path; };
         app.files().openSettings();
     }},
};

struct Seen {
    EditingState state;
    PhotoEdits photoEdits;
    QImage picture;
};

class UndoTest : public StartedDelegateTest, public testing::WithParamInterface<Change> {
protected:
    Seen seen()
    {
        app->viewPreview()->grab();
        return {app->document().state, app->document().photoEdits, app->session().compositor().working().copy()};
    }
    void expectSeen(const Seen& expected, const char* when)
    {
        const Seen now = seen();
        EditingState settings = expected.state;
        settings.keepModesOf(now.state); // what the mouse means stays the window's
        EXPECT_TRUE(now.state == settings) << when;
        EXPECT_TRUE(now.photoEdits == expected.photoEdits) << when;
        EXPECT_TRUE(now.picture == expected.picture) << when << ": the picture, bit for bit";
        if (auto* lips = qobject_cast<Window_Lips_Color*>(app->panels().panelOf(&EditingState::b_Color_Lips).data())) { // the panel shows it
            EXPECT_EQ(lips->ui().checkApply->isChecked(), settings.b_Color_Lips) << when;
            EXPECT_EQ(lips->ui().slider_Transparency->value(), std::lround(settings.f_Color_Lips_Transparency * 100)) << when;
        }
    }
};

} // namespace

TEST_P(UndoTest, EachKindOfChangeIsOneNamedStepUndoneAndRedoneBitForBit)
{
    open(portraitPath());
    app->window()->resize(1000, 700);
    GetParam().setUp(*app);
    app->document().history().startAt({app->document().state, app->document().photoEdits}); // where the set-up left it, switches set directly too
    const Seen before = seen();
    QUndoStack& stack = app->document().history().stack();
    const int steps = stack.count();
    GetParam().make(*app, documents.path());
    const Seen after = seen();
    ASSERT_FALSE(after.state == before.state && after.photoEdits == before.photoEdits) << "the change shows";
    EXPECT_EQ(stack.count(), steps + 1) << "one step";
    EXPECT_EQ(stack.undoText().toStdString(), GetParam().step);

    const std::uint64_t passes = app->session().compositor().passes();
    app->window()->ui().menuEdit->actions().at(0)->trigger(); // Edit → Undo
    expectSeen(before, "undone");
    EXPECT_EQ(app->session().compositor().passes(), passes + 1) << "one redraw";
    app->window()->ui().menuEdit->actions().at(1)->trigger(); // Edit → Redo
    expectSeen(after, "redone");
}

INSTANTIATE_TEST_SUITE_P(Changes, UndoTest, testing::ValuesIn(kChanges), [](const auto& info) {
    QString name = info.param.name;
    return name.remove(' ').toStdString();
});

class EditorHabitsTest : public StartedDelegateTest {};

// Field by field from the settings list: a new photo turns every switch
// off and keeps every level, colour, transparency, blur, centre and mode.
TEST_F(EditorHabitsTest, ANewPhotoSwitchesEffectsOffKeepsEverythingElseAndStartsANewHistory)
{
    open(portraitPath());
    lipsPanel(*app)->ui().slider_Transparency->setValue(55);
    ASSERT_TRUE(app->document().history().stack().canUndo());
    EditingState before = randomSettings(31);
    before.b_Activated_Darken_Eyes_Reposition = true;
    before.i_Picking_Color_Index = 2;
    app->panels().panelOf(&EditingState::b_Color_Lips)->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    app->document().state = before;
    for (const EffectInfo& effect : effects()) // their Apply boxes ticked
        app->openEffect(effect);
    open(portraitPath());
    EXPECT_FALSE(app->document().history().stack().canUndo()) << "the old face's steps are gone";
    EditingState after = app->document().state;
    const auto switches = switchesInCloseOrder();
    before.forEachField([&](const char* name, auto& was) {
        const bool isSwitch = std::any_of(switches.begin(), switches.end(),
                                          [&](bool EditingState::*s) { return qstrcmp(nameOfSwitch(s), name) == 0; });
        after.forEachField([&](const char* field, auto& now) {
            if constexpr (std::is_same_v<decltype(was), decltype(now)>)
                if (qstrcmp(field, name) == 0) {
                    if constexpr (std::is_same_v<std::decay_t<decltype(now)>, bool>)
                        EXPECT_EQ(now, isSwitch ? false : was) << name;
                    else
                        EXPECT_TRUE(now == was) << name << " keeps its value";
                }
        });
    });
    for (const EffectInfo& effect : effects())
        EXPECT_FALSE(app->panels().panelOf(effect)->findChild<QCheckBox*>("checkApply")->isChecked())
            << nameOfSwitch(effect.effectSwitch);
}

// Quick changes of one setting are one step; of two settings, two steps,
// each undone alone.
TEST_F(EditorHabitsTest, QuickChangesMergeOnlyWithinOneSetting)
{
    open(portraitPath());
    app->On_Face_Smooth_Skin();
    auto* skin = app->panels().panelOf(&EditingState::b_Face_Skin_Smooth).data();
    QSlider* level = skin->findChild<QSlider*>("slider_Level");
    QSlider* radius = skin->findChild<QSlider*>("slider_Ratio");
    const struct {
        const char* name;
        std::function<void()> first, second;
        QStringList steps; // newest first
    } cases[] = {
        {"one slider twice", [&] { level->setValue(12); }, [&] { level->setValue(15); }, {"Smooth Skin Level"}},
        {"two sliders", [&] { level->setValue(3); }, [&] { radius->setValue(22); },
         {"Smooth Skin Radius", "Smooth Skin Level"}},
        {"a switch, then a slider", [&] { skin->findChild<QCheckBox*>("checkApply")->click(); },
         [&] { radius->setValue(7); }, {"Smooth Skin Radius", "Smooth Skin On"}},
        {"a slider, then another panel's", [&] { level->setValue(9); },
         [&] { lipsPanel(*app)->ui().slider_Transparency->setValue(71); }, {"Lip Colour Transparency", "Smooth Skin Level"}},
    };
    QUndoStack& stack = app->document().history().stack();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        app->document().history().startAt({app->document().state, app->document().photoEdits});
        const EditingState start = app->document().state;
        c.first();
        const EditingState middle = app->document().state;
        c.second();
        ASSERT_EQ(stack.count(), c.steps.size());
        for (const QString& step : c.steps) {
            EXPECT_EQ(stack.undoText(), step);
            stack.undo();
        }
        EXPECT_TRUE(app->document().state == start);
        if (c.steps.size() == 2) { // the first step alone
            stack.redo();
            EXPECT_TRUE(app->document().state == middle);
        }
    }
}

TEST_F(EditorHabitsTest, ARefusedSettingsFileChangesNothing)
{
    open(portraitPath());
    const QString refused = writtenFile(documents.path(), "wild.json", R"({"u_Face_Skin_Smooth_Level": 99})");
    const EditingState before = app->document().state;
    app->dialogs.chooseSettingsToOpen = [&](const QString&) { return refused; };
    app->files().openSettings();
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_TRUE(alerts[0].informativeText.contains("u_Face_Skin_Smooth_Level")) << alerts[0].informativeText.toStdString();
    EXPECT_TRUE(app->document().state == before);
    EXPECT_FALSE(app->document().history().stack().canUndo());
}

TEST_F(EditorHabitsTest, APresetIsSavedListedAppliedAsOneStepAndDeleted)
{
    open(portraitPath());
    lipsPanel(*app)->ui().slider_Transparency->setValue(35);
    app->document().photoEdits.array_Healed_Spots = {{40, 60}}; // the photo's, not the look's
    app->dialogs.askPresetName = [] { return QString("Evening look"); };
    app->presets().saveAsPreset();
    EXPECT_EQ(presetNames(app->presetsFolder), QStringList{"Evening look"});
    QFile preset(QDir(app->presetsFolder).filePath("Evening look.json"));
    ASSERT_TRUE(preset.open(QIODevice::ReadOnly));
    const QJsonObject saved = QJsonDocument::fromJson(preset.readAll()).object();
    EXPECT_EQ(saved.value("version").toInt(), kSettingsVersion);
    EXPECT_FALSE(saved.contains("photo")) << "a preset carries no spots to other photos";
    QMenu* menu = app->window()->ui().menuPresets;
    emit menu->aboutToShow();
    EXPECT_EQ(menu->actions().first()->text(), "Evening look");

    lipsPanel(*app)->ui().slider_Transparency->setValue(90);
    app->presets().apply("Evening look");
    EXPECT_FLOAT_EQ(app->document().state.f_Color_Lips_Transparency, 0.35f);
    EXPECT_EQ(lipsPanel(*app)->ui().slider_Transparency->value(), 35) << "the panel shows it";
    EXPECT_EQ(app->document().history().stack().undoText(), "Apply Preset Evening look");

    alertAnswer = 0; // Cancel
    app->presets().remove("Evening look");
    EXPECT_EQ(presetNames(app->presetsFolder), QStringList{"Evening look"}) << "kept until confirmed";
    ASSERT_FALSE(alerts.empty()) << "the deletion asks first";
    EXPECT_TRUE(alerts.back().informativeText.contains("\"Evening look\"")) << "the question names it";
    alertAnswer = 1; // Delete
    app->presets().remove("Evening look");
    EXPECT_TRUE(presetNames(app->presetsFolder).isEmpty());
    alertAnswer = 0;

    // A name that is no file of its own is refused, and nothing is written.
    const QString longest(80, QChar(u'é'));
    const QStringList files = filesIn(documents.path());
    for (const QString& name : {QString("a/b"), QString(".hidden"), QString("../elsewhere"), longest + "x",
                                QString("   ")}) {
        SCOPED_TRACE(name.toStdString());
        const size_t told = alerts.size();
        app->dialogs.askPresetName = [name] { return name; };
        app->presets().saveAsPreset();
        EXPECT_EQ(alerts.size(), told + 1);
        EXPECT_EQ(filesIn(documents.path()), files);
    }
    app->dialogs.askPresetName = [longest] { return longest; };
    app->presets().saveAsPreset();
    EXPECT_EQ(presetNames(app->presetsFolder), QStringList{longest}) << "80 characters are a name";
}

TEST_F(EditorHabitsTest, RecentPhotosAndTheWindowsPlaceComeBackAtTheNextStart)
{
    const QString second = writtenFile(documents.path(), "second.png", [] {
        QFile portrait(portraitPath());
        return portrait.open(QIODevice::ReadOnly) ? portrait.readAll() : QByteArray();
    }());
    open(portraitPath());
    open(second);
    app->window()->resize(1111, 777);
    app->Terminate_App();

    const auto restarted = made(documents.path());
    ASSERT_TRUE(restarted->applicationDidFinishLaunching());
    EXPECT_EQ(restarted->recentPhotos().paths(), (QStringList{second, portraitPath()}));
    EXPECT_EQ(restarted->window()->size(), QSize(1111, 777));
    EXPECT_TRUE(restarted->document().state == EditingState{}) << "effects start from their defaults";
}

// Newest first, each photo once, ten at most; a photo gone since is dropped
// when chosen and the open says it cannot be read.
TEST(RecentPhotos, KeepTheTenNewestOnceEachNewestFirst)
{
    QTemporaryDir folder;
    QSettings settings(folder.filePath("recent.conf"), QSettings::IniFormat);
    QMenu menu;
    QStringList opened, newest;
    RecentPhotos recent(settings, &menu, [&](const QString& path) { opened << path; });
    const auto photo = [&](int n) { return folder.filePath(QString("photo-%1.jpg").arg(n)); };
    for (int n : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 5})
        recent.add(photo(n));
    for (int n : {5, 12, 11, 10, 9, 8, 7, 6, 4, 3})
        newest << photo(n);
    EXPECT_EQ(recent.paths(), newest) << "once each, the ten newest first";
    emit menu.aboutToShow();
    ASSERT_EQ(menu.actions().size(), 10);
    menu.actions().at(2)->trigger();
    EXPECT_EQ(opened, QStringList{photo(11)});
    newest.removeAll(photo(11));
    EXPECT_EQ(recent.paths(), newest) << "the missing photo is dropped";
}
