#include "Picture.h"

#include <QApplication>

#include <opencv2/core/utility.hpp>

#include <gtest/gtest.h>

// Widgets run on Qt's offscreen platform unless a test run asks for another.
int main(int argc, char** argv)
{
    keepMemoryOfFreedPictures();
#if defined(__SANITIZE_THREAD__)
    // OpenCV's thread pool (TBB) is built without ThreadSanitizer, which
    // cannot see it join: its loops run on the calling thread here, and
    // the program's own threads are what is checked.
    cv::setNumThreads(1);
#endif
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
