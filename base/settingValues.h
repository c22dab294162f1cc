#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// What the text of a setting stands for.
namespace modSettings {

// "true", "false" (ignoring case) or a number, of which only 0 is False. Throws 13 for any other text, and 6
// for a number that is too large for a double.
[[nodiscard]] bool flagOf(std::string_view text);

// A number, rounded, halves to even. Throws 13 if the text is none, and 6 if it is too large.
[[nodiscard]] std::int16_t numberOf(std::string_view text);

// How a value is written to the INI file so that it is read back as it is: blanks at its ends, and one pair
// of quotes, are not part of a value there.
[[nodiscard]] std::string asWritten(const std::string& value);

} // namespace modSettings
