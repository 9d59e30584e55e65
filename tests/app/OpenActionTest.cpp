#include "AppDelegate.h"
#include "EnglishLabels.h"
#include "MainWindow.h"
#include "View_Picture.h"

#include <QCheckBox>
#include <QPainter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class OpenActionTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        installEnglishLabelsOnce();
        delegate = std::make_unique<AppDelegate>(documents.path());
        delegate->showAlert = [this](const Alert& alert) {
            alerts.push_back(alert);
            return 0;
        };
        delegate->endProcess = [](int) {};
        delegate->chooseFileToOpen = [this](const QString& startFolder) {
            startFolders.append(startFolder);
            return nextChoice;
        };
        ASSERT_TRUE(delegate->applicationDidFinishLaunching());
    }

    void open(const QString& path)
    {
        nextChoice = path;
        delegate->OnToolbarOpen();
    }

    QString portraitPath() const { return QString(BELLAVENOR_TEST_DATA) + "/portrait.png"; }

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

    QTemporaryDir documents, files;
    std::unique_ptr<AppDelegate> delegate;
    std::vector<Alert> alerts;
    QStringList startFolders;
    QString nextChoice;
};

} // namespace

TEST_F(OpenActionTest, OpensThePortraitEndToEnd)
{
    open(portraitPath());

    ASSERT_TRUE(alerts.empty()) << alerts[0].informativeText.toStdString();
    EXPECT_TRUE(delegate->b_Image_Loaded_OK);
    EXPECT_EQ(delegate->photo.img_Basic.size(), QSize(512, 512));
    EXPECT_EQ(delegate->photo.facePointsRelativeToImageSize.size(), 68);
    EXPECT_FALSE(delegate->photo.images.image_Face_Full_Picture.isNull());

    delegate->window()->resize(1000, 700);
    const QImage shown = delegate->viewPreview()->grab().toImage();
    const QRectF drawn = delegate->viewPreview()->rectDrawCamera();
    EXPECT_FALSE(drawn.isEmpty());
    EXPECT_NE(shown.pixelColor(drawn.center().toPoint()), QColor(Qt::black)) << "the photo is shown";
}

TEST_F(OpenActionTest, RefusedPhotosLeaveTheOpenPhotoAndItsStateAsTheyWere)
{
    open(portraitPath());
    delegate->state.b_Color_Lips = true;
    delegate->state.f_Color_Lips_Transparency = 0.55f;
    const EditingState before = delegate->state;
    const FaceLandmarks landmarks = delegate->photo.facePointsRelativeToImageSize;
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
    EXPECT_TRUE(delegate->b_Image_Loaded_OK);
    EXPECT_EQ(delegate->photo.path, portraitPath());
    EXPECT_EQ(delegate->photo.facePointsRelativeToImageSize, landmarks);
    EXPECT_TRUE(delegate->state == before) << "a refused photo switches nothing off";
}

TEST_F(OpenActionTest, SecondGoodPhotoSwitchesEffectsOffAndKeepsTheSettings)
{
    open(portraitPath());
    delegate->state.b_Color_Eyes = true;
    delegate->state.color_Color_Eyes = {0.2f, 0.7f, 0.1f, 1};
    QWidget panel;
    auto* apply = new QCheckBox(&panel);
    apply->setObjectName("checkApply");
    apply->setChecked(true);
    delegate->window_Eyes_Color = &panel;

    const QImage mirrored = QImage(portraitPath()).mirrored(true, false);
    open(writePicture("mirrored.png", mirrored));

    EXPECT_TRUE(alerts.empty());
    EXPECT_TRUE(delegate->photo.path.endsWith("mirrored.png"));
    EXPECT_FALSE(delegate->state.b_Color_Eyes);
    EXPECT_FALSE(apply->isChecked());
    EXPECT_EQ(delegate->state.color_Color_Eyes, (RgbaColor{0.2f, 0.7f, 0.1f, 1}));
}

TEST_F(OpenActionTest, CancelChangesNothingAndTheDialogStartsWhereTheLastPhotoWas)
{
    open(QString());
    EXPECT_FALSE(delegate->b_Image_Loaded_OK);
    EXPECT_TRUE(alerts.empty());

    open(portraitPath());
    open(QString());
    EXPECT_EQ(startFolders.last(), QString(BELLAVENOR_TEST_DATA));
    EXPECT_TRUE(delegate->b_Image_Loaded_OK);
}
