#include "MainWindow.h"

#include "ui_MainWindow.h"

#include <QActionGroup>
#include <QLabel>
#include <QToolButton>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
    , ui_(std::make_unique<Ui::MainWindow>())
{
    ui_->setupUi(this);
    setAcceptDrops(true);
    ui_->actionOpen->setShortcut(QKeySequence::Open);
    ui_->actionSave->setShortcut(QKeySequence::Save);
    ui_->menuItemQuit->setShortcut(QKeySequence::Quit);
    ui_->menuItemHelp->setShortcut(QKeySequence::HelpContents);
    setViewShortcuts();
    statusLine_ = new QLabel(this);
    statusLine_->setObjectName("statusLine");
    ui_->statusBar->addWidget(statusLine_, 1);

    // The four category items show which category the action table lists.
    auto* categories = new QActionGroup(this);
    categories->addAction(ui_->toolbarItemFace);
    categories->addAction(ui_->toolbarItemEye);
    categories->addAction(ui_->toolbarItemMouth);
    categories->addAction(ui_->toolbarItemAdvanced);
}

MainWindow::~MainWindow() = default;

// The zoom keys work from the panels too, as a tool window is part of the
// main window for the user. Ctrl+= is Ctrl++ without Shift on most layouts.
// Shift+\ is a held-key rule of the preview, only shown in the menu.
void MainWindow::setViewShortcuts()
{
    const auto keys = [](QAction* action, const QList<QKeySequence>& sequences) {
        action->setShortcuts(sequences);
        action->setShortcutContext(Qt::ApplicationShortcut);
    };
    keys(ui_->actionZoomFit, {QKeySequence(Qt::CTRL | Qt::Key_0)});
    keys(ui_->actionZoomActualPixels, {QKeySequence(Qt::CTRL | Qt::Key_1)});
    keys(ui_->actionZoomIn, {QKeySequence::ZoomIn, QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    keys(ui_->actionZoomOut, {QKeySequence::ZoomOut});
    ui_->actionSplitView->setText(ui_->actionSplitView->text() + "\tShift+\\");
}

QToolButton* MainWindow::compareButton() const
{
    return qobject_cast<QToolButton*>(ui_->toolBar->widgetForAction(ui_->actionCompare));
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    emit windowWillClose();
    event->accept();
}

namespace {

QString firstLocalFile(const QMimeData* data)
{
    for (const QUrl& url : data->urls())
        if (url.isLocalFile())
            return url.toLocalFile();
    return {};
}

} // namespace

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!firstLocalFile(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const QString path = firstLocalFile(event->mimeData());
    if (path.isEmpty())
        return;
    event->acceptProposedAction();
    emit photoDropped(path);
}

// The docked panels give way before the photo gets less than a third of
// the window's width: they become tabs or narrower, never the photo a strip.
void MainWindow::resizeEvent(QResizeEvent* event)
{
    ui_->viewPreview->setMinimumWidth((width() + 2) / 3);
    QMainWindow::resizeEvent(event);
}
