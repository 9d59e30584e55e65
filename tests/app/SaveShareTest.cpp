#include "StartedDelegate.h"
#include "MainWindow.h"
#include "View_Picture.h"
#include "Window_Share.h"
#include "ui_Window_Share.h"

#include <QDir>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class SaveShareTest : public StartedDelegateTest {
protected:
    void SetUp() override
    {
        StartedDelegateTest::SetUp();
        alertAnswer = 1; // "Close"
        app->chooseSavePath = [this](const QString& suggested) {
            suggestions << suggested;
            return nextSavePath;
        };
    }

    void openPortrait()
    {
        open(portraitPath());
        ASSERT_TRUE(app->b_Image_Loaded_OK);
    }

    QStringList workingFolderFiles() const { return QDir(app->saveRequest.s_Output_Folder).entryList(QDir::Files); }

    QTemporaryDir chosenFolder;
    QStringList suggestions;
    QString nextSavePath;
};

} // namespace

TEST_F(SaveShareTest, WithoutAPhotoNeitherSaveNorShareStarts)
{
    app->OnToolbarSave();
    app->OnToolbarShare();
    EXPECT_TRUE(app->timer_Save_Picture.isNull());
    EXPECT_TRUE(app->timer_Share_Picture.isNull());
    EXPECT_FALSE(app->saveRequest.b_Save_Picture);
}

TEST_F(SaveShareTest, SaveRendersTheDatedPictureAndMovesItWhereTheUserChooses)
{
    openPortrait();
    nextSavePath = chosenFolder.filePath("mine.png");

    app->OnToolbarSave();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !suggestions.isEmpty(); }, 5000));

    EXPECT_TRUE(QFileInfo(suggestions[0]).fileName().contains(QRegularExpression(R"(^\d{4}(-\d\d){5}\.png$)")))
        << suggestions[0].toStdString();
    EXPECT_EQ(QImage(nextSavePath).size(), QSize(512, 512));
    EXPECT_TRUE(workingFolderFiles().isEmpty()) << "moved, not copied";
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(alerts[0].message, "Success");
    EXPECT_EQ(alerts[0].informativeText, "Image file saved successfully.");
    EXPECT_EQ(alerts[0].buttons, (QStringList{"View Image File", "Close"}));
}

TEST_F(SaveShareTest, CancelledSaveLeavesThePictureInTheWorkingFolder)
{
    openPortrait();
    nextSavePath.clear();
    app->OnToolbarSave();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !suggestions.isEmpty(); }, 5000));
    EXPECT_EQ(workingFolderFiles().size(), 1);
    EXPECT_TRUE(alerts.empty());
}

TEST_F(SaveShareTest, ShareShowsTheSheetWithItsTargetsAndCloseEndsIt)
{
    openPortrait();
    app->OnToolbarShare();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !app->windowShare.isNull(); }, 5000));
    auto* sheet = qobject_cast<Window_Share*>(app->windowShare.data());
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->ui().btnShare->text(), "Share");
    EXPECT_FALSE(sheet->ui().textText->isEnabled());
    sheet->ui().checkAddText->click();
    EXPECT_TRUE(sheet->ui().textText->isEnabled());
    QStringList targets;
    for (QAction* action : sheet->shareMenu(app->saveRequest.s_Saved_Take_Picture)->actions())
        targets << action->text();
    EXPECT_TRUE(targets.contains("Copy to Clipboard"));
    EXPECT_TRUE(QFile::exists(app->saveRequest.s_Saved_Take_Picture));

    sheet->ui().btnClose->click();
    EXPECT_TRUE(app->windowShare.isNull());
}
