#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// UTF-8 text. A "character" is one Unicode code point throughout the program; all texts inside it are
// valid UTF-8 (platform/paths.h sees to that for file names), but for surrogates that stand alone in Windows'
// names.
namespace platform {

// Decodes the code point that starts at text[position] and moves position behind it. A byte that starts no
// valid sequence (overlong, surrogate, beyond U+10FFFF, cut short) yields invalidCodePoint and moves by one.
inline constexpr char32_t invalidCodePoint = 0xFFFFFFFF;
[[nodiscard]] char32_t decodeCodePoint(std::string_view text, std::size_t& position);

// The surrogate whose three bytes, which are no valid UTF-8, stand at text[position]; 0 when there is none.
[[nodiscard]] char32_t loneSurrogateAt(std::string_view text, std::size_t position);

void appendCodePoint(std::string& text, char32_t codePoint);

[[nodiscard]] std::size_t characterCount(std::string_view text);

// The text's first `count` characters, or all of it when it has no more. Never splits a character.
[[nodiscard]] std::string_view firstCharacters(std::string_view text, std::size_t count);

// ASCII letters only.
[[nodiscard]] char asciiLower(char c) noexcept;
[[nodiscard]] bool equalIgnoringAsciiCase(std::string_view left, std::string_view right) noexcept;

// Without leading and trailing blanks and tabs.
[[nodiscard]] std::string_view trimmed(std::string_view text) noexcept;

} // namespace platform
