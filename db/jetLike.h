#pragma once

#include <string>
#include <string_view>

// True if the text matches a pattern of the Jet dialect: * is any characters, ? one character, # one digit,
// [a-z] one of these, [!a-z] any other; anything else is itself. A bracket that is not closed is itself.
[[nodiscard]] bool jetLike(std::string_view text, std::string_view pattern);

// The same, comparing letters in lower case.
[[nodiscard]] bool jetLikeIgnoringCase(std::string_view text, std::string_view pattern);

// The pattern that matches this text and nothing else.
[[nodiscard]] std::string jetLiteral(std::string_view text);
