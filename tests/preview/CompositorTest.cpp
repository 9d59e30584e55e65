#include "Compositor.h"
#include "TestPortrait.h"
#include "face/FaceFixtures.h"
#include "EffectOrder.h"
#include "EffectCatalogue.h"
#include "FastPaths.h"
#include "ImageSpace.h"
#include "OpenedPhoto.h"
#include "PictureSaver.h"
#include "PreviewGeometry.h"
#include "RandomSettings.h"
#include "TRCIHighPassSkinSmoothing.h"
#include "View_Picture.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

namespace {

// The plain paths while it lives, the fast ones again after, also when a
// check fails or throws.
struct PlainPathsOnly {
    PlainPathsOnly() { setFastPaths(false); }
    ~PlainPathsOnly() { setFastPaths(true); }
    PlainPathsOnly(const PlainPathsOnly&) = delete;
    PlainPathsOnly& operator=(const PlainPathsOnly&) = delete;
};


const PhotoEdits& asOpened()
{
    static const PhotoEdits photoEdits = PhotoEdits::of(portrait().regions);
    return photoEdits;
}

// The portrait three times enlarged: its handles are several pixels wide.
const OpenedPhoto& threeTimesEnlarged()
{
    static const OpenedPhoto enlarged = enlargedPortrait(1536);
    return enlarged;
}

QImage composed(const EditingState& state, const OpenedPhoto& photo = portrait(), const PhotoEdits& photoEdits = asOpened())
{
    Compositor compositor;
    return compositor.compose(photo, photoEdits, state);
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

} // namespace

TEST(Compositor, EveryInputOfACachedStepChangedOnItsOwnGivesWhatAFreshCompositorGives)
{
    using Change = void (*)(EditingState&);
    const std::pair<const char*, Change> changes[] = {
        {"skin level", [](EditingState& s) { s.u_Face_Skin_Smooth_Level = 4; }},
        {"skin radius", [](EditingState& s) { s.u_Face_Skin_Smooth_Radius = 3; }},
        {"wrinkle level", [](EditingState& s) { s.u_Remove_Wrinkles_Level = 2; }},
        {"left cheek blur", [](EditingState& s) { s.f_Cheeks_Blur_Level_Left = 9; }},
        {"right cheek blur", [](EditingState& s) { s.f_Cheeks_Blur_Level_Right = 1; }},
        {"left outer colour", [](EditingState& s) { s.color_Color_Cheeks_1 = {0.1f, 0.2f, 0.9f, 1}; }},
        {"right outer colour", [](EditingState& s) { s.color_Color_Cheeks_1_Right = {0.9f, 0.9f, 0.1f, 1}; }},
        {"make-up colour", [](EditingState& s) { s.color_Color_Cheeks_2 = {0.2f, 0.9f, 0.3f, 1}; }},
        {"left make-up centre", [](EditingState& s) { s.pt_MakeUp_Center_Left = {70, 65}; }},
        {"right make-up centre", [](EditingState& s) { s.pt_MakeUp_Center_Right = {35, 90}; }},
        {"skin smoothing off", [](EditingState& s) { s.b_Face_Skin_Smooth = false; }},
    };
    EditingState all;
    all.b_Face_Skin_Smooth = all.b_Remove_Wrinkles = all.b_Apply_Cheeks = true;
    all.f_Color_Cheeks_Transparency = 0.1f; // the blush shows strongly
    Compositor kept;
    const QImage before = kept.compose(portrait(), asOpened(), all).copy();
    for (const auto& [name, change] : changes) {
        EditingState state = all;
        change(state);
        const QImage after = kept.compose(portrait(), asOpened(), state).copy();
        EXPECT_FALSE(changedArea(after, before).isEmpty()) << name << " shows";
        EXPECT_TRUE(changedArea(after, composed(state)).isEmpty()) << name;
        kept.compose(portrait(), asOpened(), all); // back, so each change is on its own
    }
}

// A kept compositor puts the base back only where its last pass painted:
// whatever a step painted must be gone when it stops painting it, alone
// (nothing else painted over the same place) and among all the others.
TEST(Compositor, EverySwitchTurnedAndEveryAreaMovedGivesWhatAFreshCompositorGives)
{
    const auto withEffectOf = [](EditingState s, const char* name) {
        s.b_Apply_Cheeks = s.b_Apply_Cheeks || qstrcmp(name, "b_Activated_Cheeks_Reposition") == 0;
        s.b_Eyes_Darken = s.b_Eyes_Darken || qstrcmp(name, "b_Activated_Darken_Eyes_Reposition") == 0;
        return s;
    };
    EditingState all;
    all.u_Widen_Eyes_Level = 30;
    all.f_Darken_Eyes_Transparency = 0.2f;
    all.f_Eyeshadow_Blur_Level = 6;
    EditingState none = all;
    all.forEachField([](const char* name, auto& value) {
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, bool>)
            value = qstrcmp(name, "b_Cheeks_Picking_Color") != 0;
    });
    // On the enlarged photo, with a cheek area of one pixel: its handles and
    // outline reach well beyond it.
    PhotoEdits tiny = PhotoEdits::of(threeTimesEnlarged().regions);
    tiny.rect_Cheek_Right_Area_To_Paint = QRectF(tiny.rect_Cheek_Right_Area_To_Paint.topLeft(), QSizeF(1, 1));
    Compositor kept;
    const std::tuple<const EditingState*, const OpenedPhoto*, const PhotoEdits*> starts[] = {
        {&none, &portrait(), &asOpened()}, {&all, &portrait(), &asOpened()}, {&none, &threeTimesEnlarged(), &tiny}};
    for (const auto& [start, photo, photoEdits] : starts) {
        EditingState state = *start;
        state.forEachField([&](const char* name, auto& value) {
            if constexpr (std::is_same_v<std::decay_t<decltype(value)>, bool>) {
                value = !value;
                kept.compose(*photo, *photoEdits, withEffectOf(state, name));
                value = !value;
                const EditingState back = withEffectOf(state, name);
                const QImage after = kept.compose(*photo, *photoEdits, back).copy();
                EXPECT_TRUE(changedArea(after, composed(back, *photo, *photoEdits)).isEmpty())
                    << name << (start->b_Apply_Cheeks ? " off" : " on") << " at " << photo->imgSize.width();
            }
        });
    }
    PhotoEdits moved = asOpened();
    moved.rect_Cheek_Left_Area_To_Paint.translate(-40, 25);
    moved.rect_Cheek_Right_Area_To_Paint.translate(30, -20);
    moved.array_Eye_Darken_Left_Points[2] += QPointF(6, 9);
    kept.compose(portrait(), asOpened(), all);
    const QImage after = kept.compose(portrait(), moved, all).copy();
    EXPECT_TRUE(changedArea(after, composed(all, portrait(), moved)).isEmpty()) << "areas moved";
}

