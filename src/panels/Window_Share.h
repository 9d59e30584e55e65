#pragma once

#include <QDialog>

#include <memory>

class AppDelegate;
class QMenu;

namespace Ui {
class Window_Share;
}

// The share sheet: offers the rendered picture to the desktop's share
// targets (clipboard, image viewer, file manager, e-mail) from a menu above
// its Share button.
class Window_Share : public QDialog {
    Q_OBJECT

public:
    explicit Window_Share(AppDelegate& app, QWidget* parent);
    ~Window_Share() override;

    const Ui::Window_Share& ui() const { return *ui_; }

    // The targets that can work on this machine, for the picture at `path`.
    QMenu* shareMenu(const QString& path);

    void OnShare();
    void OnChangeAddText(bool on);
    void OnClose();

private:
    AppDelegate& app_;
    std::unique_ptr<Ui::Window_Share> ui_;
};
