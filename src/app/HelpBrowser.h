#pragma once

#include <QUrl>
#include <QWidget>

class QTextBrowser;

// The shipped help pages in the program's own window: a page in the data
// folder is shown here, with its links followed here too, so help works
// without a web browser set up. Addresses on the web go to the browser.
class HelpBrowser : public QWidget {
    Q_OBJECT
public:
    explicit HelpBrowser(QWidget* parent);

    // Shows `page` here when it is a local file, else hands it to the
    // desktop's browser.
    void open(const QUrl& page);

    QTextBrowser* view() const { return view_; }

private:
    QTextBrowser* view_;
};