// The fast paths (vector kernels with their leftover columns, work limited
// to what changed, kept pictures) give the plain paths' picture to the bit,
// on photos whose widths end 1 to 17 columns past a multiple of 16, each
// with its own random settings after a redraw of other ones.
TEST(Compositor, FastPathsGiveThePlainPathsPictureAtEverySizeAndSetting)
{
    const struct {
        QRect crop;
        QSize size;
    } photos[] = {
        {{56, 0, 400, 300}, {4000, 3000}}, {{40, 10, 420, 330}, {1041, 817}}, {{60, 0, 390, 300}, {1031, 793}},
        {{50, 5, 400, 320}, {1023, 819}},  {{56, 0, 400, 300}, {1009, 757}},
    };
    unsigned seed = 11;
    for (const auto& [crop, size] : photos) {
        const QImage picture = portrait().img_Basic.copy(crop).scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        const OpenResult opened = analysePhoto("camera", DecodedPhoto{picture, QSizeF(picture.size()), {}, {}, {}});
        ASSERT_EQ(opened.outcome, OpenResult::Opened) << size.width() << "x" << size.height();
        const PhotoEdits photoEdits = PhotoEdits::of(opened.photo.regions);
        const EditingState earlier = randomSettings(seed++), settings = randomSettings(seed++);
        Compositor kept;
        kept.compose(opened.photo, photoEdits, earlier);
        const QImage fast = kept.compose(opened.photo, photoEdits, settings).copy();
        const QImage plain = [&] {
            const PlainPathsOnly plainPaths;
            return composed(settings, opened.photo, photoEdits);
        }();
        const QRect differs = changedArea(fast, plain);
        EXPECT_TRUE(differs.isEmpty()) << size.width() << "x" << size.height() << " differs in " << differs.x() << ","
                                       << differs.y() << " " << differs.width() << "x" << differs.height();
    }
}

