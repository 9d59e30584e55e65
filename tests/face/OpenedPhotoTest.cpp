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
