#pragma once

#include <string_view>

// True when the text matches a pattern of the Jet dialect: * any characters, ? one character, # one digit,
// [a-z] one of these, [!a-z] none of these, anything else itself. A bracket that is not closed stands for
// itself.
[[nodiscard]] bool jetLike(std::string_view text, std::string_view pattern);

// The same for letters in lower case.
[[nodiscard]] bool jetLikeIgnoringCase(std::string_view text, std::string_view pattern);
