#pragma once

#include <chrono>
#include <future>
#include <type_traits>

#include "base/clsUserInterface.h"

// Runs long work that cannot yield on another thread, and handles pending events until it is done. Returns
// its result or throws its exception. The work must not touch anything that the event handlers use.
template <class Work>
std::invoke_result_t<Work> runInBackground(clsUserInterface& userInterface, Work work) {
    constexpr std::chrono::milliseconds pause{10};
    std::future<std::invoke_result_t<Work>> result = std::async(std::launch::async, std::move(work));
    while (result.wait_for(pause) == std::future_status::timeout) {
        userInterface.yieldToEvents();
    }
    return result.get();
}
