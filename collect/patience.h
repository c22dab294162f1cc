#pragma once

#include <cstdint>
#include <functional>

#include "collect/httpClient.h"

namespace modCollect {

// Does the work again as long as it throws a ServerError that may pass, after pauses of 1, 2, 4, ... and then
// 15 seconds, until so many seconds have passed since the first failure. Then, at any other error, or once
// `goesOn` says no, the last error passes through.
void patiently(std::int64_t seconds, const std::function<bool()>& goesOn, const std::function<void()>& work);

} // namespace modCollect
