#include "FastPaths.h"

#include <atomic>

namespace {

std::atomic<bool> enabled{true};

} // namespace

bool fastPaths()
{
    return enabled.load(std::memory_order_relaxed);
}

void setFastPaths(bool on)
{
    enabled.store(on, std::memory_order_relaxed);
}
