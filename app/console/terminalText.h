#pragma once

#include <string>
#include <string_view>

// The text without what could command a terminal: each control character (C0, DEL, C1) becomes `replacement`.
// Names in a database may be anybody's.
[[nodiscard]] std::string forTerminal(std::string_view text, char replacement = '?');
