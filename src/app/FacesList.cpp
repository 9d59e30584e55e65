#include "FacesList.h"

#include "Document.h"

#include <QDockWidget>
#include <QListWidget>
#include <QSignalBlocker>

FacesList::FacesList(QWidget* parent, Document& document, const std::function<void(QDockWidget*)>& addToColumn)
    : QObject(parent)
    , document_(document)
    , dock_(new QDockWidget(tr("Faces"), parent))
    , list_(new QListWidget(dock_))
{
    dock_->setObjectName("facesDock");
    list_->setObjectName("facesList");
    dock_->setWidget(list_);
    dock_->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    addToColumn(dock_);
    dock_->hide();
    connect(list_, &QListWidget::itemChanged, this, &FacesList::ticked);
    connect(&document_, &Document::photoReplaced, this, &FacesList::showDocument);
    connect(&document_, &Document::edited, this, &FacesList::showDocument);
}

void FacesList::showDocument()
{
    const int faces = document_.photo()->faceCount();
    dock_->setVisible(faces > 1);
    const QSignalBlocker quiet(list_);
    if (list_->count() != faces) {
        list_->clear();
        for (int face = 0; face < faces; ++face) {
            auto* item = new QListWidgetItem(tr("Face %1").arg(face + 1), list_);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsSelectable);
        }
        list_->setMaximumHeight(list_->sizeHintForRow(0) * (faces + 1));
    }
    for (int face = 0; face < faces; ++face)
        list_->item(face)->setCheckState(document_.photoEdits.facesLeftOut.contains(face) ? Qt::Unchecked : Qt::Checked);
}

void FacesList::ticked(QListWidgetItem* item)
{
    const int face = list_->row(item);
    QList<int>& leftOut = document_.photoEdits.facesLeftOut;
    const bool retouched = item->checkState() == Qt::Checked;
    if (retouched == !leftOut.contains(face))
        return;
    if (retouched)
        leftOut.removeAll(face);
    else
        leftOut.append(face);
    document_.changed(Change::onPhoto(retouched ? tr("Retouch Face %1").arg(face + 1) : tr("Leave Out Face %1").arg(face + 1)));
}
