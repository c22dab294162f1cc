#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/clock.h"

// Dates and numbers as picture texts describe them ("mm/dd/yy hh:nn AMPM", "###,###,###.0"). Stateless; none
// fails. The appending forms allocate nothing once the result has room.
namespace modFormat {

// The form in which dates are stored and logged.
inline constexpr std::string_view storedDatePicture = "mm/dd/yyyy hh:nn:ss AMPM";

// The form in which reports show them.
inline constexpr std::string_view reportDatePicture = "mm/dd/yy hh:nn AMPM";

// Picture letters: yyyy yy (year) mm (month) dd (day) hh (hour) nn (minute) ss (second) AMPM ("AM" or "PM",
// and with it a 12-hour clock). Every other character is copied.
void appendFormattedDate(std::string& result, const platform::LocalTime& time, std::string_view picture);
[[nodiscard]] std::string formatDate(const platform::LocalTime& time, std::string_view picture);

// Reads a text of storedDatePicture's form; nothing when it is no such text or no day of the calendar.
[[nodiscard]] std::optional<platform::LocalTime> parseDate(std::string_view text);

// Appends a stored date in another form. A text that is no date is appended as it is.
void appendReformattedDate(std::string& result, std::string_view stored, std::string_view picture);

// Picture characters: "#" an optional digit, "0" a required one, "," before the point groups the digits by
// three, "." the decimal point; what stands before and behind them is copied. The separators are the
// user's. Rounds half away from zero as the shortest decimal text of the number reads. A zero has no sign,
// and no separator is left without decimals behind it. Not a number appends nothing; an infinity appends
// "inf" or "-inf" in place of the digits.
void appendFormattedNumber(std::string& result, double number, std::string_view picture);
[[nodiscard]] std::string formatNumber(double number, std::string_view picture);

} // namespace modFormat
