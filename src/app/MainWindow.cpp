#include "MainWindow.h"

#include "ui_MainWindow.h"

#include <QActionGroup>
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

    // The four category items show which category the action table lists.
    auto* categories = new QActionGroup(this);
    categories->addAction(ui_->toolbarItemFace);
    categories->addAction(ui_->toolbarItemEye);
    categories->addAction(ui_->toolbarItemMouth);
    categories->addAction(ui_->toolbarItemAdvanced);
}

MainWindow::~MainWindow() = default;

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
