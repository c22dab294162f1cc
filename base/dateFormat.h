#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/clock.h"

// Formats dates by picture texts ("mm/dd/yy hh:nn AMPM"). Stateless; nothing here fails. The appending forms
// do not allocate if the result has room.
namespace modFormat {

// The form of dates in the database and the log.
inline constexpr std::string_view storedDatePicture = "mm/dd/yyyy hh:nn:ss AMPM";

// The form of dates in reports.
inline constexpr std::string_view reportDatePicture = "mm/dd/yy hh:nn AMPM";

// Picture letters: yyyy yy (year) mm (month) dd (day) hh (hour) nn (minute) ss (second) AMPM ("AM" or "PM",
// which also selects the 12-hour clock). All other characters are copied.
void appendFormattedDate(std::string& result, const platform::LocalTime& time, std::string_view picture);
[[nodiscard]] std::string formatDate(const platform::LocalTime& time, std::string_view picture);

// Parses a text in the form of storedDatePicture; nothing if the text has another form or is not a date of
// the calendar.
[[nodiscard]] std::optional<platform::LocalTime> parseDate(std::string_view text);

// A moment as yyyy-mm-dd hh:nn:ss, UTC, which sorts by time; and back, nothing if the text has another form
// or is not a date of the calendar.
[[nodiscard]] std::string utcText(platform::Seconds moment);
[[nodiscard]] std::optional<platform::Seconds> parseUtc(std::string_view text);

// A number that grows with the moment.
[[nodiscard]] double momentKey(const platform::LocalTime& time) noexcept;

// Appends a stored date in another form. A text that is not a date is appended unchanged.
void appendReformattedDate(std::string& result, std::string_view stored, std::string_view picture);

} // namespace modFormat
