#pragma once

#include <string>
#include <string_view>

// The text in a form that cannot control a terminal or end a line; names in a database may come from anyone.
// Each byte of a control character (C0, DEL, C1, or one that changes the direction of text), or of invalid
// UTF-8, becomes a backslash and three octal digits, as in "a\012b". To avoid ambiguity, a backslash that is
// followed by three octal digits becomes
// "\134"; all others stay. If the backslash separates the names of a path, which then contain no control
// characters, none is changed.
[[nodiscard]] std::string forTerminal(std::string_view text);

// The same for a text of several lines.
[[nodiscard]] std::string linesForTerminal(std::string_view text);
