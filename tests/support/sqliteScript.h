#pragma once

#include <string>

// Runs a script of SQLite's own statements on the file at a native path, which is made when it is missing.
// Throws std::runtime_error when one fails.
void runSqliteScript(const std::string& file, const std::string& script);
