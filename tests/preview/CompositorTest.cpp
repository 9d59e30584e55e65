#include "Compositor.h"
#include "ImageSpace.h"
#include "OpenedPhoto.h"
#include "PictureSaver.h"
#include "PreviewGeometry.h"
#include "View_Picture.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const OpenedPhoto& portrait()
{
    static const OpenResult opened = openAndAnalyse(QString(BELLAVENOR_TEST_DATA) + "/portrait.png");
    EXPECT_EQ(opened.outcome, OpenResult::Opened);
    return opened.photo;
}

QImage composed(const EditingState& state)
{
    Compositor compositor;
    return compositor.compose(portrait(), state);
}

// The smallest rectangle holding every pixel that differs; empty when none.
QRect changedArea(const QImage& a, const QImage& b)
{
    QRect changed;
    for (int y = 0; y < a.height(); ++y) {
        const auto* rowA = reinterpret_cast<const quint32*>(a.constScanLine(y));
        const auto* rowB = reinterpret_cast<const quint32*>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x)
            if (rowA[x] != rowB[x])
                changed |= QRect(x, y, 1, 1);
    }
    return changed;
}

QRect inPicture(const QRectF& imageRect, int margin)
{
    return pictureRectOf(imageRect, portrait().imgSize.height()).toAlignedRect().adjusted(-margin, -margin, margin, margin);
}

QRectF boundsOf(const PointList& points) // photo pixels, y down
{
    QRectF bounds(points.first(), QSizeF(0, 0));
    for (const QPointF& p : points)
        bounds |= QRectF(p, QSizeF(1, 1));
    return bounds;
}

struct EffectCase {
    const char* name;
    void (*enable)(EditingState&);
    QRect (*allowed)(const OpenedPhoto&);
};

} // namespace

TEST(Compositor, AllSwitchesOffGiveThePhotoUnchanged)
{
    const QImage picture = composed(EditingState{});
    ASSERT_EQ(picture.size(), portrait().img_Basic.size());
    EXPECT_TRUE(changedArea(picture, portrait().img_Basic).isEmpty());
}

TEST(Compositor, EachEffectChangesPixelsOnlyNearItsOwnRegion)
{
    const QImage photo = composed(EditingState{});
    const EffectCase cases[] = {
        {"lips colour", [](EditingState& s) { s.b_Color_Lips = true; },
         [](const OpenedPhoto& p) { return inPicture(p.regions.rect_Lips, 3); }},
        {"teeth", [](EditingState& s) { s.b_Whiten_Teeth = true; },
         [](const OpenedPhoto& p) { return inPicture(p.regions.rect_Inside_Mouth, 2); }},
        {"eye colour", [](EditingState& s) { s.b_Color_Eyes = true; },
         [](const OpenedPhoto& p) { return inPicture(p.regions.rect_Full_Eye_Left, 2) | inPicture(p.regions.rect_Full_Eye_Right, 2); }},
        {"under-eye", [](EditingState& s) { s.b_Eyes_Darken = true; s.f_Darken_Eyes_Transparency = 0.3f; },
         [](const OpenedPhoto& p) {
             return (boundsOf(p.regions.array_Eye_Darken_Left_Points) | boundsOf(p.regions.array_Eye_Darken_Right_Points))
                 .toAlignedRect().adjusted(-8, -8, 8, 8);
         }},
        {"eye shadow", [](EditingState& s) { s.b_Eye_Eyeshadow = true; s.f_Eyeshadow_Blur_Level = 2; },
         [](const OpenedPhoto& p) {
             return (boundsOf(p.regions.array_Eye_Lid_Left) | boundsOf(p.regions.array_Eye_Lid_Right)).toAlignedRect().adjusted(-8, -8, 8, 8);
         }},
        {"cheeks", [](EditingState& s) { s.b_Apply_Cheeks = true; },
         [](const OpenedPhoto& p) { return inPicture(p.regions.rect_Cheek_Left_Area_To_Paint, 2) | inPicture(p.regions.rect_Cheek_Right_Area_To_Paint, 2); }},
        {"wrinkles", [](EditingState& s) { s.b_Remove_Wrinkles = true; },
         [](const OpenedPhoto& p) { return inPicture(p.regions.rect_Face_Skin, 2); }},
        {"widen eyes", [](EditingState& s) { s.b_Widen_Eyes = true; s.u_Widen_Eyes_Level = 20; },
         [](const OpenedPhoto& p) {
             return inPicture(p.regions.rect_Full_Eye_Left, 6) | inPicture(p.regions.rect_Full_Eye_Right, 6);
         }},
    };
    for (const EffectCase& effect : cases) {
        EditingState state;
        effect.enable(state);
        const QRect changed = changedArea(composed(state), photo);
        EXPECT_FALSE(changed.isEmpty()) << effect.name << " changes something";
        EXPECT_TRUE(effect.allowed(portrait()).contains(changed)) << effect.name;
    }
}

