#include "FaceSkin.h"
#include "FaceFixtures.h"
#include "OpenedPhoto.h"

#include <gtest/gtest.h>

#include <opencv2/core.hpp>

#include <new>

namespace {

// The portrait opened once for every test here.
} // namespace

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

// The face's skin keeps the features out, with a margin: brows, eyes,
// nostrils, lips and mouth; the cheeks are in.
TEST(FaceSkin, KeepsBrowsEyesNostrilsAndLipsOutOfTheSkin)
{
    const OpenResult opened = openAndAnalyse(testDataPath("portrait.png"));
    ASSERT_EQ(opened.outcome, OpenResult::Opened);
    const FaceSkin skin = FaceSkin::of(opened.photo, 400);
    const FaceLandmarks& p = opened.photo.facePointsRelativeToImageSize;
    EXPECT_TRUE(skin.allows((p[2] + p[31]) / 2) && skin.allows((p[14] + p[35]) / 2)) << "the cheeks";
    for (int i : {19, 24, 31, 33, 35, 37, 44, 48, 51, 54, 57, 62})
        EXPECT_FALSE(skin.allows(p[i])) << "landmark " << i;
}
