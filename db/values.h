#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "db/dao.h"

// Converts values to SQL text and to field values. Both functions take a kind from 1 to 6.
namespace modGlobal {

// The value as SQL text: NULL is "NULL"; 1 in single quotes ("NULL" if empty), 2 as text ("NULL" if zero), 3
// as text ("NULL" if empty), 4 as text, 5 in double quotes, 6 in double quotes ("NULL" if empty). Any other
// kind gives an empty text. Odd on purpose: quotes inside the value are not doubled, and the engine refuses
// such a statement.
[[nodiscard]] std::string vtsSQL(const Value& value, int kind);

// The value for a field: NULL stays NULL; 1 and 6 unchanged (NULL if empty), 3 as text (NULL if empty), 4 as
// text, 5 unchanged. Any other kind gives an empty text. Odd on purpose: so does 2.
[[nodiscard]] Value vts(const Value& value, int kind);

// The same for a text, without copying it; nothing stands for NULL.
[[nodiscard]] std::optional<std::string_view> vts(std::string_view text, int kind);

// The text in double quotes, with quotes inside doubled: whatever it holds, it is one value of a statement.
[[nodiscard]] std::string quoted(std::string_view text);
// The same; "NULL" if empty.
[[nodiscard]] std::string quotedOrNull(std::string_view text);

} // namespace modGlobal