TEST(Compositor, LipsColourNeverShowsInsideAnOpenMouth)
{
    EditingState state;
    state.b_Color_Lips = true;
    state.f_Color_Lips_Transparency = 1;
    const QImage picture = composed(state);
    const PointList& inside = portrait().regions.array_Inside_Mouth_Points;
    QPointF centre;
    for (const QPointF& p : inside)
        centre += p / double(inside.size());
    EXPECT_EQ(picture.pixelColor(centre.toPoint()), portrait().img_Basic.pixelColor(centre.toPoint()));
    const QPointF onLip = (portrait().facePointsRelativeToImageSize[57] + portrait().facePointsRelativeToImageSize[66]) / 2;
    EXPECT_NE(picture.pixelColor(onLip.toPoint()), portrait().img_Basic.pixelColor(onLip.toPoint()));
}

TEST(Compositor, CachedStepsGiveWhatAFreshCompositorGives)
{
    Compositor kept;
    EditingState state;
    state.b_Face_Skin_Smooth = state.b_Remove_Wrinkles = state.b_Apply_Cheeks = true;
    kept.compose(portrait(), state);
    state.u_Face_Skin_Smooth_Level = 4;
    state.u_Remove_Wrinkles_Level = 2;
    state.color_Color_Cheeks_2 = {0.2f, 0.9f, 0.3f, 1};
    state.pt_MakeUp_Center_Right = {60, 40};
    EXPECT_TRUE(changedArea(kept.compose(portrait(), state), composed(state)).isEmpty());
    state.b_Face_Skin_Smooth = false;
    EXPECT_TRUE(changedArea(kept.compose(portrait(), state), composed(state)).isEmpty());
}

TEST(Compositor, CheekHandlesAreDrawnIntoThePictureWhileRepositioning)
{
    EditingState state;
    state.b_Apply_Cheeks = state.b_Activated_Cheeks_Reposition = true;
    Compositor compositor;
    const QImage picture = compositor.compose(portrait(), state);
    const QRectF area = portrait().regions.rect_Cheek_Left_Area_To_Paint;
    const QPointF leftBottom = pictureRectOf(area, 512).bottomLeft();
    EXPECT_EQ(picture.pixelColor(leftBottom.toPoint()), QColor(Qt::green));
    EXPECT_NEAR(compositor.handles().pointPercenteLeft[0].x(), area.x() * 100 / 512, 1e-4);
    EXPECT_NEAR(compositor.handles().pointPercenteLeft[0].y(), area.y() * 100 / 512, 1e-4);
}

TEST(SavedPicture, NameUsesTheWeekBasedYear)
{
    EXPECT_EQ(renderedPictureName(QDateTime(QDate(2024, 12, 31), QTime(10, 20, 30))), "2025-12-31-10-20-30.png");
    EXPECT_EQ(renderedPictureName(QDateTime(QDate(2024, 3, 3), QTime(14, 5, 9))), "2024-03-03-14-05-09.png");
}

TEST(SavedPicture, RedrawWritesTheFullSizePictureOnlyWithAPhoto)
{
    QTemporaryDir folder;
    EditingState state;
    SaveRequest request{true, folder.path(), {}};
    OpenedPhoto none;
    View_Picture view;
    view.resize(300, 200);
    view.setSources(&none, &state, &request);
    view.grab();
    EXPECT_TRUE(QDir(folder.path()).isEmpty()) << "no photo, no file";

    OpenedPhoto photo = portrait();
    view.setSources(&photo, &state, &request);
    view.grab();
    EXPECT_FALSE(request.b_Save_Picture);
    ASSERT_TRUE(request.s_Saved_Take_Picture.startsWith(folder.path()));
    EXPECT_EQ(QImage(request.s_Saved_Take_Picture).size(), QSize(512, 512));
    EXPECT_EQ(view.rectDrawCamera(), return_Best_Fit_Frame(512, 512, 300, 200));
}
