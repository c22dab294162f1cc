#pragma once

#include <cstdint>
#include <string_view>

// What the text of a setting stands for.
namespace modSettings {

// "true", "false" (ignoring case) or a number, of which only 0 is False. Throws 13 for any other text, and 6
// for a number that is too large for a double.
[[nodiscard]] bool flagOf(std::string_view text);

// A number, rounded, halves to even. Throws 13 if the text is none, and 6 if it is too large.
[[nodiscard]] std::int16_t numberOf(std::string_view text);

} // namespace modSettings
