#pragma once

#include <QString>
#include <QTimer>

#include <functional>
#include <future>

// One piece of work on a thread of its own, whose result the owner's thread
// takes in: while the work runs, a timer on the owner's thread looks every
// few milliseconds and, once it is done, hands its result to `finished`
// there. The work gets copies of its inputs; only its result comes back,
// through a std::future, whose hand-over ThreadSanitizer can follow.
class BackgroundJob {
public:
    explicit BackgroundJob(std::function<void(const QString& failure)> finished);
    ~BackgroundJob();

    // Starts `work`, which returns why it failed or nothing; one at a time.
    void start(std::function<QString()> work);
    bool running() const;
    // Waits for the work under way, if any, and hands its result over now.
    void finish();

private:
    void lookIn();

    std::function<void(const QString&)> finished_;
    std::future<QString> work_;
    QTimer look_;
};
