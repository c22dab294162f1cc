#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "db/dao.h"
#include "platform/fileError.h"

struct sqlite3;
struct sqlite3_stmt;

class Connection;

// A prepared statement, taken from its connection's store; when destroyed, it is reset and returned.
class Statement {
public:
    Statement() = default;
    ~Statement();
    Statement(Statement&& other) noexcept;
    Statement& operator=(Statement&& other) noexcept;

    // Values are bound by position, from 1. Texts are copied unless stated otherwise.
    void bindNull(int position);
    void bindInteger(int position, std::int64_t number);
    void bindNumber(int position, double number);
    void bindText(int position, std::string_view text);
    void bindBorrowedText(int position, std::string_view text); // must live until the next step is done
    void bindValue(int position, const Value& value);

    // True if there is a row, false at the end.
    bool step();
    void reset();
    // Runs a statement that returns no rows, and resets it.
    void run();

    [[nodiscard]] int columnCount() const;
    [[nodiscard]] const char* columnName(int column) const;
    [[nodiscard]] bool isNull(int column) const;
    [[nodiscard]] bool isReal(int column) const;
    [[nodiscard]] bool isText(int column) const; // or bytes
    [[nodiscard]] std::string_view text(int column) const;
    [[nodiscard]] double number(int column) const;
    [[nodiscard]] Value value(int column) const;

private:
    friend class Connection;
    Statement(Connection& connection, sqlite3_stmt* handle, std::vector<sqlite3_stmt*>& home)
        : connection_(&connection), handle_(handle), home_(&home) {}
    void giveBack() noexcept;

    Connection* connection_ = nullptr;
    sqlite3_stmt* handle_ = nullptr;
    std::vector<sqlite3_stmt*>* home_ = nullptr;
};

// A connection to one SQLite file, with the statements prepared on it, which are kept by their text.
class Connection {
public:
    // The collation that ignores case: SQLite's own name for it, extended to all letters. If the system
    // ignores the case of file names, the columns of the template use it (db/ignoreCase.sql).
    static constexpr std::string_view ignoringCase = "nocase";

    // `path` is an internal path. Throws as DBEngine::OpenDatabase does.
    Connection(std::string_view path, OpenMode mode);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // Takes SQLite's own text. A statement in use is not shared: preparing the same text again returns
    // another one.
    [[nodiscard]] Statement prepare(const std::string& text);

    // Runs SQLite's own text, which must not return rows.
    void run(const std::string& text);

    [[nodiscard]] std::int64_t changedRows() const;
    [[nodiscard]] std::int64_t allChangedRows() const; // since it was opened

    // See Database.
    void setLongWork(std::function<void()> callback) noexcept;
    void interrupt() noexcept { isInterrupted_ = true; }

    [[nodiscard]] const std::string& path() const noexcept { return path_; }

    // The last failure as an error, with the engine's number.
    [[nodiscard]] RuntimeError lastError() const;

private:
    friend class Statement;
    void open(OpenMode mode);
    void distrust(OpenMode mode);
    void watchSteps() noexcept;
    int look();
    void close() noexcept;
    void addFunctions();
    void requireWhole();
    [[nodiscard]] RuntimeError failure(int number, std::string_view cause, platform::NotDone notDone) const;

    std::string path_;
    sqlite3* handle_ = nullptr;
    std::function<void()> longWork_;
    std::chrono::steady_clock::time_point lastCalled_;
    bool isInterrupted_ = false;
    bool isTrusted_;          // a file of the program's own
    std::uint64_t looks_ = 0; // since the last row
    std::uint64_t mostLooks_; // for one row of a file that is not trusted
    std::unordered_map<std::string, std::vector<sqlite3_stmt*>> idle_;
};
