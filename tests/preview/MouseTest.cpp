#include "OpenedPhoto.h"
#include "TestPortrait.h"
#include "PhotoEdits.h"
#include "DocumentView.h"
#include "HealBlemishes.h"

#include <QTest>
#include <QUndoStack>

#include <cmath>
#include <functional>

#include <gtest/gtest.h>

namespace {

// Every rule runs twice: with the photo fitted (the best-fit frame, here
// 1.16 view pixels per photo pixel) and at 100 % (one photo pixel per view
// pixel, the photo panned off centre). The pointer reaches the photo only
// through the frame shown.
class MouseTest : public ::testing::TestWithParam<bool> {
protected:
    void SetUp() override
    {
        view.resize(700, 600);
        view.onSettingChangedOnPhoto = [this](const char* field) { picked.push_back(field); };
        if (GetParam()) {
            view.zoomToActualPixels();
            view.panBy({-60, 25});
        }
    }

    void redraw() // after the test set the state: composes, which places the handles
    {
        shows.changed();
        view.grab();
    }

    // The view position showing a photo point (pixels, y up); a fraction of
    // a view pixel where the scale asks for one, as a precise pointer gives.
    QPointF at(QPointF imagePoint) const
    {
        const QRectF frame = view.rectDrawCamera();
        const double scale = frame.width() / photo.imgSize.width();
        return {frame.x() + imagePoint.x() * scale, view.height() - frame.y() - imagePoint.y() * scale};
    }
    // The photo pixel (y from the top) under a view position.
    QPoint pixelAt(QPointF position) const
    {
        const QRectF frame = view.rectDrawCamera();
        const double scale = frame.width() / photo.imgSize.width();
        const double yUp = (view.height() - position.y() - frame.y()) / scale;
        return QPoint(int(std::floor((position.x() - frame.x()) / scale)),
                      int(std::floor(photo.imgSize.height() - yUp)));
    }
    // The same for a point with y from the top of the photo.
    QPointF atTopDown(QPointF pixel) const { return at({pixel.x(), photo.imgSize.height() - pixel.y()}); }

    void send(QEvent::Type type, QPointF p, Qt::MouseButton button, Qt::MouseButtons held)
    {
        QMouseEvent event(type, p, view.mapToGlobal(p), button, held, {});
        QCoreApplication::sendEvent(&view, &event);
    }
    void press(QPointF p, Qt::MouseButton button = Qt::LeftButton) { send(QEvent::MouseButtonPress, p, button, button); }
    void release(QPointF p, Qt::MouseButton button = Qt::LeftButton) { send(QEvent::MouseButtonRelease, p, button, {}); }
    void click(QPointF p, Qt::MouseButton button = Qt::LeftButton)
    {
        press(p, button);
        release(p, button);
    }
    void drag(QPointF p, Qt::MouseButton held = Qt::LeftButton) { send(QEvent::MouseMove, p, Qt::NoButton, held); }

    const OpenedPhoto& photo = portrait();
    DocumentView shows{photo};
    View_Picture& view = shows.view;
    EditingState& state = shows.state;
    PhotoEdits& photoEdits = shows.photoEdits;
    std::vector<std::string> picked;
};

} // namespace

namespace {

// A handle of a cheek area grabbed in its one-percent cell and dragged:
// the area each corner's own rule gives (photo pixels, y up), the other
// area untouched. The right-top handle moves the bottom edge as the
// right-bottom one does; the left-top handle moves the top edge while the
// width changes as for the left edge.
struct HandleDrag {
    const char* name;
    bool leftArea;
    QPointF grab, to;
    QRectF expected;
};

const QRectF kLeftArea(100, 100, 50, 50), kRightArea(300, 240, 60, 40);

const HandleDrag kHandleDrags[] = {
    {"left-bottom", true, {100.5, 100.5}, {90.5, 80.5}, {90.5, 80.5, 59.5, 69.5}},
    {"right-bottom", true, {150.5, 100.5}, {170.5, 90.5}, {100, 90.5, 70.5, 59.5}},
    {"right-top held still", true, {150, 150}, {150, 150}, {100, 150, 50, 0}},
    {"left-top held still", true, {100, 150}, {100, 150}, {100, 100, 50, 50}},
    {"left-top", true, {100.5, 150.5}, {80.5, 170.5}, {100, 100, 69.5, 70.5}},
    {"whole area", true, {125, 125}, {200.5, 220.5}, {175.5, 195.5, 50, 50}},
    {"right area's left-bottom", false, {300.5, 240.5}, {310.5, 230.5}, {310.5, 230.5, 49.5, 49.5}},
    {"right area's right-bottom", false, {360.5, 240.5}, {380.5, 250.5}, {300, 250.5, 80.5, 29.5}},
    {"right area's right-top", false, {360.5, 280.5}, {370.5, 300.5}, {300, 300.5, 70.5, -20.5}},
    {"right area's left-top", false, {300.5, 280.5}, {290.5, 290.5}, {300, 240, 69.5, 50.5}},
    {"right area whole", false, {330, 260}, {410.5, 150.5}, {380.5, 130.5, 60, 40}},
};

void expectNear(const QRectF& actual, const QRectF& expected)
{
    EXPECT_NEAR(actual.x(), expected.x(), 1e-3);
    EXPECT_NEAR(actual.y(), expected.y(), 1e-3);
    EXPECT_NEAR(actual.width(), expected.width(), 1e-3);
    EXPECT_NEAR(actual.height(), expected.height(), 1e-3);
}

} // namespace

