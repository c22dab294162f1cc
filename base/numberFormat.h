#pragma once

#include <string>
#include <string_view>

// Numbers as text. Stateless; nothing here fails. The appending forms do not allocate if the result has room.
namespace modFormat {

// Appends the shortest decimal text that reads as the same number; a whole number in plain digits. No
// separators.
void appendNumber(std::string& result, double number);

// Appends the number in the form of a picture text ("###,###,###.0"). Picture characters: "#" is an optional
// digit, "0" a required one, "," before the point groups digits by three, "." is the decimal point; any text
// before and after them is copied. Uses the user's separators. Rounds halves of the number's shortest decimal
// text away from zero. Zero has no sign, and a decimal separator without decimals is dropped. Not a number
// appends nothing; an infinity appends "inf" or "-inf" instead of digits.
void appendFormattedNumber(std::string& result, double number, std::string_view picture);
[[nodiscard]] std::string formatNumber(double number, std::string_view picture);

// "1,234".
[[nodiscard]] std::string countText(double count);
// "1 folder", "1,234 folders".
[[nodiscard]] std::string countedText(double count, std::string_view one, std::string_view several);

} // namespace modFormat
