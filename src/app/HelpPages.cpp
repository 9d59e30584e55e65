#include "HelpPages.h"

#include "HelpAddresses.h"

#include <QDir>

QUrl resolveHelpAddress(const QString& address, const QString& dataFolder)
{
    const QUrl url(address);
    if (!url.scheme().isEmpty())
        return url;
    return QUrl::fromLocalFile(QDir(dataFolder).filePath(address));
}

HelpPages HelpPages::configured(const QString& dataFolder)
{
    const auto resolve = [&](const char* address) { return resolveHelpAddress(address, dataFolder); };
    return {resolve("help/index.html"), resolve(BELLAVENOR_URL_APP_HOME_PAGE),
            resolve(BELLAVENOR_URL_COMPANY_PAGE), resolve(BELLAVENOR_URL_PRIVACY_POLICY),
            resolve(BELLAVENOR_URL_SUBMIT_TICKET)};
}
