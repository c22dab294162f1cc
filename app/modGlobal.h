#pragma once

#include <string>
#include <string_view>

namespace modGlobal {

// The text with one "\" appended when it has none at its end; an empty text stays empty.
[[nodiscard]] std::string addBackslash(std::string_view text);

} // namespace modGlobal
