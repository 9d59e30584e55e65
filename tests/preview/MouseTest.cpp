#include "OpenedPhoto.h"
#include "Reshaping.h"
#include "View_Picture.h"

#include <QTest>

#include <functional>

#include <gtest/gtest.h>

namespace {

const OpenedPhoto& portrait()
{
    static const OpenResult opened = openAndAnalyse(QString(BELLAVENOR_TEST_DATA) + "/portrait.png");
    return opened.photo;
}

// A preview exactly the photo's size, so a photo pixel (x, y up) lies at
// widget position (x, 512 - y).
class MouseTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        reshaping = Reshaping::of(photo.regions);
        view.resize(512, 512);
        view.setSources(std::make_shared<const OpenedPhoto>(photo), &reshaping, &state, nullptr);
        view.onColourPicked = [this](int index) { picked.push_back(index); };
    }

    void redraw() { view.grab(); } // composes, which places the handles

    static QPoint at(QPointF imagePoint) { return QPoint(int(imagePoint.x()), int(512 - imagePoint.y())); }

    void press(QPoint p, Qt::MouseButton button = Qt::LeftButton) { QTest::mousePress(&view, button, {}, p); }
    void drag(QPoint p, Qt::MouseButton held = Qt::LeftButton)
    {
        QMouseEvent move(QEvent::MouseMove, p, view.mapToGlobal(p), Qt::NoButton, held, {});
        QCoreApplication::sendEvent(&view, &move);
    }
    void release(QPoint p, Qt::MouseButton button = Qt::LeftButton) { QTest::mouseRelease(&view, button, {}, p); }

    // Shows the view and counts its redraws from now on.
    int paintsDuring(const std::function<void()>& gesture)
    {
        view.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view));
        QCoreApplication::processEvents();
        struct Counter : QObject {
            int paints = 0;
            bool eventFilter(QObject*, QEvent* event) override
            {
                paints += event->type() == QEvent::Paint;
                return false;
            }
        } counter;
        view.installEventFilter(&counter);
        gesture();
        QCoreApplication::processEvents();
        view.removeEventFilter(&counter);
        return counter.paints;
    }

    const OpenedPhoto& photo = portrait();
    Reshaping reshaping;
    EditingState state;
    View_Picture view;
    std::vector<int> picked;
};

} // namespace

TEST_F(MouseTest, NothingChangesWithBothModesOff)
{
    state.b_Apply_Cheeks = state.b_Eyes_Darken = true;
    redraw();
    const Reshaping before = reshaping;
    const QPoint corner = at(before.rect_Cheek_Left_Area_To_Paint.topLeft());
    const int paints = paintsDuring([&] {
        press(corner);
        for (int step = 1; step <= 5; ++step)
            drag(corner + QPoint(8 * step, 8 * step));
    });
    EXPECT_EQ(paints, 0) << "a drag with both modes off does not rebuild the picture";
    release(corner + QPoint(40, 40));
    EXPECT_EQ(reshaping.rect_Cheek_Left_Area_To_Paint, before.rect_Cheek_Left_Area_To_Paint);
    EXPECT_EQ(reshaping.array_Eye_Darken_Left_Points, before.array_Eye_Darken_Left_Points);
    EXPECT_FALSE(view.b_Mouse_Down);
}

TEST_F(MouseTest, RightTopHandleFollowsTheRightBottomRule)
{
    state.b_Apply_Cheeks = state.b_Activated_Cheeks_Reposition = true;
    reshaping.rect_Cheek_Left_Area_To_Paint = QRectF(100, 100, 50, 50);
    reshaping.rect_Cheek_Right_Area_To_Paint = QRectF(300, 300, 50, 50);
    redraw();

    press(at({150.5, 150.5})); // the right-top corner's one-percent cell
    drag(at({150.5, 150.5}));

    const QRectF area = reshaping.rect_Cheek_Left_Area_To_Paint;
    EXPECT_NEAR(area.x(), 100, 0.01);
    EXPECT_NEAR(area.y(), 150, 1.1);
    EXPECT_NEAR(area.width(), 50, 1.1);
    EXPECT_NEAR(area.height(), 0, 1.1) << "the bottom edge moves to the mouse";
    EXPECT_EQ(reshaping.rect_Cheek_Right_Area_To_Paint, QRectF(300, 300, 50, 50));
}

TEST_F(MouseTest, LeftTopHandleMovesTheTopEdgeWhileTheOriginStays)
{
    state.b_Apply_Cheeks = state.b_Activated_Cheeks_Reposition = true;
    reshaping.rect_Cheek_Left_Area_To_Paint = QRectF(100, 100, 50, 50);
    redraw();

    press(at({100, 150})); // the left-top corner
    drag(at({100, 150}));
    EXPECT_EQ(reshaping.rect_Cheek_Left_Area_To_Paint, QRectF(100, 100, 50, 50)) << "held still: unchanged";

    drag(at({90, 170}));
    EXPECT_EQ(reshaping.rect_Cheek_Left_Area_To_Paint, QRectF(100, 100, 60, 70))
        << "the top follows the mouse; the width grows as for the left edge, the origin stays";
    release(at({90, 170}));
}

