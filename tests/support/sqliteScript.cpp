#include "support/sqliteScript.h"

#include <sqlite3.h>

#include <stdexcept>

void runSqliteScript(const std::string& file, const std::string& script) {
    sqlite3* handle = nullptr;
    const bool done = sqlite3_open(file.c_str(), &handle) == SQLITE_OK &&
                      sqlite3_exec(handle, script.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
    const std::string reason = sqlite3_errmsg(handle);
    sqlite3_close(handle);
    if (!done) {
        throw std::runtime_error(reason);
    }
}
