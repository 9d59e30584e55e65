#include "DLibWrapper.h"
#include "FaceFixtures.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

double meanY(const FaceLandmarks& p, int first, int last)
{
    double sum = 0;
    for (int i = first; i <= last; ++i)
        sum += p[i].y();
    return sum / (last - first + 1);
}

} // namespace

TEST(DLibWrapper, FindsTheOneFaceOfThePortraitWithItsLandmarks)
{
    const DetectionResult result = DLibWrapper::Detect_Facial_Points(portraitPicture());

    ASSERT_TRUE(result.ok()) << result.error.toStdString();
    ASSERT_EQ(result.code, 0);
    const FaceLandmarks& p = result.landmarks;
    ASSERT_EQ(p.size(), 68);
    // Top-left origin, y down: eyes above the nose tip above the mouth.
    EXPECT_LT(meanY(p, 36, 47), p[30].y());
    EXPECT_LT(p[30].y(), meanY(p, 48, 59));
    EXPECT_LT(p[36].x(), p[45].x()) << "image-left eye first";
    EXPECT_LT(p[0].x(), p[36].x()) << "the jaw goes round the eyes";
    EXPECT_GT(p[16].x(), p[45].x());
    EXPECT_GT(p[8].y(), meanY(p, 48, 59)) << "the chin is below the mouth";
}

TEST(DLibWrapper, FaceTooSmallForTheDetectorIsNotLookedForByEnlarging)
{
    const QImage tiny = portraitPicture().scaled(96, 96, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const DetectionResult result = DLibWrapper::Detect_Facial_Points(tiny);
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.code, 1);
}
