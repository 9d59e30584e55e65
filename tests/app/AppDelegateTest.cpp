#include "StartedDelegate.h"
#include "HelpBrowser.h"

#include <QMenuBar>
#include <QTest>
#include "MainWindow.h"
#include "Window_Lips_Color.h"
#include "ui_Window_Lips_Color.h"
#include "ui_MainWindow.h"

#include <QApplication>
#include <QMessageBox>
#include <QTextBrowser>
#include <QTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTranslator>

#include <gtest/gtest.h>

namespace {

class AppDelegateTest : public DelegateTest {
protected:
    std::unique_ptr<AppDelegate> startedDelegate()
    {
        auto delegate = made(documents.path());
        EXPECT_TRUE(delegate->applicationDidFinishLaunching());
        return delegate;
    }
};

QStringList visibleTexts(const MainWindow& window)
{
    QStringList texts{window.windowTitle()};
    for (const QAction* action : window.findChildren<QAction*>())
        texts << action->text();
    for (const QMenu* menu : window.findChildren<QMenu*>())
        texts << menu->title().remove('&');
    return texts;
}

} // namespace

TEST_F(AppDelegateTest, StartUpShowsTheWindowFullyLabelled)
{
    const auto delegate = startedDelegate();
    const MainWindow& window = *delegate->window();

    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.windowTitle(), "Bellavenor");
    for (const QString& text : visibleTexts(window))
        EXPECT_FALSE(text.contains("IDD_")) << text.toStdString();
    EXPECT_EQ(window.ui().toolbarItemShare->text(), delegate->labels.s_IDD_SHARE);
    EXPECT_EQ(window.ui().actionOpen->shortcut(), QKeySequence(QKeySequence::Open));
    EXPECT_EQ(window.ui().actionSave->shortcut(), QKeySequence(QKeySequence::Save));
    EXPECT_EQ(window.ui().menuItemQuit->shortcut(), QKeySequence(QKeySequence::Quit));
    EXPECT_EQ(window.ui().menuItemAbout->text(), "About Bellavenor") << "the label first";
    EXPECT_EQ(window.ui().menuItemHelp->text(), "Bellavenor Help") << "the name first";
    EXPECT_TRUE(window.ui().toolbarItemFace->isChecked());
    QString mnemonics;
    for (const QAction* menu : window.menuBar()->actions()) {
        const qsizetype at = menu->text().indexOf('&');
        ASSERT_GE(at, 0) << menu->text().toStdString() << " opens with Alt and a letter";
        EXPECT_FALSE(mnemonics.contains(menu->text()[at + 1].toLower())) << menu->text().toStdString();
        mnemonics += menu->text()[at + 1].toLower();
    }
    EXPECT_EQ(delegate->tableActions()->horizontalHeaderItem(0)->text(), "Face");
    EXPECT_FALSE(delegate->image_Pick_Color.isNull()) << "the colour-picker cursor ships as a resource";
    EXPECT_TRUE(alerts.empty());
    delegate->window()->resize(600, 400);
    EXPECT_EQ(delegate->window()->size(), QSize(800, 500)) << "never smaller";
}

TEST_F(AppDelegateTest, WorkingFolderThatCannotBeMadeEndsStartUpAfterTheAlert)
{
    QFile blocker(documents.filePath("NotAFolder"));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    const auto delegate = made(blocker.fileName()); // Documents is a plain file

    EXPECT_FALSE(delegate->applicationDidFinishLaunching());

    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(alerts[0].message, "Error");
    EXPECT_EQ(alerts[0].informativeText, "Error #0008. Application will exit.");
    EXPECT_EQ(alerts[0].buttons, QStringList{"Close"});
    EXPECT_FALSE(delegate->window()->isVisible());
}

TEST(Alert, SuccessCarriesTheInformationIconAndErrorTheWarningOne)
{
    const auto iconOf = [](const Alert& alert) {
        QMessageBox::Icon shown = QMessageBox::NoIcon;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box)
                return;
            shown = box->icon();
            box->buttons().first()->click();
        });
        presentAlertModally(alert, nullptr);
        return shown;
    };
    EXPECT_EQ(iconOf({"Success", "Image file saved successfully.", {"View Image File", "Close"}}),
              QMessageBox::Information);
    EXPECT_EQ(iconOf({"Error", "No face was found on the picture.", {"Close"}}), QMessageBox::Warning);
}

// Help and the Help menu's shipped pages open in the program's own window,
// no browser needed; a link between pages is followed there; Escape and
// Ctrl+W close it.
TEST_F(AppDelegateTest, HelpShowsTheShippedGuideInItsOwnWindow)
{
    const auto delegate = startedDelegate();
    delegate->window()->ui().menuItemHelp->trigger();
    const QPointer<HelpBrowser> help = delegate->helpBrowser();
    ASSERT_FALSE(help.isNull());
    EXPECT_TRUE(help->isVisible());
    EXPECT_EQ(help->windowTitle(), "Bellavenor Help");
    EXPECT_TRUE(help->view()->toPlainText().contains("Choose a category on the toolbar"));
    emit help->view()->anchorClicked(QUrl("privacy.html"));
    EXPECT_EQ(help->view()->documentTitle(), "Privacy policy — Bellavenor");
    delegate->window()->ui().menuItemSubmitTicket->trigger();
    EXPECT_EQ(help->view()->documentTitle(), "Support — Bellavenor");
    for (const QKeySequence& keys : {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)}) {
        delegate->window()->ui().menuItemHelp->trigger();
        ASSERT_TRUE(QTest::qWaitForWindowActive(help));
        QTest::keySequence(help, keys);
        EXPECT_FALSE(help->isVisible()) << keys.toString().toStdString() << " closes the help";
    }
}