TEST_P(MouseTest, EachCornerOfEachCheekAreaFollowsItsOwnRule)
{
    state.b_Apply_Cheeks = state.b_Activated_Cheeks_Reposition = true;
    for (const HandleDrag& d : kHandleDrags) {
        SCOPED_TRACE(d.name);
        photoEdits.rect_Cheek_Left_Area_To_Paint = kLeftArea;
        photoEdits.rect_Cheek_Right_Area_To_Paint = kRightArea;
        redraw();
        press(at(d.grab));
        drag(at(d.to));
        release(at(d.to));
        expectNear(d.leftArea ? photoEdits.rect_Cheek_Left_Area_To_Paint : photoEdits.rect_Cheek_Right_Area_To_Paint,
                   d.expected);
        EXPECT_EQ(d.leftArea ? photoEdits.rect_Cheek_Right_Area_To_Paint : photoEdits.rect_Cheek_Left_Area_To_Paint,
                  d.leftArea ? kRightArea : kLeftArea);
    }
    // One percent beside a handle is no handle, and outside the area no
    // move; the right button on a handle moves nothing either.
    photoEdits.rect_Cheek_Left_Area_To_Paint = kLeftArea;
    for (const auto& [grab, button] : {std::pair{QPointF(100 - 5.2, 100.5), Qt::LeftButton}, {{100.5, 100.5}, Qt::RightButton}}) {
        press(at(grab), button);
        drag(at({60, 60}), button);
        release(at({60, 60}), button);
        EXPECT_EQ(photoEdits.rect_Cheek_Left_Area_To_Paint, kLeftArea) << button;
    }
}

// On a photo of two faces a press takes the areas of the face it is on:
// the second face's blush area moves, the first's stays; one undo step.
TEST_P(MouseTest, OnAGroupTheBlushAreaOfTheFaceUnderThePointerMoves)
{
    OpenedPhoto two = photo;
    FaceLandmarks moved;
    for (QPointF point : photo.facePointsRelativeToImageSize)
        moved.append(point + QPointF(190, 30));
    two.otherFaces.push_back(faceOf(moved, two.imgSize));
    shows.open(two);
    state.b_Apply_Cheeks = state.b_Activated_Cheeks_Reposition = true;
    redraw();
    const QRectF first = photoEdits.rect_Cheek_Left_Area_To_Paint, second = photoEdits.otherFaceShapes.at(0).cheekLeft;
    ASSERT_NE(first, second);
    const int steps = shows.document.history().stack().count();
    press(at(second.center()));
    drag(at(second.center() + QPointF(12, 8)));
    release(at(second.center() + QPointF(12, 8)));
    EXPECT_EQ(photoEdits.rect_Cheek_Left_Area_To_Paint, first);
    expectNear(photoEdits.otherFaceShapes.at(0).cheekLeft, second.translated(12, 8));
    EXPECT_EQ(shows.document.history().stack().count(), steps + 1);
}

// A real pointer sits on whole view pixels: the point lands where the
// stated single-precision steps put it (percent of the frame, rounded to a
// float; pixels of the photo, rounded to a float), not a double's nearby
// value.
TEST_P(MouseTest, AWholePixelPointerMovesAPointToItsSinglePrecisionPosition)
{
    state.b_Eyes_Darken = state.b_Activated_Darken_Eyes_Reposition = true;
    redraw();
    const QPointF third = photoEdits.array_Eye_Darken_Left_Points[2];
    press(atTopDown(third));
    const QPoint pointer = (atTopDown(third) + QPointF(13, 7)).toPoint();
    drag(pointer);
    release(pointer);

    const QRectF frame = view.rectDrawCamera();
    const float percentX = float((pointer.x() - frame.x()) * 100 / frame.width());
    const float percentY = float((view.height() - pointer.y() - frame.y()) * 100 / frame.height());
    const float pixelX = float(512 * double(percentX) / 100), pixelY = float(512 * double(percentY) / 100);
    EXPECT_EQ(photoEdits.array_Eye_Darken_Left_Points[2], QPointF(pixelX, 512 - double(pixelY)));
    EXPECT_EQ(photoEdits.array_Eye_Darken_Left_Points[2].x(), double(pixelX)) << "exactly, not fuzzily";
    EXPECT_EQ(photoEdits.array_Eye_Darken_Left_Points[2].y(), 512 - double(pixelY));
}

