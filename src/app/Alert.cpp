#include "Alert.h"

#include <QGridLayout>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

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
    if (!buttons.isEmpty()) {
        box.setDefaultButton(qobject_cast<QPushButton*>(buttons.first()));
        box.setEscapeButton(buttons.first()); // Close or Cancel
    }
    // Wide enough that a sentence wraps into a few even lines, not a narrow
    // column: QMessageBox takes its width from its grid, not from a minimum.
    const int longest = box.fontMetrics().horizontalAdvance(alert.informativeText);
    const int line = longest <= 480 ? longest : std::clamp(longest / 2, 360, 480);
    const int icon = 64; // the icon's column beside the text
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout()))
        grid->addItem(new QSpacerItem(line + icon, 0, QSizePolicy::Minimum, QSizePolicy::Fixed), grid->rowCount(), 0, 1,
                      grid->columnCount());
    box.exec();
    return int(buttons.indexOf(box.clickedButton()));
}
