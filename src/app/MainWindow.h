#pragma once

#include <QMainWindow>

#include <memory>

class QLabel;
class QToolButton;

namespace Ui {
class MainWindow;
}

// The main window of MainWindow.ui: toolbar, menus, the action table and the
// preview area. It holds no state of its own; AppDelegate sets its texts and
// answers its actions.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    const Ui::MainWindow& ui() const { return *ui_; }

    // The toolbar's Compare button, held for the untouched photo, and the
    // status line under the preview.
    QToolButton* compareButton() const;
    QLabel* statusLine() const { return statusLine_; }

signals:
    void windowWillClose();
    // A file was dropped onto the window: the first local file's path.
    void photoDropped(const QString& path);

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void setViewShortcuts();

    std::unique_ptr<Ui::MainWindow> ui_;
    QLabel* statusLine_ = nullptr;
};
