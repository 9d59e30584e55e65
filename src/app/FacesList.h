#pragma once

#include <QObject>

#include <functional>

class Document;
class QDockWidget;
class QListWidget;
class QListWidgetItem;
class QWidget;

// With every face of a group photo retouched, the faces listed at the top
// of the panel column, each ticked while it is retouched: unticking one
// leaves it as it is, ticking it again retouches it, one undo step each.
// Hidden while the photo has one face.
class FacesList : public QObject {
    Q_OBJECT

public:
    // `addToColumn` puts its dock at the top of the panel column.
    FacesList(QWidget* parent, Document& document, const std::function<void(QDockWidget*)>& addToColumn);

    // The list as the document now is: its faces and those left out.
    void showDocument();

private:
    void ticked(QListWidgetItem* item);

    Document& document_;
    QDockWidget* dock_;
    QListWidget* list_;
};
