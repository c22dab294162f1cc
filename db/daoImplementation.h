#pragma once

#include <deque>
#include <string>
#include <vector>

#include "db/connection.h"
#include "db/dao.h"
#include "db/jetTranslator.h"

// The implementation of the objects in db/dao.h.

struct Recordset::Implementation {
    Implementation(Connection& owner, Statement prepared, std::string counting)
        : connection(owner), statement(std::move(prepared)), countText(std::move(counting)) {}

    Connection& connection;
    Statement statement;
    std::string countText;            // SQLite's statement that counts the rows
    std::vector<Value> literals;      // of a query, for counting its rows
    std::vector<std::string> columns; // of a table opened for appending; empty for a query
    std::deque<Field> fields;
    bool atEnd = true;
};

struct Database::Implementation {
    explicit Implementation(std::string_view path, OpenMode mode);
    ~Implementation();
    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;

    // The rows of the statement in the translator.
    [[nodiscard]] std::unique_ptr<Recordset> openTranslated();

    Connection connection;
    JetTranslator translator;
    bool hasIndexes = true;
};