TEST(Compositor, PictureThatCannotBeMadeIsAFailureAndTheNextOneIsWhole)
{
    // No panel reaches such a blur; a settings file is refused it. Here it
    // stands for any step that runs out of memory.
    EditingState impossible;
    impossible.b_Apply_Cheeks = impossible.b_Face_Skin_Smooth = true;
    impossible.f_Cheeks_Blur_Level_Left = 1e7f;
    Compositor compositor;
    QString failure;
    EXPECT_EQ(compositor.tryCompose(portrait(), asOpened(), impossible, failure), nullptr);
    EXPECT_TRUE(failure.contains("memory")) << failure.toStdString();

    EditingState fine = impossible;
    fine.f_Cheeks_Blur_Level_Left = 4;
    const QImage* picture = compositor.tryCompose(portrait(), asOpened(), fine, failure);
    ASSERT_NE(picture, nullptr);
    EXPECT_TRUE(changedArea(*picture, composed(fine)).isEmpty());
}

TEST(SavedPicture, NameUsesTheWeekBasedYear)
{
    EXPECT_EQ(renderedPictureName(QDateTime(QDate(2024, 12, 31), QTime(10, 20, 30))), "2025-12-31-10-20-30.png");
    EXPECT_EQ(renderedPictureName(QDateTime(QDate(2024, 3, 3), QTime(14, 5, 9))), "2024-03-03-14-05-09.png");
}

// Each step's place in the table matters: swapping it with its neighbour
// changes the picture, with every effect on and the rings and blush moved
// by the mouse over the mouth and the eyes, as a person may drag them. Only
// steps whose regions the face itself keeps apart commute.
TEST(Compositor, SwappingAnyTwoNeighbouringStepsChangesThePicture)
{
    const std::set<std::pair<std::string, std::string>> apart = {
        {"lips mask", "eye colour"}, {"eye colour", "lips colour"}, {"mouth interior", "eye colour finishing"}};
    EditingState all;
    all.forEachField([](const char* name, auto& value) {
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, bool>)
            value = QByteArray(name).startsWith("b_") && QByteArray(name) != "b_Cheeks_Picking_Color";
    });
    all.u_Widen_Eyes_Level = 20;
    all.f_Color_Lips_Transparency = all.f_Color_Eyes_Transparency = 0.9f;
    all.f_Darken_Eyes_Transparency = 0.3f;
    PhotoEdits moved = asOpened();
    moved.array_Healed_Spots = {cheekPercent()};
    moved.array_Eye_Darken_Left_Points = portrait().regions.array_Mouth_Points.mid(0, 6); // a ring over the lips
    moved.rect_Cheek_Right_Area_To_Paint = portrait().regions.rect_Full_Eye_Right.adjusted(-20, -20, 20, 20);
    moved.array_Eye_Darken_Right_Points = portrait().regions.array_Eye_Right_Points; // its handles under the blush
    std::vector<CompositorStep> steps(compositorSteps().begin(), compositorSteps().end());
    const QImage inOrder = Compositor().compose(portrait(), moved, all).copy();
    for (std::size_t i = 0; i + 1 < steps.size(); ++i) {
        std::swap(steps[i], steps[i + 1]);
        const QImage swapped = Compositor().compose(portrait(), moved, all, steps).copy();
        if (apart.count({steps[i + 1].name, steps[i].name}) == 0) {
            EXPECT_NE(swapped, inOrder) << "\"" << steps[i].name << "\" moved before \"" << steps[i + 1].name << "\"";
        }
        std::swap(steps[i], steps[i + 1]);
    }
}

