#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

// The objects of the database engine, modelled on DAO, over SQLite. Statements are in the Jet dialect
// (db/jetTranslator.h). Every failure throws RuntimeError with one of the engine's numbers below.

namespace databaseError {
inline constexpr int objectClosed = 3420;    // the object was closed, or never opened
inline constexpr int noCurrentRecord = 3021; // a value was read at the end of a recordset
inline constexpr int duplicateKey = 3022;    // a row with this key already exists
inline constexpr int fileMissing = 3024;     // the database file does not exist
inline constexpr int diskFull = 3026;        // not enough space for the change
inline constexpr int readOnly = 3027;        // the database or its folder is not writable
inline constexpr int inUse = 3045;           // another program is using the file
inline constexpr int damaged = 3049;         // the file's content is invalid
inline constexpr int cannotOpen = 3051;      // no permission, or not a file
inline constexpr int missingValue = 3061;    // a name in the statement is not a column
inline constexpr int syntax = 3075;          // the text is not a statement
inline constexpr int noSuchTable = 3078;
inline constexpr int notADatabase = 3343;
inline constexpr int unknownTargetField = 3127; // an appended row has a column that the table lacks
inline constexpr int noSuchField = 3265;
inline constexpr int engine = 3000; // anything else the engine reports
} // namespace databaseError

// A value that may be absent: NULL, a whole number, a real number or text.
using Value = std::variant<std::monostate, std::int64_t, double, std::string>;

// The value as text: "" for NULL; whole numbers in plain decimal digits.
[[nodiscard]] std::string valueText(const Value& value);

class Recordset;

// One column of a recordset: the current row's value when reading, the new row's value when appending. Owned
// by its recordset; references are valid until the recordset is closed.
class Field {
public:
    [[nodiscard]] const std::string& name() const noexcept { return name_; }

    // --- reading the current row -----------------------------------------------------------------------
    [[nodiscard]] bool isNull() const;
    [[nodiscard]] std::string_view text() const; // valid until the next move; "" if NULL
    [[nodiscard]] double number() const;         // 0 if NULL
    [[nodiscard]] Value value() const;
    // Whether it is stored as text or bytes, so that `text` is all that there is to it.
    [[nodiscard]] bool isText() const;

    // --- filling the row begun with AddNew -------------------------------------------------------------
    void set(const Value& value);
    void setNumber(double number);
    void setInteger(std::int64_t number);
    void setText(std::string_view text); // not copied: must live until Update

private:
    friend class Recordset;
    void beginRow() noexcept { isSet_ = false; }
    void endRow();
    Field(Recordset& recordset, std::string name, int index)
        : recordset_(&recordset), name_(std::move(name)), index_(index) {}

    Recordset* recordset_;
    std::string name_;
    int index_;
    mutable std::string digits_; // the text of a number

    // Of a field being appended. What the engine holds stays with it from row to row; a text that lies where
    // the last one lay need not be handed to it again, as it is read when the row is stored.
    enum class Held { nothing, text, integer, number, other };
    Held held_ = Held::nothing;
    std::string_view heldText_;
    std::int64_t heldInteger_ = 0;
    double heldNumber_ = 0;
    bool isSet_ = false;
};

// The rows of a query, read forward one at a time as the engine finds them; or, if opened with a table's
// name, a means to append rows. Cannot be copied or moved; obtained from Database::OpenRecordset.
class Recordset {
public:
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    // True after the last row, and at once for an empty result. (EOF is a macro of the C library.)
    [[nodiscard]] bool EndOfFile() const;
    void MoveNext();
    void MoveFirst();
    void MoveLast();

    // The number of rows, counted by a separate query without reading or sorting them.
    [[nodiscard]] std::int64_t RecordCount();

    // A column by name (ignoring case) or position (from 0). Throws 3265.
    [[nodiscard]] Field& Fields(std::string_view name);
    [[nodiscard]] Field& Fields(int index);
    [[nodiscard]] Field* find(std::string_view name); // the same; null if there is no such column
    [[nodiscard]] int FieldCount() const;

    // Starts a new row with all fields NULL; Update appends it to the table.
    void AddNew();
    void Update();

    void Close() noexcept;

private:
    friend class Database;
    friend class Field;
    struct Implementation;
    explicit Recordset(std::unique_ptr<Implementation> implementation);
    [[nodiscard]] Implementation& open() const;
    [[nodiscard]] class Statement& current() const; // of the row being read
    [[nodiscard]] class Statement& fresh() const;   // of the row being appended

