#include "BackgroundJob.h"

#include <chrono>

namespace {

// How often the owner looks while the work runs: far below what a person
// notices, and a few microseconds of its time each.
constexpr int kLookInterval = 5; // ms

} // namespace

BackgroundJob::BackgroundJob(std::function<void(const QString&)> finished)
    : finished_(std::move(finished))
{
    look_.setInterval(kLookInterval);
    QObject::connect(&look_, &QTimer::timeout, [this] { lookIn(); });
}

BackgroundJob::~BackgroundJob()
{
    if (work_.valid())
        work_.wait();
}

void BackgroundJob::start(std::function<QString()> work)
{
    finish();
    work_ = std::async(std::launch::async, std::move(work));
    look_.start();
}

bool BackgroundJob::running() const
{
    return work_.valid() && work_.wait_for(std::chrono::seconds(0)) != std::future_status::ready;
}

void BackgroundJob::lookIn()
{
    if (!running())
        finish();
}

void BackgroundJob::finish()
{
    if (!work_.valid())
        return;
    look_.stop();
    const QString failure = work_.get();
    finished_(failure);
}
