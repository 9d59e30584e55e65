#pragma once

#include <QObject>
#include <QPointer>

class QKeyEvent;
class QWidget;
class View_Picture;

// The preview's held keys, wherever the focus is in the main window or its
// panels (except in a text field): backslash held shows the untouched
// photo, Shift+backslash toggles the split view, Space held over the
// preview lets the left button pan. Key repeats are ignored, and leaving the
// window lets every held key go.
class PreviewKeys : public QObject {
    Q_OBJECT

public:
    PreviewKeys(QWidget* mainWindow, View_Picture* view, QObject* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool ours(QObject* watched) const;
    bool pressed(const QKeyEvent& key);
    bool released(const QKeyEvent& key);
    void letGo();

    QPointer<QWidget> mainWindow_;
    QPointer<View_Picture> view_;
    bool panKeyHeld_ = false;
};
