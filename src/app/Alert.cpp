#include "Alert.h"

#include <QMessageBox>
#include <QPushButton>

int presentAlertModally(const Alert& alert, QWidget* parent)
{
    QMessageBox box(parent);
    box.setIcon(QMessageBox::Warning);
    box.setText(alert.message);
    box.setInformativeText(alert.informativeText);
    QList<QAbstractButton*> buttons;
    for (const QString& title : alert.buttons)
        buttons.append(box.addButton(title, QMessageBox::AcceptRole));
    if (!buttons.isEmpty())
        box.setDefaultButton(qobject_cast<QPushButton*>(buttons.first()));
    box.exec();
    return int(buttons.indexOf(box.clickedButton()));
}
