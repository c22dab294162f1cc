#pragma once

// What SQLite sees of the files beside a database.
namespace enginesFiles {

// The name, for sqlite3_open_v2, of file services that see no journal or log beside a database: a working
// database has none, and one that somebody has put there would be rolled back.
[[nodiscard]] const char* withoutJournals();

// The same, but they see regular files: those of a saved scan. Anything else, such as a pipe, could keep the
// engine waiting.
[[nodiscard]] const char* withRegularJournals();

} // namespace enginesFiles