// A group photo with every face: each face is the face `--face N` opens,
// its regions the head's moved with it; the picture is, pixel for pixel,
// each face's picture alone pasted together (heads apart, nothing
// overlaps); a face left out is left as it is.
TEST(Compositor, EveryFaceOfAGroupIsRetouchedAsEachFaceAlone)
{
    const QImage group = headsSideBySide({1.0, 1.4, 1.2}).picture;
    const auto opened = [&](FacePick pick) {
        return analysePhoto("group", DecodedPhoto{group, QSizeF(group.size()), {}, {}, {}}, pick).photo;
    };
    const OpenedPhoto every = opened({0, false, {}, true});
    ASSERT_EQ(every.faceCount(), 3);
    std::vector<OpenedPhoto> alone;
    for (int face = 0; face < 3; ++face) {
        alone.push_back(opened({face + 1, false, {}, false}));
        EXPECT_EQ(every.asFace(face).facePointsRelativeToImageSize, alone.back().facePointsRelativeToImageSize);
        EXPECT_EQ(every.asFace(face).regions.path_Face, alone.back().regions.path_Face);
    }
    EditingState state;
    state.b_Face_Skin_Smooth = state.b_Remove_Wrinkles = state.b_Color_Eyes = state.b_Widen_Eyes = true;
    state.b_Eye_Eyeshadow = state.b_Eyes_Darken = state.b_Apply_Cheeks = state.b_Color_Lips = true;
    state.b_Whiten_Teeth = state.b_Heal_Blemishes = state.b_Natural_Skin = true;
    state.u_Widen_Eyes_Level = 10;
    // Skin smoothing is the whole picture's, with every face's eyes and
    // lips kept out of it: not each face's alone.
    state.b_Face_Skin_Smooth = false;
    const QImage none = composed(EditingState(), every, PhotoEdits::of(every.regions));
    const QImage all = composed(state, every, PhotoEdits::of(every.regions));
    PhotoEdits leftOut = PhotoEdits::of(every.regions);
    leftOut.facesLeftOut = {0, 2};
    EXPECT_EQ(composed(state, every, leftOut), composed(state, alone[1], PhotoEdits::of(alone[1].regions)));
    int changedPixels = 0;
    QImage pasted = none.copy();
    for (const OpenedPhoto& face : alone) {
        const QImage own = composed(state, face, PhotoEdits::of(face.regions));
        for (int y = 0; y < own.height(); ++y)
            for (int x = 0; x < own.width(); ++x)
                if (own.pixel(x, y) != none.pixel(x, y)) {
                    pasted.setPixel(x, y, own.pixel(x, y));
                    ++changedPixels;
                }
    }
    EXPECT_GT(changedPixels, group.width() * group.height() / 50);
    EXPECT_TRUE(changedArea(all, pasted).isEmpty()) << "differs in " << changedArea(all, pasted).width() << " x "
                                                    << changedArea(all, pasted).height();
}

// Cheek to cheek: no face's effects change another face's eyes, brows or
// lips; each face's own features are painted as that face alone paints
// them. The second face is the portrait's moved so that its eye lies on the
// first face's blushed cheek.
TEST(Compositor, InATightGroupNoFacesEffectReachesAnotherFacesFeatures)
{
    OpenedPhoto two = portrait();
    const FaceLandmarks& p = two.facePointsRelativeToImageSize;
    const QPointF cheek = (p[12] + p[13] + p[54]) / 3, eye = (p[36] + p[39]) / 2;
    FaceLandmarks moved;
    for (QPointF point : p)
        moved.append(point + cheek - eye);
    two.otherFaces.push_back(faceOf(moved, two.imgSize));
    EditingState state;
    state.b_Apply_Cheeks = state.b_Eyes_Darken = state.b_Eye_Eyeshadow = state.b_Color_Lips = true;
    const QImage all = composed(state, two, PhotoEdits::of(two.regions));
    for (int face = 0; face < 2; ++face) {
        const OpenedPhoto alone = two.asFace(face);
        const QImage own = composed(state, alone, PhotoEdits::of(alone.regions));
        const double height = two.imgSize.height();
        int differ = 0, inside = 0;
        for (const QPainterPath& feature : {alone.regions.path_Eye_Left, alone.regions.path_Lips}) {
            const QPainterPath shape = flipped(feature, height);
            const QRect r = shape.boundingRect().toAlignedRect();
            for (int y = r.top(); y <= r.bottom(); ++y)
                for (int x = r.left(); x <= r.right(); ++x)
                    if (shape.contains(QPointF(x + 0.5, y + 0.5))) {
                        ++inside;
                        differ += all.pixel(x, y) != own.pixel(x, y);
                    }
        }
        EXPECT_GT(inside, 100);
        EXPECT_EQ(differ, 0) << "face " << face << " of " << inside;
    }
}