    std::unique_ptr<Implementation> implementation_;
};

// One open database file. The destructor closes it; recordsets must be closed first.
class Database {
public:
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // The internal path with which it was opened.
    [[nodiscard]] const std::string& Name() const;

    // Runs a statement that returns no rows; returns the number of rows affected.
    std::int64_t Execute(std::string_view statement);

    // How many rows have been appended, changed and removed since it was opened. As long as it is the same,
    // so are the rows.
    [[nodiscard]] std::int64_t changes() const;

    // Makes a table or an index, from the engine's own text, which must hold nothing of other people.
    void Define(const std::string& definition);

    // Opens a table by name for appending, or the rows of a SELECT.
    [[nodiscard]] std::unique_ptr<Recordset> OpenRecordset(std::string_view tableOrStatement);

    // Opens the rows of a table in a file that is not trusted, as they are stored. Throws 3078 if there is no
    // such table, and 3049 if reading it would run what the file's author wrote: for a view, a virtual table,
    // or a table with generated columns or triggers.
    [[nodiscard]] std::unique_ptr<Recordset> OpenStored(std::string_view table);

    // Throws 3049 unless statements about the table, in a file that is not trusted, run nothing that the
    // file's author wrote: as OpenStored does, and if an index of the table is one of expressions or leaves
    // out other rows than the template's.
    void requireStored(std::string_view table);

    // Between these two, changes are collected in memory and written as the page cache fills.
    void BeginTrans();
    // After a failure, the content of a scratch file is unreliable.
    void CommitTrans();

    // Drops the table's indexes, so that many rows can be appended quickly, and returns the statements from
    // which RestoreIndexes creates them again.
    [[nodiscard]] std::vector<std::string> TakeIndexes(std::string_view table);
    void RestoreIndexes(const std::vector<std::string>& definitions);
    // False between these two.
    [[nodiscard]] bool hasIndexes() const;

    // Calls the callback every 10 ms while a statement runs long, so that a window stays responsive. It must
    // neither throw nor use this database. An empty callback ends this.
    void setLongWork(std::function<void()> callback) noexcept;
    // For the callback: ends the statement, which then throws 3049, and all later ones that run long.
    void interrupt() noexcept;

    // True if rows came from a saved scan, which anyone may have made. What writes them for other programs
    // then takes more care than their names would need.
    [[nodiscard]] bool holdsLoadedRows() const noexcept { return holdsLoadedRows_; }
    void setHoldsLoadedRows(bool holds) noexcept { holdsLoadedRows_ = holds; }

    // The column of table "details" that figures count as the size of an item (WorkingDatabase).
    [[nodiscard]] bool countsSizeOnDisk() const noexcept { return countsSizeOnDisk_; }
    [[nodiscard]] std::string sizeColumn() const { return countsSizeOnDisk_ ? "sizeOnDisk" : "size"; }
    // As the column "size" of a query's rows.
    [[nodiscard]] std::string selectedSize() const {
        return countsSizeOnDisk_ ? "sizeOnDisk as size" : "size";
    }
    void setCountsSizeOnDisk(bool counts) noexcept { countsSizeOnDisk_ = counts; }

    void Close() noexcept;

private:
    friend struct DBEngine;
    friend class Recordset;
    friend class SmallTransaction;
    struct Implementation;
    explicit Database(std::unique_ptr<Implementation> implementation);
    [[nodiscard]] Implementation& open() const;

    std::unique_ptr<Implementation> implementation_;
    bool holdsLoadedRows_ = false;
    bool countsSizeOnDisk_ = false;
};

// Makes a few changes, all or none: they are undone at the end of the scope unless committed. The replaced
// content is kept in memory until then, so this is not for the rows of a scan. No other transaction may be
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

// Sets the callback during a scope.
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
    scratch,  // the working database: exclusive, without journal or syncing
    readOnly, // a file from anywhere: its content is not trusted, and nothing is written
    inPlace,  // like readOnly; a row of a result may take as much work as going through the file once
    schema,   // like readOnly, to look at the file's structure; it may be truncated
};

struct DBEngine {
    // The file must exist. Throws 3024, 3051, 3045, 3343 or 3049 with the displayed path.
    [[nodiscard]] static std::unique_ptr<Database> OpenDatabase(std::string_view path,
                                                                OpenMode mode = OpenMode::scratch);
};
