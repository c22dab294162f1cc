#pragma once

#include <string>

// Runs a script of SQLite statements on the file at a native path, which is created if missing. Throws
// std::runtime_error if one fails.
void runSqliteScript(const std::string& file, const std::string& script);
