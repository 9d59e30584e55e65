#include "Window_Share.h"

#include "LocalisedLabels.h"
#include "ui_Window_Share.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

Window_Share::Window_Share(const LocalisedLabels& labels, std::function<QString()> picture,
                           std::function<void()> close, QWidget* parent)
    : QDialog(parent, Qt::Sheet)
    , picture_(std::move(picture))
    , close_(std::move(close))
    , ui_(std::make_unique<Ui::Window_Share>())
{
    ui_->setupUi(this);
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    ui_->btnShare->setText(labels.s_IDD_SHARE);
    ui_->btnClose->setText(labels.s_IDD_CLOSE);
    connect(ui_->btnShare, &QPushButton::clicked, this, &Window_Share::OnShare);
    connect(ui_->btnClose, &QPushButton::clicked, this, &Window_Share::OnClose);
    connect(ui_->checkAddText, &QCheckBox::toggled, this, &Window_Share::OnChangeAddText);
}

Window_Share::~Window_Share() = default;

QMenu* Window_Share::shareMenu(const QString& path)
{
    auto* menu = new QMenu(this);
    const auto offer = [&](const QString& service, std::function<void()> share) {
        connect(menu->addAction(service), &QAction::triggered, this, [service, share] {
            qInfo("Picked this service: %s", qPrintable(service));
            share();
        });
    };
    offer("Copy to Clipboard", [path] { QGuiApplication::clipboard()->setImage(QImage(path)); });
    offer("Open in Image Viewer", [path] { QDesktopServices::openUrl(QUrl::fromLocalFile(path)); });
    offer("Show in File Manager",
          [path] { QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absolutePath())); });
    if (!QStandardPaths::findExecutable("xdg-email").isEmpty())
        offer("Attach to E-mail", [path] { QProcess::startDetached("xdg-email", {"--attach", path}); });
    return menu;
}

void Window_Share::OnShare()
{
    QMenu* menu = shareMenu(picture_());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // Above the button.
    menu->popup(ui_->btnShare->mapToGlobal(QPoint(0, -menu->sizeHint().height())));
}

void Window_Share::OnChangeAddText(bool on)
{
    ui_->textText->setEnabled(on); // the text is not shared; the field only turns on and off
}

void Window_Share::OnClose()
{
    close_();
}
