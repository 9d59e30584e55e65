#include "HelpPages.h"

#include <QFileInfo>

#include <gtest/gtest.h>

TEST(HelpPages, RelativeAddressOpensTheShippedPage)
{
    EXPECT_EQ(resolveHelpAddress("help/privacy.html", "/opt/bellavenor/share/bellavenor"),
              QUrl("file:///opt/bellavenor/share/bellavenor/help/privacy.html"));
}

TEST(HelpPages, EveryLocalPageShipsInTheDataFolder)
{
    const HelpPages pages = HelpPages::configured(BELLAVENOR_BUILD_DATA_DIR);
    for (const QUrl& url : {pages.userGuide, pages.appHomePage, pages.companyPage, pages.privacyPolicy,
                            pages.submitTicket}) {
        if (url.isLocalFile()) {
            EXPECT_TRUE(QFileInfo::exists(url.toLocalFile())) << url.toString().toStdString();
        }
    }
}
