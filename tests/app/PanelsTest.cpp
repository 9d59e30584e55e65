#include "EffectCatalogue.h"
#include "TestPortrait.h"
#include "RandomSettings.h"
#include "StartedDelegate.h"
#include "ColourWell.h"
#include "EffectOrder.h"
#include "EditHistory.h"
#include "EffectPanel.h"
#include "MainWindow.h"
#include "ViewCircleCenter.h"
#include "Window_Cheek.h"
#include "Window_Eye_Shadow.h"
#include "Window_Eyes_Color.h"
#include "Window_Eyes_Darken.h"
#include "Window_Face_Skin_Smooth.h"
#include "Window_Lips_Color.h"
#include "ui_MainWindow.h"
#include "ui_Window_Cheek.h"
#include "ui_Window_Eye_Shadow.h"
#include "ui_Window_Eyes_Color.h"
#include "ui_Window_Eyes_Darken.h"
#include "ui_Window_Face_Skin_Smooth.h"
#include "ui_Window_Lips_Color.h"

#include <QDockWidget>
#include <QElapsedTimer>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QWheelEvent>
#include <QSlider>
#include <QTableWidget>
#include <QTest>

#include <QLabel>
#include <QLocale>

#include <gtest/gtest.h>

namespace {

class PanelsTest : public StartedDelegateTest {
protected:
    void withPhoto() { app->document().accept(portrait()); }

    template <typename Panel>
    Panel* panel(QPointer<QWidget>& field)
    {
        return qobject_cast<Panel*>(field.data());
    }

    QStringList tableTitles() const
    {
        QStringList titles;
        QTableWidget* table = app->tableActions();
        for (int row = 0; row < table->rowCount(); ++row)
            titles << table->cellWidget(row, 0)->findChild<QPushButton*>()->text();
        return titles;
    }

};

} // namespace

TEST_F(PanelsTest, CategoryChangeEmptiesTheTableAtOnceAndFillsItAFifthOfASecondLater)
{
    QElapsedTimer clock;
    clock.start();
    app->window()->ui().toolbarItemEye->trigger();
    EXPECT_EQ(app->tableActions()->rowCount(), 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return app->tableActions()->rowCount() == 4; }, 3000));
    EXPECT_GE(clock.elapsed(), 150) << "Qt may fire a coarse 200 ms timer 5 % early, never this early";
    EXPECT_EQ(app->tableActions()->horizontalHeaderItem(0)->text(), "Eye");
}

// A drag sends a step per mouse move, faster than skin smoothing redraws
// at camera size: the steps must not queue redraws, and the one redraw
// shows the last value.
TEST_F(PanelsTest, ABurstOfSliderStepsIsOneRedrawOfTheLastValue)
{
    withPhoto();
    app->document().state.b_Face_Skin_Smooth = true;
    app->On_Face_Smooth_Skin();
    auto* skin = panel<Window_Face_Skin_Smooth>(app->panels().panelOf(&EditingState::b_Face_Skin_Smooth));
    ASSERT_NE(skin, nullptr);
    const Compositor& compositor = app->session().compositor();
    app->window()->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(app->window()));
    QCoreApplication::processEvents();
    const std::uint64_t shown = compositor.passes();
    QSlider* level = skin->ui().slider_Level;
    level->setValue(0);
    for (int step = 0; step < 17; ++step)
        level->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    QCoreApplication::processEvents();
    EXPECT_EQ(compositor.passes() - shown, 1u) << "one redraw of the last value";
    EXPECT_EQ(app->document().state.u_Face_Skin_Smooth_Level, 17u);
    Compositor fresh;
    EXPECT_EQ(compositor.working(), fresh.compose(*app->document().photo(), app->document().photoEdits, app->document().state));
}

TEST_F(PanelsTest, RepositionModesExcludeEachOther)
{
    withPhoto();
    app->document().state.b_Apply_Cheeks = app->document().state.b_Eyes_Darken = true;
    app->On_Face_Cheek();
    app->On_Eyes_Darken();
    auto* cheek = panel<Window_Cheek>(app->panels().panelOf(&EditingState::b_Apply_Cheeks));
    auto* darken = panel<Window_Eyes_Darken>(app->panels().panelOf(&EditingState::b_Eyes_Darken));
    cheek->ui().checkActivateCheekReposition->click();
    ASSERT_TRUE(app->document().state.b_Activated_Cheeks_Reposition);

    darken->ui().checkActivateEyesDarkenReposition->click();

    EXPECT_TRUE(darken->ui().checkActivateEyesDarkenReposition->isChecked()) << "the box shows ticked";
    EXPECT_FALSE(app->document().state.b_Activated_Darken_Eyes_Reposition) << "but the mode stays off";
}

