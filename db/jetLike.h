#pragma once

#include <string_view>

// True when the text matches a pattern of the Jet dialect: * any characters, ? one character, # one digit,
// [a-z] one of these, [!a-z] none of these, anything else itself. A bracket that is not closed stands for
// itself. Letter case counts as in file names.
[[nodiscard]] bool jetLike(std::string_view text, std::string_view pattern);
