#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "db/daoImplementation.h"
#include "platform/files.h"
#include "platform/locale.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace {

// The databases open in this process, so that `insert into T in 'file'` finds one of them by its name: a
// file that is open exclusively cannot be opened a second time.
std::vector<Database*>& openDatabases() {
    static std::vector<Database*> databases;
    return databases;
}

std::string quoted(std::string_view name) {
    std::string result = "\"";
    for (const char c : name) {
        result.append(c == '"' ? 2 : 1, c);
    }
    return result + '"';
}

Value valueOf(const JetTranslator::Literal& literal) {
    if (const auto* text = std::get_if<std::string_view>(&literal)) {
        return std::string(*text);
    }
    return std::get<double>(literal);
}

void bind(Statement& statement, const std::vector<JetTranslator::Literal>& literals) {
    int position = 0;
    for (const JetTranslator::Literal& literal : literals) {
        if (const auto* text = std::get_if<std::string_view>(&literal)) {
            statement.bindBorrowedText(++position, *text);
        } else {
            statement.bindNumber(++position, std::get<double>(literal));
        }
    }
}

bool isTableName(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) {
        const char lower = platform::asciiLower(c);
        return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') || c == '_';
    });
}

} // namespace

void appendNumber(std::string& result, double number) {
    constexpr double exactlyWhole = 9007199254740992.0 * 512; // digits beyond 2^53 are still whole
    char digits[32];                                          // NOLINT: to_chars wants an array
    std::to_chars_result end{};
    if (std::abs(number) < exactlyWhole && number == std::trunc(number)) {
        end = std::to_chars(digits, digits + sizeof digits, static_cast<std::int64_t>(number));
    } else {
        end = std::to_chars(digits, digits + sizeof digits, number);
    }
    result.append(digits, end.ptr);
}

std::string valueText(const Value& value) {
    std::string result;
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        result = std::to_string(*whole);
    } else if (const auto* real = std::get_if<double>(&value)) {
        appendNumber(result, *real);
    } else if (const auto* text = std::get_if<std::string>(&value)) {
        result = *text;
    }
    return result;
}

Database::Implementation::Implementation(std::string_view path, OpenMode mode)
    : connection(path, mode), translator(platform::namesIgnoreCase() ? Connection::ignoringCase : "") {}

Database::Implementation::~Implementation() = default;

std::unique_ptr<Recordset> Database::Implementation::openTranslated() {
    const std::string& text = translator.shape();
    auto rows = std::make_unique<Recordset::Implementation>(
        connection, connection.prepare(text),
        "select count(*) from (" + text.substr(0, translator.lengthWithoutOrder()) + ")");
    for (const JetTranslator::Literal& literal : translator.literals()) {
        rows->literals.push_back(valueOf(literal));
        rows->statement.bindValue(static_cast<int>(rows->literals.size()), rows->literals.back());
    }
    return std::unique_ptr<Recordset>(new Recordset(std::move(rows)));
}

std::int64_t Database::Implementation::insertIntoOtherFile(Database& self) {
    const std::string path = platform::toInternal(translator.targetFile());
    const std::string table(translator.targetTable());
    const auto found =
        std::find_if(openDatabases().begin(), openDatabases().end(), [&](const Database* database) {
            return database != &self && platform::sameName(platform::toInternal(database->Name()), path);
        });
    std::unique_ptr<Database> opened;
    if (found == openDatabases().end()) {
        opened = DBEngine::OpenDatabase(path);
    }
    Database& target = opened ? *opened : **found;

    const std::unique_ptr<Recordset> from = openTranslated();
    const std::unique_ptr<Recordset> into = target.OpenRecordset(table);
    std::vector<std::pair<Field*, Field*>> pairs;
    for (int i = 0; i < from->FieldCount(); ++i) {
        Field& source = from->Fields(i);
        Field* destination = nullptr;
        try {
            destination = &into->Fields(source.name());
        } catch (const RuntimeError&) {
            throw RuntimeError(databaseError::unknownTargetField,
                               "The INSERT INTO statement contains the unknown field name '" + source.name() +
                                   "': " + platform::displayPath(connection.path()));
        }
        pairs.emplace_back(&source, destination);
    }
    // Pages of a damaged or forged file may lead to each other without end.
    const std::uint64_t bytes =
        platform::fileSize(connection.path()) + platform::fileSize(connection.path() + "-wal");
    std::int64_t count = 0;
    for (; !from->EndOfFile(); from->MoveNext(), ++count) {
        if (static_cast<std::uint64_t>(count) > bytes) {
            throw RuntimeError(databaseError::damaged,
                               "The database is damaged; it has more rows than there is room for: " +
                                   platform::displayPath(connection.path()));
        }
        into->AddNew();
        for (const auto& [source, destination] : pairs) {
            destination->set(source->value());
        }
        into->Update();
    }
    return count;
}

