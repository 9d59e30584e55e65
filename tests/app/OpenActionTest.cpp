#include "StartedDelegate.h"
#include "FileActions.h"
#include "FaceChooser.h"
#include "MainWindow.h"
#include "View_Picture.h"
#include "face/FaceFixtures.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QCheckBox>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QPainter>
#include <QTemporaryDir>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QUndoStack>

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

    QString twoFacesPath() { return writePicture("two-faces.png", twoPortraits()); }

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
    for (const Alert& alert : alerts)
        EXPECT_EQ(alert.message, "Error");
    EXPECT_EQ(alerts[0].buttons, QStringList({"Close", "Choose a Face…"}));
    EXPECT_EQ(alerts[1].buttons, QStringList({"Close", "Mark the Face…"}));
    EXPECT_EQ(alerts[2].buttons, QStringList{"Close"});
    EXPECT_TRUE(app->b_Image_Loaded_OK());
    EXPECT_EQ(app->document().photo()->path, portraitPath());
    EXPECT_EQ(app->document().photo()->facePointsRelativeToImageSize, landmarks);
    EXPECT_TRUE(app->document().state == before) << "a refused photo switches nothing off";
}

// The refusal's second button shows the faces: the one clicked opens as a
// single face would (effects off, a new history); the frame drawn on a photo
// without a face too, once its landmarks are confirmed; a cancelled choice
// leaves the open photo.
TEST_F(OpenActionTest, AFaceChosenOrMarkedOpensThePhotoWithThatFaceAndCancelKeepsTheOldOne)
{
    open(portraitPath());
    const FaceLandmarks portraitFace = app->document().photo()->facePointsRelativeToImageSize;
    std::vector<FaceChoice> shown;
    std::optional<FaceFrame> answer;
    app->dialogs.chooseFace = [&](const FaceChoice& choice) {
        shown.push_back(choice);
        return answer;
    };
    alertAnswer = 1;
    const QString twoFaces = twoFacesPath();
    open(twoFaces);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].facesSeen, int(shown[0].frames.size())); // the faces, and what the detector takes for one
    ASSERT_GE(shown[0].facesSeen, 2);
    EXPECT_FALSE(shown[0].markByHand);
    EXPECT_EQ(app->document().photo()->facePointsRelativeToImageSize, portraitFace) << "cancelled: nothing changed";

    app->document().state.b_Color_Lips = true;
    answer = shown[0].frames[1];
    open(twoFaces);
    ASSERT_EQ(app->document().photo()->path, twoFaces);
    const FaceLandmarks& chosen = app->document().photo()->facePointsRelativeToImageSize;
    const double shift = answer->box.center().x() > 512 ? 512 : 0;
    for (int i = 0; i < kLandmarkCount; ++i)
        EXPECT_NEAR(chosen[i].x(), portraitFace[i].x() + shift, 1) << "landmark " << i << " of that face";
    EXPECT_FALSE(app->document().state.b_Color_Lips);
    EXPECT_FALSE(app->document().history().stack().canUndo());

    QImage wall(300, 200, QImage::Format_RGB32);
    wall.fill(Qt::gray);
    answer = FaceFrame::drawn(QRect(100, 50, 90, 100));
    std::vector<qsizetype> confirmed; // the landmarks shown: draw again, then use them
    app->dialogs.confirmDrawnFace = [&](const OpenedPhoto& found) {
        confirmed.push_back(found.facePointsRelativeToImageSize.size());
        return confirmed.size() > 1;
    };
    const size_t asked = shown.size();
    const QString noFace = writePicture("wall.png", wall);
    open(noFace);
    EXPECT_TRUE(shown.back().markByHand);
    EXPECT_EQ(shown.size(), asked + 2) << "Draw again shows the photo again";
    EXPECT_EQ(confirmed, (std::vector<qsizetype>{kLandmarkCount, kLandmarkCount}));
    EXPECT_EQ(app->document().photo()->path, noFace);
    EXPECT_EQ(app->document().photo()->facePointsRelativeToImageSize.size(), kLandmarkCount);
}

// A new photo turns the effects off, and the effect list shows it at once.
TEST_F(OpenActionTest, TheEffectListUnticksWhatANewPhotoTurnsOff)
{
    open(portraitPath());
    app->OnToolbarMouth();
    QTableWidget* table = app->tableActions();
    ASSERT_TRUE(QTest::qWaitFor([&] { return table->rowCount() > 0 && table->cellWidget(0, 0); }, 2000));
    app->document().state.b_Color_Lips = true;
    app->document().changed(Change::of("b_Color_Lips"));
    const auto lipsTicked = [&] {
        for (int row = 0; row < table->rowCount(); ++row)
            if (auto* button = table->cellWidget(row, 0)->findChild<QPushButton*>(); button->text().contains("Lip"))
                return button->isChecked();
        return false;
    };
    EXPECT_TRUE(lipsTicked());
    open(portraitPath());
    EXPECT_FALSE(lipsTicked());
}

