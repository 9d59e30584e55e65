#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

// A modal message: a short message, an informative text and fixed buttons,
// the first of which is the default.
struct Alert {
    QString message;
    QString informativeText;
    QStringList buttons;
};

// Shows an alert and returns the index of the button chosen. The window
// shows alerts modally; tests answer them directly.
using AlertPresenter = std::function<int(const Alert&)>;

// Runs the alert as a modal message box over `parent`.
int presentAlertModally(const Alert& alert, QWidget* parent);
