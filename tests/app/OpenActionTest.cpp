#include "StartedDelegate.h"
#include "FileActions.h"
#include "MainWindow.h"
#include "View_Picture.h"

#include <QCheckBox>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class OpenActionTest : public StartedDelegateTest {
protected:
    void SetUp() override
    {
        StartedDelegateTest::SetUp();
        app->dialogs.chooseFileToOpen = [this](const QString& startFolder) {
            startFolders.append(startFolder);
            return nextChoice;
        };
    }

    void open(const QString& path)
    {
        nextChoice = path;
        app->OnToolbarOpen();
    }

    QString writePicture(const QString& name, const QImage& picture)
    {
        const QString path = files.filePath(name);
        EXPECT_TRUE(picture.save(path));
        return path;
    }

    QString twoFacesPath()
    {
        const QImage one(portraitPath());
        QImage both(one.width() * 2, one.height(), QImage::Format_RGB32);
        QPainter painter(&both);
        painter.drawImage(0, 0, one);
        painter.drawImage(one.width(), 0, one);
        painter.end();
        return writePicture("two-faces.png", both);
    }

    QTemporaryDir files;
    QStringList startFolders;
    QString nextChoice;
};

} // namespace

TEST_F(OpenActionTest, RefusedPhotosLeaveTheOpenPhotoAndItsStateAsTheyWere)
{
    open(portraitPath());
    app->document().state.b_Color_Lips = true;
    app->document().state.f_Color_Lips_Transparency = 0.55f;
    const EditingState before = app->document().state;
    const FaceLandmarks landmarks = app->document().photo()->facePointsRelativeToImageSize;
    QImage wall(300, 200, QImage::Format_RGB32);
    wall.fill(Qt::gray);
    const QString corrupt = files.filePath("corrupt.png");
    QFile file(corrupt);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("\x89PNG\r\n\x1a\n", 8) + QByteArray(100, 'x'));
    file.close();

    open(twoFacesPath());
    open(writePicture("wall.png", wall));
    open(corrupt);

    ASSERT_EQ(alerts.size(), 3u);
    EXPECT_EQ(alerts[0].informativeText, "More than one face was found on the picture.");
    EXPECT_EQ(alerts[1].informativeText, "No face was found on the picture.");
    EXPECT_TRUE(alerts[2].informativeText.contains("corrupt.png"));
    for (const Alert& alert : alerts) {
        EXPECT_EQ(alert.message, "Error");
        EXPECT_EQ(alert.buttons, QStringList{"Close"});
    }
    EXPECT_TRUE(app->b_Image_Loaded_OK());
    EXPECT_EQ(app->document().photo()->path, portraitPath());
    EXPECT_EQ(app->document().photo()->facePointsRelativeToImageSize, landmarks);
    EXPECT_TRUE(app->document().state == before) << "a refused photo switches nothing off";
}

TEST_F(OpenActionTest, PhotoGivenAtStartOrDroppedOpensThroughTheSameAction)
{
    app->files().openGivenAtStart({"--some-option", portraitPath()});
    EXPECT_FALSE(app->b_Image_Loaded_OK()) << "once the window is up, not before";
    ASSERT_TRUE(QTest::qWaitFor([&] { return app->b_Image_Loaded_OK(); }, 5000));
    EXPECT_EQ(app->document().photo()->path, portraitPath());

    const QString twoFaces = twoFacesPath();
    QMimeData dropped;
    dropped.setUrls({QUrl::fromLocalFile(twoFaces)});
    QDragEnterEvent enter(QPoint(300, 200), Qt::CopyAction, &dropped, Qt::LeftButton, {});
    QCoreApplication::sendEvent(app->window(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(300, 200), Qt::CopyAction, &dropped, Qt::LeftButton, {});
    QCoreApplication::sendEvent(app->window(), &drop);

    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(alerts[0].informativeText, "More than one face was found on the picture.") << "the same refusal";
    EXPECT_EQ(app->document().photo()->path, portraitPath()) << "and the photo open before stays";
}