Database::Database(std::unique_ptr<Implementation> implementation)
    : implementation_(std::move(implementation)) {
    openDatabases().push_back(this);
}

Database::~Database() {
    Close();
}

Database::Implementation& Database::open() const {
    if (!implementation_) {
        throw RuntimeError(databaseError::objectClosed, "The database is closed");
    }
    return *implementation_;
}

const std::string& Database::Name() const {
    return open().connection.path();
}

std::int64_t Database::Execute(std::string_view statement) {
    Implementation& self = open();
    self.translator.translate(statement);
    if (!self.translator.targetFile().empty()) {
        return self.insertIntoOtherFile(*this);
    }
    Statement prepared = self.connection.prepare(self.translator.shape());
    bind(prepared, self.translator.literals());
    prepared.run();
    return self.connection.changedRows();
}

std::unique_ptr<Recordset> Database::OpenRecordset(std::string_view tableOrStatement) {
    Implementation& self = open();
    if (!isTableName(tableOrStatement)) {
        self.translator.translate(tableOrStatement);
        return self.openTranslated();
    }
    const std::string table = quoted(tableOrStatement);
    std::vector<std::string> columns;
    std::string names;
    std::string places;
    const Statement layout = self.connection.prepare("select * from " + table + " limit 0");
    for (int column = 0; column < layout.columnCount(); ++column) {
        const char* comma = column == 0 ? "" : ", ";
        columns.emplace_back(layout.columnName(column));
        names.append(comma).append(quoted(columns.back()));
        places.append(comma).append("?");
    }
    auto rows = std::make_unique<Recordset::Implementation>(
        self.connection,
        self.connection.prepare("insert into " + table + " (" + names + ") values (" + places + ")"),
        "select count(*) from " + table);
    rows->columns = std::move(columns);
    return std::unique_ptr<Recordset>(new Recordset(std::move(rows)));
}

void Database::BeginTrans() {
    open().connection.run("begin");
}

void Database::CommitTrans() {
    open().connection.run("commit");
}

std::vector<std::string> Database::TakeIndexes(std::string_view table) {
    Connection& connection = open().connection;
    std::vector<std::string> definitions;
    std::vector<std::string> names;
    {
        Statement rows = connection.prepare(
            "select name, sql from sqlite_master where type = 'index' and sql is not null and tbl_name = ?1");
        rows.bindText(1, table);
        while (rows.step()) {
            names.emplace_back(rows.text(0));
            definitions.emplace_back(rows.text(1));
        }
    }
    for (const std::string& name : names) {
        connection.run("drop index " + quoted(name));
    }
    return definitions;
}

void Database::RestoreIndexes(const std::vector<std::string>& definitions) {
    for (const std::string& definition : definitions) {
        open().connection.run(definition);
    }
}

SmallTransaction::SmallTransaction(Database& database) : database_(database) {
    Connection& connection = database_.open().connection;
    connection.run("pragma journal_mode = memory");
    connection.run("begin");
}

SmallTransaction::~SmallTransaction() {
    try {
        Connection& connection = database_.open().connection;
        if (open_) {
            connection.run("rollback");
        }
        connection.run("pragma journal_mode = off");
    } catch (...) { // the engine has rolled back by itself, or the database was closed
    }
}

void SmallTransaction::commit() {
    database_.open().connection.run("commit");
    open_ = false;
}

void Database::setLongWork(std::function<void()> callback) noexcept {
    if (implementation_) {
        implementation_->connection.setLongWork(std::move(callback));
    }
}

void Database::Close() noexcept {
    std::erase(openDatabases(), this);
    implementation_.reset();
}

std::unique_ptr<Database> DBEngine::OpenDatabase(std::string_view path, OpenMode mode) {
    return std::unique_ptr<Database>(
        new Database(std::make_unique<Database::Implementation>(platform::toInternal(path), mode)));
}
