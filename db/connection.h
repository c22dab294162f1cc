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
#include "platform/runtimeError.h"

struct sqlite3;
struct sqlite3_stmt;

class Connection;

// A prepared statement, taken from its connection's store and given back, reset, at the end.
class Statement {
public:
    Statement() = default;
    ~Statement();
    Statement(Statement&& other) noexcept;
    Statement& operator=(Statement&& other) noexcept;

    // Values are bound by position from 1. Texts are copied unless said otherwise.
    void bindNull(int position);
    void bindInteger(int position, std::int64_t number);
    void bindNumber(int position, double number);
    void bindText(int position, std::string_view text);
    void bindBorrowedText(int position, std::string_view text); // must live until the next step is done
    void bindValue(int position, const Value& value);
    void unbindAll();

    // True when a row is there, false at the end.
    bool step();
    void reset();
    // Steps a statement without rows to its end and resets it.
    void run();

    [[nodiscard]] int columnCount() const;
    [[nodiscard]] const char* columnName(int column) const;
    [[nodiscard]] bool isNull(int column) const;
    [[nodiscard]] bool isReal(int column) const;
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

// A connection to one SQLite file, and the statements prepared on it, kept by their text.
class Connection {
public:
    // The collation that ignores case: SQLite's of this name, made to know all letters. Where the system
    // ignores the case of file names the template's columns have it (db/ignoreCase.sql).
    static constexpr std::string_view ignoringCase = "nocase";

    // `path` is an internal path. Throws as DBEngine::OpenDatabase does.
    Connection(std::string_view path, OpenMode mode);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // SQLite's text. A statement in use is not shared: asking again prepares another.
    [[nodiscard]] Statement prepare(const std::string& text);

    // Runs SQLite's own text that gives no rows.
    void run(const std::string& text);

    [[nodiscard]] std::int64_t changedRows() const;

    // As Database's.
    void setLongWork(std::function<void()> callback) noexcept;

    [[nodiscard]] const std::string& path() const noexcept { return path_; }

    // The last failure as an error with the engine's number.
    [[nodiscard]] RuntimeError lastError() const;

private:
    void open(OpenMode mode);
    void close() noexcept;
    void addFunctions();
    void requireWhole();

    std::string path_;
    sqlite3* handle_ = nullptr;
    std::function<void()> longWork_;
    std::chrono::steady_clock::time_point lastCalled_;
    std::unordered_map<std::string, std::vector<sqlite3_stmt*>> idle_;
};
