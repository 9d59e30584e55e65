// Times what a person waits for on the screen: runs a command (a key press
// sent with xdotool) and watches a part of the screen, printing when it
// first changed and when it last changed before resting for a second and a
// half, in milliseconds from the command's start. The command's own start
// is included (a few milliseconds); both sides of a comparison pay it.
//
//   screen_change_timer X Y W H COMMAND...

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QScreen>

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
    QProcess::startDetached(args[5], args.mid(6));
    qint64 first = -1, lastChange = -1;
    while (clock.elapsed() < 30000 && (lastChange < 0 || clock.elapsed() - lastChange < 1500)) {
        const QImage now = grab();
        if (now != last) {
            lastChange = clock.elapsed();
            if (first < 0)
                first = lastChange;
            last = now;
        }
    }
    std::printf("%lld %lld\n", first, lastChange);
    return first < 0 ? 1 : 0;
}
