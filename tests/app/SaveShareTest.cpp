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
        app->dialogs.chooseSavePath = [this](const QString& suggested) {
            suggestions << suggested;
            return nextSavePath;
        };
    }

    void openPortrait()
    {
        open(portraitPath());
        ASSERT_TRUE(app->b_Image_Loaded_OK());
    }

    QStringList workingFolderFiles() const { return QDir(app->saveAndShare().s_Output_Folder).entryList(QDir::Files); }

    QTemporaryDir chosenFolder;
    QStringList suggestions;
    QString nextSavePath;
};

} // namespace

// The dated PNG goes where the user chooses, as the format the name asks.
TEST_F(SaveShareTest, SaveRendersTheDatedPictureAndPutsItWhereTheUserChoosesInTheFormatAsked)
{
    openPortrait();
    for (const auto& [name, firstBytes] :
         {std::pair{"mine.png", QByteArray("\x89PNG")}, {"mine.jpg", "\xff\xd8\xff"}, {"mine.webp", "RIFF"}}) {
        nextSavePath = chosenFolder.filePath(name);
        suggestions.clear();
        alerts.clear();
        app->OnToolbarSave();
        ASSERT_TRUE(QTest::qWaitFor([&] { return !suggestions.isEmpty(); }, 5000));

        EXPECT_TRUE(QFileInfo(suggestions[0]).fileName().contains(QRegularExpression(R"(^\d{4}(-\d\d){5}\.png$)")))
            << suggestions[0].toStdString();
        QFile saved(nextSavePath);
        ASSERT_TRUE(saved.open(QIODevice::ReadOnly)) << name;
        EXPECT_TRUE(saved.read(4).startsWith(firstBytes)) << name;
        EXPECT_EQ(QImage(nextSavePath).size(), QSize(512, 512));
        EXPECT_TRUE(workingFolderFiles().isEmpty()) << "moved, not copied: " << name;
        ASSERT_EQ(alerts.size(), 1u);
        EXPECT_EQ(alerts[0].message, "Success");
        EXPECT_EQ(alerts[0].informativeText, "Image file saved successfully.");
        EXPECT_EQ(alerts[0].buttons, (QStringList{"View Image File", "Close"}));
    }
}

// A render that failed (its folder replaced by a file) is said instead of
// a save dialog; a move that failed names both places and keeps the picture.
TEST_F(SaveShareTest, ARenderOrAMoveThatFailedIsReportedNamingWhere)
{
    openPortrait();
    const QString folder = QDir::cleanPath(app->saveAndShare().s_Output_Folder);
    nextSavePath = chosenFolder.filePath("no-such-folder/mine.png");
    app->OnToolbarSave();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !alerts.empty(); }, 5000));
    EXPECT_EQ(alerts[0].message, "Error");
    EXPECT_TRUE(alerts[0].informativeText.contains(nextSavePath)) << alerts[0].informativeText.toStdString();
    EXPECT_TRUE(alerts[0].informativeText.contains(app->saveAndShare().s_Saved_Take_Picture));
    EXPECT_EQ(workingFolderFiles().size(), 1);

    ASSERT_TRUE(QDir(folder).removeRecursively());
    QFile blocker(folder);
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    suggestions.clear();
    app->OnToolbarSave();
    ASSERT_TRUE(QTest::qWaitFor([&] { return alerts.size() == 2; }, 5000));
    EXPECT_TRUE(alerts[1].message == "Error" && alerts[1].informativeText.contains(folder))
        << alerts[1].informativeText.toStdString();
    EXPECT_EQ(alerts[1].buttons, QStringList{"Close"});
    EXPECT_TRUE(suggestions.isEmpty()) << "no dialog for a picture that is not there";
}

TEST_F(SaveShareTest, DialogOfALeftoverSaveTimerCannotCostAFile)
{
    openPortrait();
    const QString kept = chosenFolder.filePath("kept.png");
    QFile old(kept);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("the user's other picture");
    old.close();
    QStringList answers{chosenFolder.filePath("mine.png"), kept};
    app->dialogs.chooseSavePath = [&](const QString&) { return answers.isEmpty() ? QString() : answers.takeFirst(); };

    app->OnToolbarSave();
    app->OnToolbarSave(); // the first timer is left running, as it always was
    ASSERT_TRUE(QTest::qWaitFor([&] { return alerts.size() >= 2; }, 8000));

    EXPECT_EQ(alerts[0].message, "Success");
    EXPECT_EQ(alerts[1].message, "Error") << "the picture was moved already";
    QFile check(kept);
    ASSERT_TRUE(check.open(QIODevice::ReadOnly));
    EXPECT_EQ(check.readAll(), "the user's other picture");
}
