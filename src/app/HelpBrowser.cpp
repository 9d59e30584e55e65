#include "HelpBrowser.h"

#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QShortcut>
#include <QPushButton>
#include <QHBoxLayout>
#include <QTextBrowser>
#include <QVBoxLayout>

HelpBrowser::HelpBrowser(QWidget* parent)
    : QWidget(parent, Qt::Window)
    , view_(new QTextBrowser(this))
{
    setObjectName("helpBrowser");
    setWindowTitle(tr("Bellavenor Help"));
    resize(760, 640);
    view_->setOpenLinks(false); // local pages here, web addresses in the browser
    connect(view_, &QTextBrowser::anchorClicked, this, &HelpBrowser::open);
    connect(view_, &QTextBrowser::sourceChanged, this, [this] { setWindowTitle(view_->documentTitle()); });
    auto* back = new QPushButton(tr("Back"), this);
    back->setEnabled(false);
    connect(back, &QPushButton::clicked, view_, &QTextBrowser::backward);
    connect(view_, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(back);
    buttons->addStretch();
    // Closed as a help window is: its Close button, Escape or Ctrl+W.
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(close, &QDialogButtonBox::rejected, this, &QWidget::close);
    QList<QKeySequence> closing = QKeySequence::keyBindings(QKeySequence::Close);
    for (const QKeySequence& keys : {QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::Key_Escape)})
        if (!closing.contains(keys)) // the same keys twice would be ambiguous and do nothing
            closing.append(keys);
    for (const QKeySequence& keys : closing)
        connect(new QShortcut(keys, this), &QShortcut::activated, this, &QWidget::close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buttons);
    layout->addWidget(view_, 1);
    layout->addWidget(close);
}

void HelpBrowser::open(const QUrl& page)
{
    if (!page.isLocalFile() && !page.isRelative()) {
        QDesktopServices::openUrl(page);
        return;
    }
    view_->setSource(view_->source().resolved(page));
    show();
    raise();
    activateWindow();
}
