#pragma once

#include <QObject>

class Document;
class QDockWidget;
class QListWidget;
class QListWidgetItem;
class QMainWindow;

// With every face of a group photo retouched, the faces listed at the top
// of the panel column, each ticked while it is retouched: unticking one
// leaves it as it is, ticking it again retouches it, one undo step each.
// Hidden while the photo has one face.
class FacesList : public QObject {
    Q_OBJECT

public:
    FacesList(QMainWindow* window, Document& document);

    // The list as the document now is: its faces and those left out.
    void showDocument();

private:
    void ticked(QListWidgetItem* item);

    Document& document_;
    QDockWidget* dock_;
    QListWidget* list_;
};