// A left click while a pick waits takes the untouched photo's colour under
// the pointer into the colour the pick's index names, and only that one; a
// right click takes nothing.
TEST_P(MouseTest, APickTakesTheUntouchedPhotoIntoTheColourItsIndexNamesOnALeftClick)
{
    state.b_Color_Lips = true; // the shown picture differs from the photo on the lips
    state.f_Color_Lips_Transparency = 1;
    redraw();
    const QPointF lip = atTopDown((photo.facePointsRelativeToImageSize[57] + photo.facePointsRelativeToImageSize[66]) / 2);
    const QColor c = photo.img_Basic.pixelColor(pixelAt(lip));
    const RgbaColor seen{float(c.redF()), float(c.greenF()), float(c.blueF()), 1};
    const std::pair<const char*, RgbaColor EditingState::*> colours[] = {
        {"color_Color_Cheeks_1", &EditingState::color_Color_Cheeks_1},
        {"color_Color_Cheeks_2", &EditingState::color_Color_Cheeks_2},
        {"color_Color_Cheeks_1_Right", &EditingState::color_Color_Cheeks_1_Right}};
    for (int index = 1; index <= 3; ++index) {
        state.restoreDefaultsOf(&EditingState::b_Apply_Cheeks);
        state.b_Cheeks_Picking_Color = true;
        state.i_Picking_Color_Index = index;
        click(lip, Qt::RightButton);
        EXPECT_TRUE(state.b_Cheeks_Picking_Color) << "the pick waits for a left click";
        click(lip);
        for (const auto& [name, colour] : colours)
            EXPECT_EQ(state.*colour == seen, name == colours[index - 1].first) << index << " " << name;
        EXPECT_FALSE(state.b_Cheeks_Picking_Color);
    }
    EXPECT_EQ(picked, (std::vector<std::string>{colours[0].first, colours[1].first, colours[2].first}));
}

// While editing spots a left click heals the spot under the pointer, where
// it is in percent of the photo; a click on it again keeps it; each click is
// its own undo step however quick. A drag, or a click without the mode, is
// no spot.
TEST_P(MouseTest, EditSpotsHealsAndKeepsTheSpotClickedEachClickOneStep)
{
    state.b_Heal_Blemishes = state.b_Activated_Heal_Spots = true;
    redraw();
    const QPointF cheek = cheekPercent();
    const QPointF spot = atTopDown({cheek.x() * photo.imgSize.width() / 100, cheek.y() * photo.imgSize.height() / 100});
    QUndoStack& steps = shows.document.history().stack();
    const int before = steps.count();
    click(spot);
    ASSERT_EQ(photoEdits.array_Healed_Spots.size(), 1);
    EXPECT_NEAR(photoEdits.array_Healed_Spots[0].x(), cheek.x(), 0.2);
    EXPECT_NEAR(photoEdits.array_Healed_Spots[0].y(), cheek.y(), 0.2) << "y from the top of the photo";
    EXPECT_EQ(steps.undoText(), "Heal Spot");
    click(spot);
    EXPECT_TRUE(photoEdits.array_Healed_Spots.isEmpty());
    EXPECT_EQ(steps.undoText(), "Keep Spot");
    EXPECT_EQ(steps.count(), before + 2);
    steps.undo();
    EXPECT_EQ(photoEdits.array_Healed_Spots.size(), 1);
    steps.undo();
    EXPECT_TRUE(photoEdits.array_Healed_Spots.isEmpty());

    // A drag is a stroke along its path, one step however many moves.
    press(spot);
    drag(spot + QPointF(3, 0));
    drag(spot + QPointF(15, 0));
    drag(spot + QPointF(30, 0));
    release(spot + QPointF(30, 0));
    ASSERT_EQ(photoEdits.array_Heal_Strokes.size(), 1);
    EXPECT_EQ(photoEdits.array_Heal_Strokes[0].size(), 3) << "from the press, past 5 view pixels";
    EXPECT_NEAR(photoEdits.array_Heal_Strokes[0].first().y(), cheek.y(), 0.2) << "y from the top of the photo";
    EXPECT_LT(photoEdits.array_Heal_Strokes[0].first().x(), photoEdits.array_Heal_Strokes[0].last().x());
    EXPECT_EQ(steps.undoText(), "Heal Stroke");
    EXPECT_EQ(steps.count(), before + 1) << "after the two undone clicks";
    EXPECT_TRUE(photoEdits.array_Healed_Spots.isEmpty() && photoEdits.array_Kept_Spots.isEmpty());
    state.b_Activated_Heal_Spots = false;
    redraw();
    click(spot);
    press(spot);
    drag(spot + QPointF(30, 0));
    release(spot + QPointF(30, 0));
    EXPECT_TRUE(photoEdits.array_Healed_Spots.isEmpty() && photoEdits.array_Heal_Strokes.size() == 1) << "not without the mode";
}

