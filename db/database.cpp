#include <algorithm>
#include <utility>

#include "base/numberFormat.h"
#include "db/daoImplementation.h"
#include "db/values.h"
#include "platform/locale.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace {

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

std::string valueText(const Value& value) {
    std::string result;
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        result = std::to_string(*whole);
    } else if (const auto* real = std::get_if<double>(&value)) {
        modFormat::appendNumber(result, *real);
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

Database::Database(std::unique_ptr<Implementation> implementation)
    : implementation_(std::move(implementation)) {}

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
    Statement prepared = self.connection.prepare(self.translator.shape());
    bind(prepared, self.translator.literals());
    prepared.run();
    return self.connection.changedRows();
}

std::int64_t Database::changes() const {
    return open().connection.allChangedRows();
}

void Database::Define(const std::string& definition) {
    open().connection.run(definition);
}

std::unique_ptr<Recordset> Database::OpenRecordset(std::string_view tableOrStatement) {
    Implementation& self = open();
    if (!isTableName(tableOrStatement)) {
        self.translator.translate(tableOrStatement);
        return self.openTranslated();
    }
    const std::string table = modGlobal::quoted(tableOrStatement);
    std::vector<std::string> columns;
    std::string names;
    std::string places;
    const Statement layout = self.connection.prepare("select * from " + table + " limit 0");
    for (int column = 0; column < layout.columnCount(); ++column) {
        const char* comma = column == 0 ? "" : ", ";
        columns.emplace_back(layout.columnName(column));
        names.append(comma).append(modGlobal::quoted(columns.back()));
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
    open().hasIndexes = false;
    for (const std::string& name : names) {
        connection.run("drop index " + modGlobal::quoted(name));
    }
    return definitions;
}

void Database::RestoreIndexes(const std::vector<std::string>& definitions) {
    for (const std::string& definition : definitions) {
        open().connection.run(definition);
    }
    open().hasIndexes = true;
}

bool Database::hasIndexes() const {
    return open().hasIndexes;
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
    } catch (...) { // the engine has already rolled back, or the database was closed
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

void Database::interrupt() noexcept {
    if (implementation_) {
        implementation_->connection.interrupt();
    }
}

void Database::Close() noexcept {
    implementation_.reset();
}

std::unique_ptr<Database> DBEngine::OpenDatabase(std::string_view path, OpenMode mode) {
    return std::unique_ptr<Database>(
        new Database(std::make_unique<Database::Implementation>(platform::toInternal(path), mode)));
}
