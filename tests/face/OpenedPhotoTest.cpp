#include "FaceFixtures.h"
#include "ImageSpace.h"
#include "OpenedPhoto.h"
#include "TiffPages.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <opencv2/core.hpp>

#include <new>

namespace {

// The portrait opened once for every test here.
const OpenedPhoto& portrait()
{
    static const OpenResult opened = openAndAnalyse(testDataPath("portrait.png"));
    EXPECT_EQ(opened.outcome, OpenResult::Opened) << opened.message.toStdString();
    return opened.photo;
}

QPointF midpoint(QPointF a, QPointF b)
{
    return (a + b) / 2;
}

QPointF centroid(const PointList& points)
{
    QPointF sum;
    for (const QPointF& p : points)
        sum += p;
    return sum / double(points.size());
}

int alphaAt(const QImage& picture, QPointF photoPoint)
{
    return picture.pixelColor(photoPoint.toPoint()).alpha();
}

int alphaAt(const MaskedArea& masked, QPointF photoPoint)
{
    return masked.pixelColor(photoPoint.toPoint()).alpha();
}

// Places on the portrait, in photo pixels (top-left origin).
struct Landmarks {
    QPointF leftEye, rightEye, lips, insideMouth, nose, cheek, corner;
};

Landmarks places(const OpenedPhoto& photo)
{
    const FaceLandmarks& p = photo.facePointsRelativeToImageSize;
    return {centroid(photo.regions.array_Eye_Left_Points),
            centroid(photo.regions.array_Eye_Right_Points),
            midpoint(p[57], p[66]), // lower lip, between the outer and inner contour
            centroid(photo.regions.array_Inside_Mouth_Points),
            midpoint(p[30], p[33]),
            QPointF(photo.regions.pt_Center_Cheek_Left.x(), photo.imgSize.height() - photo.regions.pt_Center_Cheek_Left.y()),
            QPointF(5, 5)};
}

} // namespace

TEST(RegionImages, FaceSkinHasEyesLipsAndNoseCutAway)
{
    const OpenedPhoto& photo = portrait();
    const Landmarks at = places(photo);
    const MaskedArea& skin = photo.images.image_Face_Skin;
    EXPECT_EQ(alphaAt(skin, at.leftEye), 0);
    EXPECT_EQ(alphaAt(skin, at.rightEye), 0);
    EXPECT_EQ(alphaAt(skin, at.lips), 0);
    EXPECT_EQ(alphaAt(skin, at.nose), 0);
    EXPECT_EQ(alphaAt(skin, at.cheek), 255);
    EXPECT_EQ(alphaAt(skin, at.corner), 0) << "outside the face";
}

TEST(RegionImages, FullPictureLacksOnlyEyesAndLips)
{
    const OpenedPhoto& photo = portrait();
    const Landmarks at = places(photo);
    const QImage& full = photo.images.image_Face_Full_Picture;
    EXPECT_EQ(alphaAt(full, at.leftEye), 0);
    EXPECT_EQ(alphaAt(full, at.rightEye), 0);
    EXPECT_EQ(alphaAt(full, at.lips), 0);
    EXPECT_EQ(alphaAt(full, at.nose), 255);
    EXPECT_EQ(alphaAt(full, at.cheek), 255);
    EXPECT_EQ(alphaAt(full, at.corner), 255);
    EXPECT_EQ(full.pixelColor(at.corner.toPoint()), photo.img_Basic.pixelColor(at.corner.toPoint()));
}

TEST(RegionImages, LipsExcludeTheOpenMouthWhichHasAPictureOfItsOwn)
{
    const OpenedPhoto& photo = portrait();
    const Landmarks at = places(photo);
    EXPECT_EQ(alphaAt(photo.images.image_Lips, at.lips), 255);
    EXPECT_EQ(alphaAt(photo.images.image_Lips, at.insideMouth), 0);
    EXPECT_EQ(alphaAt(photo.images.image_Inside_Mouth, at.insideMouth), 255);
    EXPECT_EQ(alphaAt(photo.images.image_Inside_Mouth, at.lips), 0);
}

