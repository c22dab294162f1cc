#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "db/dao.h"

// How values become SQL text and field values. Both take a kind from 1 to 6.
namespace modGlobal {

// SQL text for the value: NULL is "NULL"; 1 in single quotes ("NULL" when empty), 2 as text ("NULL" when
// zero), 3 as text ("NULL" when empty), 4 as text, 5 in double quotes, 6 in double quotes ("NULL" when
// empty). Any other kind gives the empty text. Quotes inside the value are deliberately not doubled: the
// engine refuses such a statement, and whoever issued it logs that.
[[nodiscard]] std::string vtsSQL(const Value& value, int kind);

// A value to write into a field: NULL stays NULL; 1 and 6 as it is (NULL when empty), 3 as text (NULL when
// empty), 4 as text, 5 as it is. Any other kind gives the empty text, 2 deliberately included.
[[nodiscard]] Value vts(const Value& value, int kind);

// The same for a text that is at hand, without a copy of it; nothing stands for NULL.
[[nodiscard]] std::optional<std::string_view> vts(std::string_view text, int kind);

// vtsSQL of a text by kind 5: how paths stand in statements.
[[nodiscard]] std::string quoted(std::string_view text);

} // namespace modGlobal
