#include "FaceFixtures.h"
#include "TestPortrait.h"
#include "ImageSpace.h"
#include "OpenedPhoto.h"
#include "TiffPages.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <opencv2/core.hpp>

#include <new>

namespace {

// The portrait opened once for every test here.
} // namespace

TEST(OpenAndAnalyse, CarriesThePercentFormsAndRefusesWithTheUsersMessages)
{
    const OpenedPhoto& photo = portrait();
    ASSERT_EQ(photo.facePointsRelativeToImageSize[8], QPointF(221, 178)) << "the chin";
    EXPECT_EQ(photo.facePointsInPercentRelativeToImage[8], QPointF(43.1640625, 65.234375)) << "y from the bottom";

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