// The skin brushes: a drag with Add skin is a stroke of added skin, a click
// with Remove skin a dab taken away, each one step; undone, it is gone.
TEST_P(MouseTest, SkinBrushesPaintStrokesOfTheirOwnKindEachOneStep)
{
    state.b_Natural_Skin = state.b_Activated_Add_Skin = true;
    redraw();
    const QPointF cheek = cheekPercent();
    const QPointF at = atTopDown({cheek.x() * photo.imgSize.width() / 100, cheek.y() * photo.imgSize.height() / 100});
    QUndoStack& steps = shows.document.history().stack();
    press(at);
    drag(at + QPointF(20, 0));
    release(at + QPointF(20, 0));
    ASSERT_EQ(photoEdits.array_Skin_Added_Strokes.size(), 1);
    EXPECT_NEAR(photoEdits.array_Skin_Added_Strokes[0].first().y(), cheek.y(), 0.2) << "y from the top of the photo";
    EXPECT_EQ(steps.undoText(), "Add Skin");
    state.b_Activated_Add_Skin = false, state.b_Activated_Remove_Skin = true;
    redraw();
    click(at);
    EXPECT_EQ(photoEdits.array_Skin_Removed_Strokes, QList<PointList>{{photoEdits.array_Skin_Added_Strokes[0].first()}});
    EXPECT_EQ(steps.undoText(), "Remove Skin");
    steps.undo();
    EXPECT_TRUE(photoEdits.array_Skin_Removed_Strokes.isEmpty());
    EXPECT_EQ(photoEdits.array_Skin_Added_Strokes.size(), 1);
}

// Show spots rings each healed spot on the preview, centred on it, never
// in the picture, and the status note counts them.
TEST_P(MouseTest, ShowSpotsRingsTheHealedSpotsOnThePreviewOnly)
{
    state.b_Heal_Blemishes = true;
    state.b_Show_Spots = true;
    redraw();
    const QStringList foundNote = view.overlayNotes();
    photoEdits.array_Healed_Spots = {cheekPercent()};
    state.b_Show_Spots = false;
    redraw();
    const QImage without = view.grab().toImage(), picture = shows.session.compositor().working().copy();
    state.b_Show_Spots = true;
    redraw();
    const QImage with = view.grab().toImage();
    EXPECT_TRUE(shows.session.compositor().working() == picture) << "never in the picture";
    // A ring around the clicked spot: drawn at its radius on every side.
    const HealBlemishes::Outcome outcome = HealBlemishes::outcomeOf(photo, state, photoEdits);
    const QPointF cheek(cheekPercent().x() * photo.imgSize.width() / 100, cheekPercent().y() * photo.imgSize.height() / 100);
    const auto clicked = std::ranges::find_if(outcome.healed, [&](const auto& spot) { return !spot.area; });
    ASSERT_NE(clicked, outcome.healed.end());
    const QPointF centre = atTopDown(cheek) * view.devicePixelRatioF();
    const double scale = view.rectDrawCamera().width() / photo.imgSize.width();
    const double radius = std::max(3.0, (2 * clicked->radius + 1) * scale) * view.devicePixelRatioF();
    for (const QPointF side : {QPointF(1, 0), QPointF(0, 1), QPointF(-1, 0), QPointF(0, -1)}) {
        bool drawn = false;
        for (double r = radius - 2; r <= radius + 2; r += 0.5) {
            const QPoint at = (centre + r * side).toPoint();
            drawn |= with.pixel(at) != without.pixel(at);
        }
        EXPECT_TRUE(drawn) << "the ring's side " << side.x() << ", " << side.y();
    }
    ASSERT_EQ(view.overlayNotes().size(), 1);
    const QString note = view.overlayNotes().first();
    EXPECT_TRUE(note.startsWith(QString("%1 spot").arg(outcome.healed.size()))) << note.toStdString();
    EXPECT_TRUE(note.contains(QString(", %1 mark").arg(outcome.kept.size()))) << note.toStdString();
    EXPECT_NE(note, foundNote.value(0)) << "the click counted";
    state.b_Heal_Blemishes = false;
    EXPECT_TRUE(view.overlayNotes().isEmpty()) << "only while the effect is on";
}

INSTANTIATE_TEST_SUITE_P(FittedAndAtActualPixels, MouseTest, ::testing::Values(false, true),
                         [](const auto& info) { return info.param ? "AtActualPixels" : "Fitted"; });