TEST_F(MouseTest, OnlyTheLeftButtonDragsHandlesAndPicksColours)
{
    state.b_Apply_Cheeks = state.b_Activated_Cheeks_Reposition = true;
    reshaping.rect_Cheek_Left_Area_To_Paint = QRectF(100, 100, 50, 50);
    redraw();
    press(at({100.5, 100.5}), Qt::RightButton); // on the left-bottom handle
    drag(at({60, 60}), Qt::RightButton);
    release(at({60, 60}), Qt::RightButton);
    EXPECT_EQ(reshaping.rect_Cheek_Left_Area_To_Paint, QRectF(100, 100, 50, 50));

    state.b_Cheeks_Picking_Color = true;
    state.i_Picking_Color_Index = 2;
    QTest::mouseClick(&view, Qt::RightButton, {}, at({200, 200}));
    EXPECT_TRUE(state.b_Cheeks_Picking_Color) << "the pick waits for a left click";
    EXPECT_EQ(state.color_Color_Cheeks_2, EditingState{}.color_Color_Cheeks_2);
    EXPECT_TRUE(picked.empty());

    QTest::mouseClick(&view, Qt::LeftButton, {}, at({200, 200}));
    EXPECT_FALSE(state.b_Cheeks_Picking_Color);
    EXPECT_EQ(picked, std::vector<int>{2});
}

TEST_F(MouseTest, ClickOnePercentAwayMissesAndLeftBottomPastTheRightEdgeGoesNegative)
{
    state.b_Apply_Cheeks = state.b_Activated_Cheeks_Reposition = true;
    reshaping.rect_Cheek_Left_Area_To_Paint = QRectF(102.4, 102.4, 51.2, 51.2); // corners on cell edges
    redraw();

    press(at({102.4 - 5.12, 102.4 + 1})); // one cell to the left of the left-bottom handle
    drag(at({300, 110}));
    release(at({300, 110}));
    EXPECT_EQ(reshaping.rect_Cheek_Left_Area_To_Paint, QRectF(102.4, 102.4, 51.2, 51.2));

    redraw();
    press(at({103, 103}));
    drag(at({200, 103}));
    release(at({200, 103}));
    EXPECT_LT(reshaping.rect_Cheek_Left_Area_To_Paint.width(), 0) << "stored as it is";
}

TEST_F(MouseTest, UnderEyePointIsReplacedAtTheFlippedPosition)
{
    state.b_Eyes_Darken = state.b_Activated_Darken_Eyes_Reposition = true;
    redraw();
    const QPointF third = reshaping.array_Eye_Darken_Left_Points[2]; // y from the top
    press(QPoint(int(third.x()), int(third.y())));
    drag(QPoint(int(third.x()) + 10, int(third.y()) + 20));
    release(QPoint(int(third.x()) + 10, int(third.y()) + 20));

    const QPointF moved = reshaping.array_Eye_Darken_Left_Points[2];
    EXPECT_NEAR(moved.x(), third.x() + 10, 1.1);
    EXPECT_NEAR(moved.y(), third.y() + 20, 1.1) << "back in top-down pixels";
    EXPECT_EQ(reshaping.array_Eye_Darken_Left_Points[0], portrait().regions.array_Eye_Darken_Left_Points[0]);
}

TEST_F(MouseTest, PickWithIndexThreeTakesTheUntouchedPhotoIntoTheRightOuterColourOnly)
{
    state.b_Color_Lips = true; // the shown picture differs from the photo on the lips
    state.f_Color_Lips_Transparency = 1;
    state.b_Cheeks_Picking_Color = true;
    state.i_Picking_Color_Index = 3;
    redraw();
    const QPointF lip = (photo.facePointsRelativeToImageSize[57] + photo.facePointsRelativeToImageSize[66]) / 2;
    const QPoint where(int(lip.x()), int(lip.y()));

    QTest::mouseClick(&view, Qt::LeftButton, {}, where);

    const QColor expected = photo.img_Basic.pixelColor(where);
    EXPECT_NEAR(state.color_Color_Cheeks_1_Right.r, expected.redF(), 0.01);
    EXPECT_NEAR(state.color_Color_Cheeks_1_Right.g, expected.greenF(), 0.01);
    EXPECT_EQ(state.color_Color_Cheeks_1, EditingState{}.color_Color_Cheeks_1);
    EXPECT_EQ(state.color_Color_Cheeks_2, EditingState{}.color_Color_Cheeks_2);
    EXPECT_FALSE(state.b_Cheeks_Picking_Color);
    EXPECT_EQ(picked, std::vector<int>{3});
}