TEST(RegionImages, CutsHaveTheirRectanglesSizeAndHoldThatPartOfThePhotoUpright)
{
    const OpenedPhoto& photo = portrait();
    const FaceRegions& r = photo.regions;
    const RegionImages& i = photo.images;
    EXPECT_EQ(i.image_Face_Skin_Cut.size(), r.rect_Face_Skin.size().toSize());
    EXPECT_EQ(i.image_Lips_Black_White.size(), r.rect_Lips.size().toSize());
    EXPECT_EQ(i.image_Inside_Mouth_Cut.size(), r.rect_Inside_Mouth.size().toSize());
    EXPECT_EQ(i.image_Eye_Left_Colored.size(), r.rect_Eye_Left.size().toSize()) << "cut by the inside-eye rectangle";
    EXPECT_EQ(i.image_Eye_Right_Black_White.size(), r.rect_Eye_Right.size().toSize());
    EXPECT_EQ(i.image_Nose_Cut.size(), r.rect_Nose.size().toSize());

    // Every opaque pixel of the face-skin cut is the photo's pixel at the
    // same place of the rectangle, counted from its top.
    const QRectF inPhoto = flipped(r.rect_Face_Skin, photo.imgSize.height());
    int compared = 0;
    for (int y = 0; y < i.image_Face_Skin_Cut.height(); y += 9)
        for (int x = 0; x < i.image_Face_Skin_Cut.width(); x += 9) {
            const QColor cut = i.image_Face_Skin_Cut.pixelColor(x, y);
            if (cut.alpha() != 255)
                continue;
            const QColor original = photo.img_Basic.pixelColor(int(inPhoto.x()) + x, int(inPhoto.y()) + y);
            ASSERT_NEAR(cut.red(), original.red(), 2) << x << "," << y;
            ASSERT_NEAR(cut.blue(), original.blue(), 2) << x << "," << y;
            ++compared;
        }
    EXPECT_GT(compared, 50);
}

TEST(RegionImages, GreyVersionsHaveEqualChannels)
{
    const RegionImages& i = portrait().images;
    for (const QImage* grey : {&i.image_Lips_Black_White, &i.image_Eye_Left_Black_White, &i.image_Eye_Right_Black_White})
        for (int y = 0; y < grey->height(); ++y)
            for (int x = 0; x < grey->width(); ++x) {
                const QColor c = grey->pixelColor(x, y);
                ASSERT_TRUE(c.red() == c.green() && c.green() == c.blue()) << x << "," << y;
            }
}

TEST(OpenAndAnalyse, CarriesThePercentFormsAndRefusesWithTheUsersMessages)
{
    const OpenedPhoto& photo = portrait();
    ASSERT_EQ(photo.facePointsInPercentRelativeToImage.size(), 68);
    ASSERT_EQ(photo.facePointsRelativeToImageSize[8], QPointF(221, 178)) << "the chin";
    EXPECT_EQ(photo.facePointsInPercentRelativeToImage[8], QPointF(43.1640625, 65.234375)) << "y from the bottom";
    EXPECT_EQ(photo.regions.array_Face_Points[0], QPointF(34.9609375, 79.6875)) << "the face list in percent";

    QTemporaryDir folder;
    const QString twoFaces = folder.filePath("two.png");
    ASSERT_TRUE(twoPortraits().save(twoFaces));
    const OpenResult several = openAndAnalyse(twoFaces);
    EXPECT_EQ(several.outcome, OpenResult::SeveralFaces);
    EXPECT_EQ(several.message, "More than one face was found on the picture.");
    EXPECT_TRUE(several.photo.isEmpty());

    QImage wall = makePicture({300, 200});
    wall.fill(Qt::gray);
    ASSERT_TRUE(wall.save(folder.filePath("wall.png")));
    EXPECT_EQ(openAndAnalyse(folder.filePath("wall.png")).message, "No face was found on the picture.");

    const OpenResult missing = openAndAnalyse(folder.filePath("gone.jpg"));
    EXPECT_EQ(missing.outcome, OpenResult::Failed);
    EXPECT_TRUE(missing.message.contains("gone.jpg"));
}

TEST(OpenAndAnalyse, TiffStartingWithAThumbnailIsAnalysedOnThePhoto)
{
    QTemporaryDir folder;
    const QString path = folder.filePath("with-thumbnail.tif");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(tiffOfPages({{portraitPicture().scaled(96, 96)}, {portraitPicture()}}));
    file.close();

    const OpenResult opened = openAndAnalyse(path);

    ASSERT_EQ(opened.outcome, OpenResult::Opened) << opened.message.toStdString();
    EXPECT_EQ(opened.photo.imgSize, QSizeF(512, 512));
    EXPECT_EQ(opened.photo.facePointsRelativeToImageSize, portrait().facePointsRelativeToImageSize);
    EXPECT_EQ(opened.photo.regions.rect_Lips, portrait().regions.rect_Lips) << "lips where the lips are";
    EXPECT_EQ(opened.photo.images.image_Lips_Black_White, portrait().images.image_Lips_Black_White);
}

TEST(OpenAndAnalyse, RunningOutOfMemoryOrALibraryFailureIsARefusalNamingTheFile)
{
    const OpenResult noMemory = guardedOpen("/photos/big.jpg", []() -> OpenResult { throw std::bad_alloc(); });
    EXPECT_EQ(noMemory.outcome, OpenResult::Failed);
    EXPECT_EQ(noMemory.message, "There is not enough memory to open \"big.jpg\".");
    EXPECT_TRUE(noMemory.photo.isEmpty());

    const OpenResult failed = guardedOpen("/photos/odd.tif", []() -> OpenResult {
        throw cv::Exception(cv::Error::StsNoMem, "Failed to allocate", "resize", "resize.cpp", 1);
    });
    EXPECT_EQ(failed.outcome, OpenResult::Failed);
    EXPECT_TRUE(failed.message.startsWith("The picture \"odd.tif\" could not be analysed")) << failed.message.toStdString();
}
