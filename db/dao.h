#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

// The database engine's objects, shaped after DAO, over SQLite. Statements are in the Jet dialect
// (db/jetTranslator.h). Every failure throws RuntimeError with one of the engine's numbers below.

namespace databaseError {
inline constexpr int objectClosed = 3420;    // the object was closed, or never opened
inline constexpr int noCurrentRecord = 3021; // a value was read at the end of a recordset
inline constexpr int duplicateKey = 3022;    // a row's key is already there
inline constexpr int fileMissing = 3024;     // the database file does not exist
inline constexpr int diskFull = 3026;        // no room for the change
inline constexpr int readOnly = 3027;        // the database or its folder cannot be written
inline constexpr int inUse = 3045;           // another program has the file
inline constexpr int damaged = 3049;         // the file's content is not sound
inline constexpr int cannotOpen = 3051;      // no permission, or not a file
inline constexpr int missingValue = 3061;    // a name in the statement is no column
inline constexpr int syntax = 3075;          // the text is no statement
inline constexpr int noSuchTable = 3078;
inline constexpr int notADatabase = 3343;
inline constexpr int unknownTargetField = 3127; // an appended row has a column that the table lacks
inline constexpr int noSuchField = 3265;
inline constexpr int engine = 3000; // anything else the engine reports
} // namespace databaseError

// A value that may be absent: NULL, a whole number, a real number or text.
using Value = std::variant<std::monostate, std::int64_t, double, std::string>;

// The value's text: "" for NULL, numbers in plain decimal digits where they are whole.
[[nodiscard]] std::string valueText(const Value& value);
void appendNumber(std::string& result, double number);

class Recordset;

// One column of a recordset: the current row's value when reading, the new row's when appending.
// Owned by its recordset; a reference stays good until the recordset is closed.
class Field {
public:
    [[nodiscard]] const std::string& name() const noexcept { return name_; }

    // --- reading the current row -----------------------------------------------------------------------
    [[nodiscard]] bool isNull() const;
    [[nodiscard]] std::string_view text() const; // valid until the next move; "" when NULL
    [[nodiscard]] double number() const;         // 0 when NULL
    [[nodiscard]] Value value() const;

    // --- filling the row begun with AddNew -------------------------------------------------------------
    void set(const Value& value);
    void setNumber(double number);
    void setInteger(std::int64_t number);
    void setText(std::string_view text); // not copied: must live until Update

private:
    friend class Recordset;
    Field(Recordset& recordset, std::string name, int index)
        : recordset_(&recordset), name_(std::move(name)), index_(index) {}

    Recordset* recordset_;
    std::string name_;
    int index_;
    mutable std::string digits_; // the text of a number
};

// The rows of a query, read forward one at a time as the engine finds them; or, opened on a table's name, a
// place to append rows. Neither copied nor moved; obtained from Database::OpenRecordset.
class Recordset {
public:
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    // True behind the last row; at once for an empty result. (EOF is a macro of the C library's.)
    [[nodiscard]] bool EndOfFile() const;
    void MoveNext();
    void MoveFirst();
    void MoveLast();

    // The number of rows, counted by a query of its own without reading or sorting them.
    [[nodiscard]] std::int64_t RecordCount();

    // A column by name (letter case does not matter) or position from 0. Throws 3265.
    [[nodiscard]] Field& Fields(std::string_view name);
    [[nodiscard]] Field& Fields(int index);
    [[nodiscard]] int FieldCount() const;

    // Begins a new row with every field NULL; Update stores it at the table's end.
    void AddNew();
    void Update();

    void Close() noexcept;

private:
    friend class Database;
    friend class Field;
    struct Implementation;
    explicit Recordset(std::unique_ptr<Implementation> implementation);
    [[nodiscard]] Implementation& open() const;
    [[nodiscard]] class Statement& current() const; // at the row being read
    [[nodiscard]] class Statement& fresh() const;   // for the row being appended

    std::unique_ptr<Implementation> implementation_;
};

// One open database file. Closed by its destructor; recordsets must be closed before it.
class Database {
public:
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // The internal path it was opened by.
    [[nodiscard]] const std::string& Name() const;

    // Runs a statement that gives no rows; returns the number of rows it touched.
    std::int64_t Execute(std::string_view statement);

    // Opens a table by its name for appending, or a SELECT's rows.
    [[nodiscard]] std::unique_ptr<Recordset> OpenRecordset(std::string_view tableOrStatement);

    // Between the two, changes are gathered in memory and written as the page cache fills.
    void BeginTrans();
    // After a failure the content of a scratch file cannot be relied on.
    void CommitTrans();

    // Takes the table's indexes away, so that many rows can be appended fast, and returns what
    // RestoreIndexes makes them of again.
    [[nodiscard]] std::vector<std::string> TakeIndexes(std::string_view table);
    void RestoreIndexes(const std::vector<std::string>& definitions);

    // Has the callback called every 10 ms while a statement runs long, so that a window answers meanwhile.
    // It must neither throw nor use this database. An empty one ends it.
    void setLongWork(std::function<void()> callback) noexcept;

    void Close() noexcept;

private:
    friend struct DBEngine;
    friend class Recordset;
    friend class SmallTransaction;
    struct Implementation;
    explicit Database(std::unique_ptr<Implementation> implementation);
    [[nodiscard]] Implementation& open() const;

    std::unique_ptr<Implementation> implementation_;
};

// A few changes, all or none of which are made: undone at the end of the scope unless committed. What they
// replace is kept in memory until then, so this is not for the rows of a scan. No other transaction may be
// open.
class SmallTransaction {
public:
    explicit SmallTransaction(Database& database);
    ~SmallTransaction();
    SmallTransaction(const SmallTransaction&) = delete;
    SmallTransaction& operator=(const SmallTransaction&) = delete;

    void commit();

private:
    Database& database_;
    bool open_ = true;
};

// The callback for the length of a scope.
class LongWork {
public:
    LongWork(Database& database, std::function<void()> callback) : database_(database) {
        database_.setLongWork(std::move(callback));
    }
    ~LongWork() { database_.setLongWork({}); }
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;

private:
    Database& database_;
};

// How a file is opened.
enum class OpenMode {
    scratch,  // the working database: exclusively, without journal or syncing
    readOnly, // a file from anywhere: nothing in it is trusted, nothing is written
};

struct DBEngine {
    // The file must exist. Throws 3024, 3051, 3045, 3343 or 3049 with the displayed path.
    [[nodiscard]] static std::unique_ptr<Database> OpenDatabase(std::string_view path,
                                                                OpenMode mode = OpenMode::scratch);
};