// Docked, the panel leaves the photo free; floating, it steps aside.
TEST_F(PanelsTest, PickButtonsArmThePickAndAFloatingPanelStepsAside)
{
    withPhoto();
    app->window()->show();
    app->document().state.b_Apply_Cheeks = true;
    app->On_Face_Cheek();
    auto* cheek = panel<Window_Cheek>(app->panels().panelOf(&EditingState::b_Apply_Cheeks));
    cheek->ui().btn_Pick_Color_1_Right->click();
    EXPECT_TRUE(app->document().state.b_Cheeks_Picking_Color);
    EXPECT_EQ(app->document().state.i_Picking_Color_Index, 3);
    EXPECT_TRUE(cheek->isVisible());
    auto* dock = qobject_cast<QDockWidget*>(cheek->parentWidget());
    ASSERT_NE(dock, nullptr);
    dock->setFloating(true);
    cheek->ui().btn_Pick_Color_1->click();
    EXPECT_FALSE(dock->isVisible());
    app->document().state.color_Color_Cheeks_1_Right = {0.3f, 0.2f, 0.1f, 1};
    cheek->Update_Color_1_Right_From_Pick_Color();
    EXPECT_EQ(cheek->ui().color_1_Right->colour(), (RgbaColor{0.3f, 0.2f, 0.1f, 1}));
}

TEST_F(PanelsTest, UnderEyeResetMakesTheRingsTheEyeOutlinesAgain)
{
    withPhoto();
    app->document().state.b_Eyes_Darken = true;
    app->document().photoEdits.array_Eye_Darken_Left_Points[2] = QPointF(1, 1);
    app->On_Eyes_Darken();
    panel<Window_Eyes_Darken>(app->panels().panelOf(&EditingState::b_Eyes_Darken))->ui().btnReset->click();

    const FaceRegions& r = app->document().photo()->regions;
    const PhotoEdits& rings = app->document().photoEdits;
    EXPECT_EQ(rings.array_Eye_Darken_Left_Points, r.array_Eye_Left_Points);
    EXPECT_EQ(rings.array_Eye_Darken_Right_Points, r.array_Eye_Right_Points);
    const QPainterPath& path = rings.path_Eye_Darken_Left;
    ASSERT_EQ(path.elementCount(), 7);
    EXPECT_EQ(QPointF(path.elementAt(6)), QPointF(path.elementAt(0))) << "closed back to its first point";
    EXPECT_EQ(QPointF(path.elementAt(0)), QPointF(r.array_Eye_Left_Points[0].x(), 512 - r.array_Eye_Left_Points[0].y()));
}

// A click on a circle sets its side's blush centre (percent, y from the
// top, its marker where the click was) only while cheeks apply without
// repositioning.
TEST_F(PanelsTest, CircleClickSetsTheBlushCentreOnlyWhileCheeksApplyWithoutRepositioning)
{
    EditingState state;
    ViewCircleCenter circle;
    circle.resize(100, 100);
    circle.b_Left = false;
    int redraws = 0;
    circle.setState(&state, [&] { ++redraws; });
    for (const auto& [apply, reposition, click, centre] :
         {std::tuple{false, false, QPoint(30, 70), QPointF(80, 20)}, {true, false, QPoint(30, 70), QPointF(30, 70)},
          {true, true, QPoint(60, 60), QPointF(30, 70)}}) {
        state.b_Apply_Cheeks = apply;
        state.b_Activated_Cheeks_Reposition = reposition;
        QTest::mouseClick(&circle, Qt::LeftButton, {}, click);
        EXPECT_EQ(state.pt_MakeUp_Center_Right, centre) << apply << reposition;
    }
    EXPECT_EQ(state.pt_MakeUp_Center_Left, QPointF(20, 20));
    EXPECT_EQ(redraws, 1);
    EXPECT_EQ(circle.grab().toImage().pixelColor(31, 71), QColor(Qt::red)) << "the marker sits where the click was";
}

namespace {

// A panel with a mouse mode, its controls by name: the values rest while
// the mode is on, the mode box needs the effect, the rest is always live.
struct ModePanel {
    const char* name;
    void (AppDelegate::*open)();
    bool EditingState::*effect;
    bool EditingState::*mode;
    const char* modeBox;
    std::vector<const char*> values, alwaysLive;
};

const ModePanel kModePanels[] = {
    {"cheeks", &AppDelegate::On_Face_Cheek, &EditingState::b_Apply_Cheeks,
     &EditingState::b_Activated_Cheeks_Reposition, "checkActivateCheekReposition",
     {"btn_Pick_Color_1", "color_1", "btn_Pick_Color_1_Right", "color_1_Right", "btn_Pick_Color_2", "color_2",
      "slider_Transparency"},
     {"checkApply", "slider_Blur_Left", "slider_Blur_Right", "buttonDefaults"}},
    {"under-eye rings", &AppDelegate::On_Eyes_Darken, &EditingState::b_Eyes_Darken,
     &EditingState::b_Activated_Darken_Eyes_Reposition, "checkActivateEyesDarkenReposition",
     {"slider_Transparency", "slider_Line_Width", "slider_Blur"}, {"checkApply", "btnReset", "buttonDefaults"}},
};

enum class Moment { Opened, AfterDefaults, AfterUndo };

} // namespace

