#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// UTF-8 text. Throughout the program, a "character" is one Unicode code point. All texts inside the program
// are valid UTF-8 (platform/paths.h ensures this for file names), except for unpaired surrogates in names
// from Windows.
namespace platform {

// Decodes the code point at text[position] and moves position past it. A byte that does not start a valid
// sequence (overlong, surrogate, beyond U+10FFFF, cut short) yields invalidCodePoint and moves position by
// one.
inline constexpr char32_t invalidCodePoint = 0xFFFFFFFF;
[[nodiscard]] char32_t decodeCodePoint(std::string_view text, std::size_t& position);

// The surrogate encoded by the three bytes (invalid UTF-8) at text[position]; 0 if there is none.
[[nodiscard]] char32_t loneSurrogateAt(std::string_view text, std::size_t position);

void appendCodePoint(std::string& text, char32_t codePoint);

[[nodiscard]] std::size_t characterCount(std::string_view text);

// The first `count` characters of the text, or all of it if it has fewer. Never splits a character.
[[nodiscard]] std::string_view firstCharacters(std::string_view text, std::size_t count);

// ASCII letters only.
[[nodiscard]] char asciiLower(char c) noexcept;
[[nodiscard]] bool equalIgnoringAsciiCase(std::string_view left, std::string_view right) noexcept;

// Without leading and trailing blanks and tabs.
[[nodiscard]] std::string_view trimmed(std::string_view text) noexcept;

} // namespace platform
