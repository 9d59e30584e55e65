#pragma once

#include <QDialog>

#include <functional>
#include <memory>

class QMenu;
struct LocalisedLabels;

namespace Ui {
class Window_Share;
}

// The share sheet: offers the rendered picture to the desktop's share
// targets (clipboard, image viewer, file manager, e-mail) from a menu above
// its Share button.
class Window_Share : public QDialog {
    Q_OBJECT

public:
    // `picture` gives the rendered picture's path when Share is pressed;
    // `close` ends the sheet (the application drops it).
    Window_Share(const LocalisedLabels& labels, std::function<QString()> picture, std::function<void()> close,
                 QWidget* parent);
    ~Window_Share() override;

    const Ui::Window_Share& ui() const { return *ui_; }

    // The targets that can work on this machine, for the picture at `path`.
    QMenu* shareMenu(const QString& path);

    void OnShare();
    void OnChangeAddText(bool on);
    void OnClose();

private:
    std::function<QString()> picture_;
    std::function<void()> close_;
    std::unique_ptr<Ui::Window_Share> ui_;
};
