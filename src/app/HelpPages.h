#pragma once

#include <QString>
#include <QUrl>

// What the Help menu opens. Each address is configured at build time; a
// relative one names a page in the program's data folder, so a build without
// a web site still opens real pages.
struct HelpPages {
    QUrl userGuide;
    QUrl appHomePage;
    QUrl companyPage;
    QUrl privacyPolicy;
    QUrl submitTicket;

    // The configured addresses resolved against `dataFolder`.
    static HelpPages configured(const QString& dataFolder);
};

// `address` as it stands when it has a scheme, else the local file
// `dataFolder`/`address`.
QUrl resolveHelpAddress(const QString& address, const QString& dataFolder);
