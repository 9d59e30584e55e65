#include "ImageSpace.h"
#include "TestPortrait.h"
#include "OpenedPhoto.h"
#include "Picture.h"
#include "PreviewGeometry.h"
#include "PhotoEdits.h"
#include "DocumentView.h"

#include <QColorSpace>
#include <QTest>

#include <gtest/gtest.h>

namespace {

// The 512 × 512 portrait in a 700 × 600 preview, lips recoloured and skin
// smoothed, so the retouched picture differs from the photo on both sides
// of the frame's middle.
class ViewTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        state.b_Color_Lips = state.b_Face_Skin_Smooth = true;
        state.f_Color_Lips_Transparency = 1;
        shows.changed();
        view.resize(700, 600);
    }

    QImage shown() { return opaque(view.grab().toImage()); }

    // What the view shows inside the photo's frame, in device pixels: the
    // tests also run on a screen of scale 2 (QT_SCALE_FACTOR=2).
    QImage shownInFrame()
    {
        const QRectF frame = flipped(view.rectDrawCamera(), view.height());
        const double ratio = view.devicePixelRatioF();
        return shown().copy(QRectF(frame.topLeft() * ratio, frame.size() * ratio).toRect());
    }

    // Pixels only: the photo's colour profile is no part of what is shown.
    static QImage opaque(const QImage& picture)
    {
        QImage pixels = picture.convertToFormat(QImage::Format_RGB32);
        pixels.setColorSpace({});
        return pixels;
    }

    const OpenedPhoto& photo = portrait();
    DocumentView shows{photo};
    View_Picture& view = shows.view;
    EditingState& state = shows.state;
    PhotoEdits& photoEdits = shows.photoEdits;
};

} // namespace

TEST_F(ViewTest, MiddleDragAndLeftDragWithThePanKeyPanAndNeverMoveAHandle)
{
    state.b_Apply_Cheeks = state.b_Activated_Cheeks_Reposition = true;
    shows.changed();
    view.zoomBy(3); // 2 ×: the photo is larger than the view
    view.grab();
    const PhotoEdits before = photoEdits;
    const QRectF frame = view.rectDrawCamera();
    // Over the centre of the left cheek area, where a left drag would move it.
    const QRectF area = before.rect_Cheek_Left_Area_To_Paint;
    const double scale = frame.width() / 512;
    const QPoint onArea(int(frame.x() + area.center().x() * scale), int(600 - frame.y() - area.center().y() * scale));

    QTest::mousePress(&view, Qt::MiddleButton, {}, onArea);
    QMouseEvent move(QEvent::MouseMove, onArea + QPoint(-30, 20), view.mapToGlobal(onArea + QPoint(-30, 20)),
                     Qt::NoButton, Qt::MiddleButton, {});
    QCoreApplication::sendEvent(&view, &move);
    QTest::mouseRelease(&view, Qt::MiddleButton, {}, onArea + QPoint(-30, 20));
    EXPECT_EQ(view.rectDrawCamera().topLeft(), frame.topLeft() + QPointF(-30, -20)) << "y up: 20 down is -20";

    // Space let go before the button: the gesture stays a pan to its end,
    // even while a colour pick waits for a click.
    state.b_Cheeks_Picking_Color = true;
    state.i_Picking_Color_Index = 2;
    view.setPanKeyHeld(true);
    QTest::mousePress(&view, Qt::LeftButton, {}, onArea);
    QMouseEvent leftMove(QEvent::MouseMove, onArea + QPoint(10, 0), view.mapToGlobal(onArea + QPoint(10, 0)),
                         Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&view, &leftMove);
    view.setPanKeyHeld(false);
    QTest::mouseRelease(&view, Qt::LeftButton, {}, onArea + QPoint(10, 0));
    EXPECT_EQ(view.rectDrawCamera().topLeft(), frame.topLeft() + QPointF(-20, -20));
    EXPECT_EQ(photoEdits, before) << "a pan is never a handle drag";
    EXPECT_TRUE(state.b_Cheeks_Picking_Color) << "nor a pick";
}

TEST_F(ViewTest, ADisplayP3PhotoIsShownAndPickedAsAColourManagedViewerShowsIt)
{
    // The portrait's colours, stored as Display P3 values.
    QImage srgb = photo.img_Basic.convertToFormat(QImage::Format_RGB888);
    srgb.setColorSpace(QColorSpace::SRgb);
    const QImage values = toPicture(srgb.convertedToColorSpace(QColorSpace::DisplayP3));
    PhotoMetadata tags;
    tags.colourSpace = QColorSpace::DisplayP3;
    OpenResult opened = analysePhoto("p3", DecodedPhoto{values, QSizeF(values.size()), tags, {}, {}});
    ASSERT_EQ(opened.outcome, OpenResult::Opened) << opened.message.toStdString();
    shows.open(opened.photo);
    state = EditingState{};
    shows.changed();
    const OpenedPhoto* p3 = shows.document.photo().get();
    view.zoomToActualPixels();

    const QImage shown = shownInFrame(), expected = opaque(srgb);
    ASSERT_EQ(shown.size(), expected.size());
    int largest = 0;
    for (int y = 0; y < shown.height(); y += 3)
        for (int x = 0; x < shown.width(); x += 3) {
            const QRgb a = shown.pixel(x, y), b = expected.pixel(x, y);
            largest = std::max({largest, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                std::abs(qBlue(a) - qBlue(b))});
        }
    EXPECT_LE(largest, 2) << "the P3 values are shown converted to the screen's sRGB";
    ASSERT_NE(opaque(p3->img_Basic).pixel(80, 300), expected.pixel(80, 300)) << "the orange suit's values differ";

    state.b_Cheeks_Picking_Color = true;
    state.i_Picking_Color_Index = 2;
    const QRectF frame = flipped(view.rectDrawCamera(), view.height());
    QTest::mouseClick(&view, Qt::LeftButton, {}, (frame.topLeft() + QPointF(80.25, 300.25) * frame.width() / 512).toPoint());
    const QColor seen = srgb.pixelColor(80, 300);
    EXPECT_NEAR(state.color_Color_Cheeks_2.r * 255, seen.red(), 1.5) << "the colour the person sees is picked";
    EXPECT_NEAR(state.color_Color_Cheeks_2.g * 255, seen.green(), 1.5);
    EXPECT_NEAR(state.color_Color_Cheeks_2.b * 255, seen.blue(), 1.5);
}

TEST(ViewWithoutAPhoto, ZoomCommandsLeaveTheFramingFitted)
{
    View_Picture view;
    view.resize(700, 600);
    view.zoomToActualPixels();
    view.zoomBy(2);
    EXPECT_EQ(view.framing(), Framing{}) << "nothing to zoom: the next photo opens fitted as always";
}
