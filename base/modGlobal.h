#pragma once

#include <string>
#include <string_view>

namespace modGlobal {

// The text, with one "\" appended if it does not end in one; an empty text stays empty.
[[nodiscard]] std::string addBackslash(std::string_view text);

} // namespace modGlobal
