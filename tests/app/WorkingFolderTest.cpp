#include "WorkingFolder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(WorkingFolder, IsBellavenroInsideDocuments)
{
    EXPECT_EQ(workingFolderPath("/home/ann/Documents"), "/home/ann/Documents/Bellavenro");
    EXPECT_EQ(workingFolderPath("/home/ann/Documents/"), "/home/ann/Documents/Bellavenro");
}
