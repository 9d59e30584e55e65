#include "AppDelegate.h"
#include "FileActions.h"
#include "LocalisedLabels.h"
#include "Picture.h"

#include <QApplication>
#include <QIcon>

int main(int argc, char* argv[])
{
    keepMemoryOfFreedPictures();
    QApplication application(argc, argv);
    QApplication::setApplicationName("Bellavenor");
    QApplication::setApplicationVersion(BELLAVENOR_VERSION);
    QApplication::setWindowIcon(QIcon(":/icons/bellavenor.svg"));
    LocalisedLabels::installTranslator(&application);

    AppDelegate delegate;
    if (!delegate.applicationDidFinishLaunching())
        return 0;
    delegate.files().openGivenAtStart(QApplication::arguments().mid(1));
    return QApplication::exec();
}
