#pragma once

#include <string_view>

namespace modDatabase {

// Both examine a file (an internal path) that a new working database would replace, without changing it. A
// missing or empty file may be replaced.

// Whether the file begins like the program's databases. For a first look, which disturbs no other program.
[[nodiscard]] bool looksLikeOwnDatabase(std::string_view path);

// Whether it is a database with the program's table "details"; its rows may be invalid, because a crash may
// leave them so.
[[nodiscard]] bool isOwnDatabase(std::string_view path);

} // namespace modDatabase
