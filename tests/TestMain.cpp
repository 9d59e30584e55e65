#include "Picture.h"

#include <QApplication>

#include <gtest/gtest.h>

// Widgets run on Qt's offscreen platform unless a test run asks for another.
int main(int argc, char** argv)
{
    keepMemoryOfFreedPictures();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
