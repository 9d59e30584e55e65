// Run alone, in a process of its own (face_tests_model_reading), so that
// nothing has read the model before.
#include "DLibWrapper.h"
#include "FaceFixtures.h"

#include <gtest/gtest.h>

#include <future>

// An open right after start-up and a batch's two workers ask for the model
// while it is being read: every one waits for that one read and gets the
// same landmarks.
TEST(LandmarkModel, IsReadOnceForAnalysesThatStartWhileItIsBeingRead)
{
    ASSERT_EQ(DLibWrapper::modelReads(), 0) << "run this test in a process of its own";
    const QImage photo = portraitPicture();
    DLibWrapper::startReadingModel();
    std::vector<std::future<DetectionResult>> analyses;
    for (int k = 0; k < 3; ++k)
        analyses.push_back(std::async(std::launch::async, [&] { return DLibWrapper::Detect_Facial_Points(photo); }));
    std::vector<DetectionResult> results;
    for (auto& analysis : analyses)
        results.push_back(analysis.get());
    for (const DetectionResult& result : results) {
        ASSERT_TRUE(result.ok()) << result.error.toStdString();
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.landmarks.size(), kLandmarkCount);
        EXPECT_EQ(result.landmarks, results.front().landmarks);
    }
    DLibWrapper::finishReadingModel();
    EXPECT_EQ(DLibWrapper::modelReads(), 1);
}
