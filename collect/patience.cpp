#include "collect/patience.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <thread>

#include "platform/clock.h"

namespace {

constexpr std::int64_t longestPause = 15000; // milliseconds
constexpr std::int64_t second = 1000;

void pause(std::int64_t milliseconds, const std::function<bool()>& goesOn) {
    constexpr std::int64_t slice = 100;
    const std::int64_t end = platform::tickCount() + milliseconds;
    while (goesOn() && platform::tickCount() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(slice));
    }
}

} // namespace

void modCollect::patiently(std::int64_t seconds, const std::function<bool()>& goesOn,
                           const std::function<void()>& work) {
    std::optional<std::int64_t> end;
    for (std::int64_t next = second;; next = std::min(2 * next, longestPause)) {
        try {
            work();
            return;
        } catch (const ServerError& error) {
            const std::int64_t now = platform::tickCount();
            end = end.value_or(now + seconds * second);
            if (!error.mayPass() || now >= *end || !goesOn()) {
                throw;
            }
            pause(std::min(next, *end - now), goesOn);
            if (!goesOn()) {
                throw ServerError(ServerError::Kind::cancelled, errorNumber::inputOutput,
                                  "This was cancelled.");
            }
        }
    }
}
