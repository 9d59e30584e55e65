#include "Alert.h"

#include <QMessageBox>
#include <QPushButton>

int presentAlertModally(const Alert& alert, QWidget* parent)
{
    QMessageBox box(parent);
    // The one good news the program gives is "Success"; everything else it
    // says in an alert is a problem.
    box.setIcon(alert.message == "Success" ? QMessageBox::Information : QMessageBox::Warning);
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
