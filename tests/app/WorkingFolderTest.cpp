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

TEST(WorkingFolder, AnythingAlreadyThereCountsAsPresent)
{
    QTemporaryDir documents;
    const QString asFolder = documents.filePath("folder");
    QDir().mkpath(asFolder);
    QFile plainFile(documents.filePath("file"));
    ASSERT_TRUE(plainFile.open(QIODevice::WriteOnly));
    plainFile.write("not a folder");
    plainFile.close();

    EXPECT_TRUE(ensureWorkingFolder(asFolder));
    EXPECT_TRUE(ensureWorkingFolder(plainFile.fileName()));
    EXPECT_TRUE(QFileInfo(plainFile.fileName()).isFile()) << "left as it was";
}