// For each switch and mode as they stand when the panel opens, after its
// Defaults and after an undone change elsewhere: a mode whose effect is
// off has ended, and the controls say what the mouse means.
TEST_F(PanelsTest, ControlsRestWhileAMouseModeIsOnWhenOpenedAfterDefaultsAndAfterUndo)
{
    withPhoto();
    for (const ModePanel& p : kModePanels)
        for (const bool effect : {false, true})
            for (const bool mode : {false, true})
                for (const Moment moment : {Moment::Opened, Moment::AfterDefaults, Moment::AfterUndo}) {
                    SCOPED_TRACE(testing::Message() << p.name << ", effect " << effect << ", mode " << mode
                                                    << ", moment " << int(moment));
                    app->document().state.*p.effect = effect;
                    app->document().state.*p.mode = mode;
                    app->document().history().startAt({app->document().state, app->document().photoEdits});
                    (app.get()->*p.open)();
                    QWidget* panel = app->panels().panelOf(p.effect).data();
                    ASSERT_NE(panel, nullptr);
                    if (moment == Moment::AfterDefaults)
                        panel->findChild<QPushButton*>("buttonDefaults")->click();
                    if (moment == Moment::AfterUndo) {
                        app->On_Mouth_Lips();
                        app->panels().panelOf(&EditingState::b_Color_Lips)->findChild<QSlider*>("slider_Transparency")->setValue(63);
                        app->window()->ui().menuEdit->actions().at(0)->trigger();
                    }
                    const bool on = effect && mode;
                    EXPECT_EQ(app->document().state.*p.mode, on);
                    const auto* box = panel->findChild<QCheckBox*>(p.modeBox);
                    EXPECT_EQ(box->isChecked(), on);
                    EXPECT_EQ(box->isEnabled(), effect);
                    EXPECT_EQ(panel->findChild<QCheckBox*>("checkApply")->isChecked(), effect);
                    for (const char* name : p.values)
                        EXPECT_EQ(panel->findChild<QWidget*>(name)->isEnabled(), effect && !mode) << name;
                    for (const char* name : p.alwaysLive)
                        EXPECT_TRUE(panel->findChild<QWidget*>(name)->isEnabled()) << name;
                    panel->close();
                    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                }
    // Unticking the Apply that the mode needed, or undoing it, ends the mode
    // too.
    for (const ModePanel& p : kModePanels) {
        SCOPED_TRACE(p.name);
        app->document().state.b_Activated_Cheeks_Reposition = app->document().state.b_Activated_Darken_Eyes_Reposition = false;
        app->document().state.*p.effect = false;
        app->document().history().startAt({app->document().state, app->document().photoEdits}); // the state set here is where undo stops
        (app.get()->*p.open)();
        QWidget* panel = app->panels().panelOf(p.effect).data();
        auto* apply = panel->findChild<QCheckBox*>("checkApply");
        for (const bool byUndo : {false, true}) {
            apply->click();
            panel->findChild<QCheckBox*>(p.modeBox)->click();
            ASSERT_TRUE(app->document().state.*p.mode);
            byUndo ? app->window()->ui().menuEdit->actions().at(0)->trigger() : apply->click();
            EXPECT_FALSE(app->document().state.*p.effect || app->document().state.*p.mode) << byUndo;
            EXPECT_FALSE(panel->findChild<QCheckBox*>(p.modeBox)->isChecked());
            EXPECT_FALSE(panel->findChild<QCheckBox*>(p.modeBox)->isEnabled());
            EXPECT_FALSE(panel->findChild<QWidget*>(p.values.front())->isEnabled());
        }
        panel->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

namespace {

// The number a setting holds, by its field name.
double numberOf(EditingState& state, const char* name)
{
    double number = std::nan("");
    state.forEachField([&](const char* field, auto& value) {
        if constexpr (std::is_arithmetic_v<std::decay_t<decltype(value)>>)
            if (qstrcmp(field, name) == 0)
                number = double(value);
    });
    return number;
}

} // namespace

// After a settings file, a preset, an undo, a redo and each Defaults press,
// every control of every open panel shows what the picture now uses: the
// switches, modes and every slider, those that only write when the panel
// opens too.
TEST_F(PanelsTest, EveryControlOfEveryOpenPanelShowsTheStateAfterUndoDefaultsAndSettings)
{
    withPhoto();
    for (const EffectInfo& effect : effects())
        app->openEffect(effect);
    const auto showsState = [&](const char* after) {
        EditingState& state = app->document().state;
        for (const EffectInfo& effect : effects())
            for (const PanelControl& c : effect.panel().controls) {
                QWidget* control = app->panels().panelOf(effect)->findChild<QWidget*>(c.control);
                const double number = numberOf(state, c.field);
                if (auto* slider = qobject_cast<QSlider*>(control)) {
                    const bool hundredths = settingRange(c.field)->slider == SliderScale::Hundredths;
                    EXPECT_EQ(slider->value(), hundredths ? std::lround(number * 100) : long(number))
                        << c.field << " after " << after;
                    const QString inUnits = QLocale().toString(slider->value() / (hundredths ? 100.0 : 1.0));
                    EXPECT_TRUE(!c.unit || app->panels().panelOf(effect)->findChild<QLabel*>(c.value)->text()
                                               == inUnits + QChar(0x202F) + c.unit) << c.field << ": its value in its units";
                } else if (auto* box = qobject_cast<QCheckBox*>(control)) {
                    EXPECT_EQ(box->isChecked(), number != 0) << c.field << " after " << after;
                }
                EXPECT_TRUE(!c.meaning || control->toolTip() == c.meaning) << c.field << ": says what it means";
            }
    };
    app->document().replaceSettings(randomSettings(21), "a settings file");
    showsState("a settings file");
    app->document().replaceSettings(randomSettings(22), "a preset");
    showsState("a preset");
    app->document().history().stack().undo();
    showsState("an undo");
    app->document().history().stack().redo();
    showsState("a redo");
    for (const EffectInfo& effect : effects()) {
        app->panels().panelOf(effect)->findChild<QPushButton*>("buttonDefaults")->click();
        showsState(nameOfSwitch(effect.effectSwitch));
    }
}

// The panel column at 800 x 600, the default size and a large screen, with
// 1, 3, 5 and every panel open: every control of every open panel scrolls
// into the column's view whole, no panel is below its natural height and
// none scrolls on its own.
TEST_F(PanelsTest, EveryControlOfEveryOpenPanelScrollsIntoViewWholeAtEverySize)
{
    withPhoto();
    app->window()->show();
    QScrollArea* column = app->window()->findChild<QScrollArea*>("panelColumn");
    ASSERT_NE(column, nullptr);
    for (const QSize size : {QSize(800, 600), QSize(1200, 800), QSize(1920, 1080)})
        for (const int open : {1, 3, 5, int(effects().size())}) {
            app->panels().closeAll();
            app->window()->resize(size);
            for (int k = 0; k < open; ++k)
                app->openEffect(effects()[size_t(k)]);
            QCoreApplication::processEvents();
            const QString where = QString("%1 x %2, %3 panels").arg(size.width()).arg(size.height()).arg(open);
            for (int k = 0; k < open; ++k) {
                QWidget* panel = app->panels().panelOf(effects()[size_t(k)]);
                EXPECT_GE(panel->height(), panel->sizeHint().height()) << where.toStdString();
                for (QWidget* control : panel->findChildren<QWidget*>()) {
                    if (!control->isVisibleTo(panel) || !control->findChildren<QWidget*>().isEmpty())
                        continue;
                    EXPECT_FALSE(qobject_cast<QScrollBar*>(control)) << "a scroll bar in a panel";
                    column->ensureWidgetVisible(control, 0, 0);
                    const QRect shown(control->mapTo(column->viewport(), QPoint(0, 0)), control->size());
                    EXPECT_TRUE(column->viewport()->rect().contains(shown))
                        << where.toStdString() << ": " << control->objectName().toStdString() << " of "
                        << nameOfSwitch(effects()[size_t(k)].effectSwitch);
                }
            }
        }
    // The wheel over a slider it was not given scrolls the column, not the
    // slider.
    auto* slider = app->panels().panelOf(effects().back())->findChild<QSlider*>();
    column->verticalScrollBar()->setValue(column->verticalScrollBar()->maximum());
    const int value = slider->value(), scrolled = column->verticalScrollBar()->value();
    QWheelEvent wheel(QPointF(5, 5), slider->mapToGlobal(QPointF(5, 5)), {}, {0, 120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(slider, &wheel);
    EXPECT_EQ(slider->value(), value);
    EXPECT_LT(column->verticalScrollBar()->value(), scrolled);
}
