#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The dates of the working database as the server's: seconds since 1970 of what the machine's clock showed.
namespace modWallClock {

// Nothing unless the text has the stored form, to the letter, and lies between 1970-01-01 00:00:01 and
// 2105-12-31.
[[nodiscard]] std::optional<std::uint32_t> secondsOf(std::string_view stored);

// The text of such a number; empty for 0.
[[nodiscard]] std::string storedText(std::uint32_t seconds);

} // namespace modWallClock
