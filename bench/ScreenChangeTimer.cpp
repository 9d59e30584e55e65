// Times what a person waits for on the screen: runs a command (a key press
// sent with xdotool) and watches a part of the screen, printing when it
// first changed, when it last changed before resting for a second and a
// half (or SCREEN_REST_MS), and the longest time between two changes while the command still
// ran (a series of key presses), in milliseconds from the command's start. The command's own start
// is included (a few milliseconds); both sides of a comparison pay it.
//
//   screen_change_timer X Y W H COMMAND...

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QScreen>

#include <algorithm>
#include <cstdio>

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 6) {
        std::fprintf(stderr, "usage: screen_change_timer X Y W H COMMAND...\n");
        return 64;
    }
    const int x = args[1].toInt(), y = args[2].toInt(), w = args[3].toInt(), h = args[4].toInt();
    QScreen* screen = QGuiApplication::primaryScreen();
    const auto grab = [&] { return screen->grabWindow(0, x, y, w, h).toImage(); };
    QImage last = grab();
    QElapsedTimer clock;
    clock.start();
    QProcess command;
    command.start(args[5], args.mid(6));
    qint64 first = -1, lastChange = -1, longestGap = 0, commandEnd = -1;
    // The rest that ends the watch: SCREEN_REST_MS, for a wait in which the
    // screen holds still (an analysis), else a second and a half.
    const qint64 rest = qEnvironmentVariableIntValue("SCREEN_REST_MS") > 0 ? qEnvironmentVariableIntValue("SCREEN_REST_MS") : 1500;
    while (clock.elapsed() < 30000 && (lastChange < 0 || clock.elapsed() - lastChange < rest)) {
        const QImage now = grab();
        if (commandEnd < 0 && (command.state() == QProcess::NotRunning || command.waitForFinished(0)))
            commandEnd = clock.elapsed();
        if (now != last) {
            if (lastChange >= 0 && commandEnd < 0)
                longestGap = std::max(longestGap, clock.elapsed() - lastChange);
            lastChange = clock.elapsed();
            if (first < 0)
                first = lastChange;
            last = now;
        }
    }
    command.waitForFinished();
    std::printf("%lld %lld %lld\n", first, lastChange, longestGap);
    return first < 0 ? 1 : 0;
}
