#include "CliCommands.h"

#include <QGuiApplication>

#include <cstdio>

namespace {

// stderr carries the program's own log lines and its one-line messages;
// Qt's chatter about the environment and decoders' warnings would only
// confuse scripts reading it.
void keepOwnLogLines(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtInfoMsg && qstrcmp(context.category, "default") == 0)
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

} // namespace

// bellavenor-cli: the retouching engine without a window, for scripts and
// batches. It runs the same code as the window.
int main(int argc, char* argv[])
{
    qInstallMessageHandler(keepOwnLogLines);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    QStringList arguments = QGuiApplication::arguments().mid(1);
    const QString command = arguments.isEmpty() ? QString() : arguments.takeFirst();
    if (command == "analyse")
        return runAnalyse(arguments);
    if (command == "render")
        return runRender(arguments);
    if (command == "settings" && arguments.isEmpty())
        return runSettings();
    std::fprintf(stderr, "usage: bellavenor-cli analyse PHOTO\n"
                         "       bellavenor-cli render PHOTO [--settings FILE.json] -o OUT.png [--timings]\n"
                         "       bellavenor-cli settings\n");
    return kCliUsage;
}
