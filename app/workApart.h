#pragma once

#include <chrono>
#include <future>
#include <type_traits>

#include "app/clsUserInterface.h"

// Does on another thread what takes long and has no point at which it could yield, and handles pending events
// until it is done. Gives its result or throws its exception. The work must not touch what those who handle
// the events do.
template <class Work>
std::invoke_result_t<Work> workApart(clsUserInterface& userInterface, Work work) {
    constexpr std::chrono::milliseconds pause{10};
    std::future<std::invoke_result_t<Work>> result = std::async(std::launch::async, std::move(work));
    while (result.wait_for(pause) == std::future_status::timeout) {
        userInterface.yieldToEvents();
    }
    return result.get();
}