// "Every Face" opens the group with every face; the faces list unticks one
// as an undo step, the status line says how many are retouched.
TEST_F(OpenActionTest, EveryFaceOpensEveryFaceAndTheFacesListLeavesOneOut)
{
    app->dialogs.chooseFace = [](const FaceChoice&) { return ChosenFaces({}, true); };
    alertAnswer = 1;
    open(writePicture("heads.png", headsSideBySide({1.0, 1.3, 1.1}).picture));
    ASSERT_EQ(app->document().photo()->faceCount(), 3);
    auto* list = app->window()->findChild<QListWidget*>("facesList");
    ASSERT_TRUE(list && QTest::qWaitFor([&] { return list->isVisible(); }, 2000)) << "at the top of the panel column";
    ASSERT_EQ(list->count(), 3);
    const auto status = [&] { return app->window()->findChild<QLabel*>("statusLine")->text(); };
    EXPECT_TRUE(status().endsWith("3 faces")) << status().toStdString();
    list->item(1)->setCheckState(Qt::Unchecked);
    EXPECT_EQ(app->document().photoEdits.facesLeftOut, QList<int>{1});
    EXPECT_TRUE(status().endsWith("2 of 3 faces")) << status().toStdString();
    const PhotoEdits fromFile = PhotoEdits::of(app->document().photo()->regions); // a file keeps the first face's
    app->document().replaceSettings(app->document().state, "a settings file", &fromFile);
    EXPECT_EQ(app->document().photoEdits.otherFaceShapes.size(), 2u) << "the other faces keep their areas";
    app->document().history().stack().undo();
    app->document().history().stack().undo();
    EXPECT_TRUE(app->document().photoEdits.facesLeftOut.isEmpty());
    EXPECT_EQ(list->item(1)->checkState(), Qt::Checked);
    open(portraitPath());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !list->isVisible(); }, 2000)) << "one face: no list";
}

// While the photo is analysed the window keeps handling its events (it
// paints), says so and shows the busy cursor.
TEST_F(OpenActionTest, PhotoGivenAtStartOrDroppedOpensThroughTheSameAction)
{
    app->files().openGivenAtStart({"--some-option", portraitPath()});
    EXPECT_FALSE(app->b_Image_Loaded_OK()) << "once the window is up, not before";
    QString said;
    QTimer::singleShot(0, [&] {
        const QCursor* busy = QGuiApplication::overrideCursor();
        said = app->window()->statusBar()->currentMessage() + (busy && busy->shape() == Qt::BusyCursor ? " busy" : "");
    });
    ASSERT_TRUE(QTest::qWaitFor([&] { return app->b_Image_Loaded_OK(); }, 5000));
    EXPECT_EQ(said, "Finding the face… busy");
    EXPECT_TRUE(app->window()->statusBar()->currentMessage().isEmpty() && !QGuiApplication::overrideCursor());
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

// In the chooser a click inside a frame takes it (the smaller of two
// overlapping frames), a drag draws a frame on the photo's pixels when
// marking by hand, Every Face takes them all, and Escape takes nothing.
TEST(FaceChooserTest, AClickTakesTheFrameUnderItADragDrawsOneAndEscapeNone)
{
    QImage photo(400, 200, QImage::Format_RGB32);
    photo.fill(Qt::darkGray);
    const std::vector<FaceFrame> frames{FaceFrame::drawn({20, 20, 160, 160}), FaceFrame::drawn({250, 40, 100, 100}),
                                        FaceFrame::drawn({60, 60, 40, 40})};
    const auto run = [&](bool markByHand, const std::function<void(QWidget&, std::function<QPoint(QPointF)>)>& act) {
        FaceChooser chooser({photo, frames, markByHand, 3}, nullptr);
        chooser.resize(820, 500);
        chooser.show();
        QWidget& view = *chooser.findChild<QWidget*>("frames");
        const double scale = std::min(view.width() / 400.0, view.height() / 200.0); // the photo fitted, centred
        act(view, [&](QPointF pixel) {
            return QPoint(int((view.width() - 400 * scale) / 2 + pixel.x() * scale), int((view.height() - 200 * scale) / 2 + pixel.y() * scale));
        });
        return chooser.chosen();
    };
    const auto clickAt = [&](QPointF pixel) {
        return run(false, [&](QWidget& view, auto at) { QTest::mouseClick(&view, Qt::LeftButton, {}, at(pixel)); });
    };
    for (const auto& [pixel, taken] : {std::pair{QPointF(300, 90), 1}, {QPointF(30, 150), 0}, {QPointF(80, 80), 2}})
        EXPECT_EQ(clickAt(pixel).frame->box, frames[size_t(taken)].box) << "the smallest frame under the pointer";
    EXPECT_FALSE(clickAt({220, 190})) << "outside every frame";
    const ChosenFaces every = run(false, [](QWidget& view, auto) {
        QTest::mouseClick(view.window()->findChild<QPushButton*>("everyFace"), Qt::LeftButton);
    });
    EXPECT_TRUE(every.every && !every.frame) << "Every Face";
    const std::optional<FaceFrame> drawn = run(true, [](QWidget& view, auto at) {
        QTest::mousePress(&view, Qt::LeftButton, {}, at({200, 30}));
        QTest::mouseMove(&view, at({240, 100}));
        QTest::mouseRelease(&view, Qt::LeftButton, {}, at({240, 100}));
    }).frame;
    ASSERT_TRUE(drawn.has_value());
    EXPECT_LE((drawn->box.topLeft() - QPoint(200, 30)).manhattanLength(), 2);
    EXPECT_LE((QPoint(drawn->box.width(), drawn->box.height()) - QPoint(40, 70)).manhattanLength(), 3);
    EXPECT_FALSE(run(true, [](QWidget& view, auto) { QTest::keyClick(view.window(), Qt::Key_Escape); }));
}
