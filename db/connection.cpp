#include "db/connection.h"

#include <sqlite3.h>

#include <array>
#include <cerrno>
#include <new>
#include <system_error>
#include <utility>

#include "db/enginesFiles.h"
#include "db/jetLike.h"
#include "platform/files.h"
#include "platform/locale.h"
#include "platform/ownership.h"
#include "platform/paths.h"
#include "platform/text.h"

using platform::NotDone;

namespace {

// Scratch data: if the program crashes, the next start replaces the file.
constexpr std::array scratchSettings{"pragma journal_mode = off", "pragma synchronous = off",
                                     "pragma locking_mode = exclusive", "pragma cache_size = -16384"};

constexpr std::array readOnlySettings{"pragma trusted_schema = off", "pragma cell_size_check = on",
                                      "pragma mmap_size = 0", "pragma cache_size = -16384"};

// What a file that is not trusted may have: several times as much as ours do, and no more than is read
// quickly.
constexpr std::array<std::pair<int, int>, 11> foreignLimits{{
    {SQLITE_LIMIT_LENGTH, 1 << 20}, // of a value or a row
    {SQLITE_LIMIT_SQL_LENGTH, 100'000},
    {SQLITE_LIMIT_COLUMN, 256},
    {SQLITE_LIMIT_EXPR_DEPTH, 100},
    {SQLITE_LIMIT_COMPOUND_SELECT, 50},
    {SQLITE_LIMIT_VDBE_OP, 25'000},
    {SQLITE_LIMIT_FUNCTION_ARG, 32},
    {SQLITE_LIMIT_ATTACHED, 0},
    {SQLITE_LIMIT_LIKE_PATTERN_LENGTH, 1000},
    {SQLITE_LIMIT_TRIGGER_DEPTH, 1},
    {SQLITE_LIMIT_WORKER_THREADS, 0},
}};

constexpr std::array foreignCode{SQLITE_DBCONFIG_ENABLE_VIEW, SQLITE_DBCONFIG_ENABLE_TRIGGER,
                                 SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION,
                                 SQLITE_DBCONFIG_ENABLE_FTS3_TOKENIZER};

constexpr int stepsPerLook = 10'000; // of the engine, between looks at the clock: about half a millisecond
constexpr std::uint64_t mostLooks = 100;      // for one stored row
constexpr std::uint64_t bytesPerLook = 5'000; // of a file whose rows are counted; a row has at least six
constexpr int waitForOtherProgram = 1000;     // milliseconds

constexpr std::string_view notWritable = "The database or its folder is not writable";
constexpr std::string_view inUse = "The database is already in use";
constexpr std::string_view cannotOpen = "The database cannot be opened";

struct EngineError {
    int code;
    int number;
    std::string_view cause;
    NotDone notDone; // with a file of the program's own
};

constexpr std::array<EngineError, 13> engineErrors{{
    {SQLITE_FULL, databaseError::diskFull, "The disk is full", NotDone::written},
    {SQLITE_READONLY, databaseError::readOnly, notWritable, NotDone::written},
    {SQLITE_BUSY, databaseError::inUse, inUse, NotDone::opened},
    {SQLITE_LOCKED, databaseError::inUse, inUse, NotDone::opened},
    {SQLITE_CORRUPT, databaseError::damaged, "The database is damaged", NotDone::read},
    {SQLITE_NOTADB, databaseError::notADatabase, "Unrecognized database format", NotDone::opened},
    {SQLITE_CANTOPEN, databaseError::cannotOpen, cannotOpen, NotDone::opened},
    {SQLITE_PERM, databaseError::cannotOpen, cannotOpen, NotDone::opened},
    {SQLITE_AUTH, databaseError::cannotOpen, cannotOpen, NotDone::opened},
    {SQLITE_CONSTRAINT, databaseError::duplicateKey, "The key is already in the table", NotDone::written},
    {SQLITE_IOERR, databaseError::engine, "The disk or the network has failed", NotDone::written},
    {SQLITE_INTERRUPT, databaseError::damaged, "The database is damaged; a row takes too long to read",
     NotDone::read},
    {SQLITE_TOOBIG, databaseError::damaged, "A value in the database is too long", NotDone::written},
}};

int numberOf(std::string_view message) {
    int number = databaseError::engine;
    if (message.starts_with("no such table")) {
        number = databaseError::noSuchTable;
    } else if (message.starts_with("no such column") ||
               message.find("has no column") != std::string_view::npos) {
        number = databaseError::missingValue;
    } else if (message.find("syntax error") != std::string_view::npos ||
               message.starts_with("incomplete input")) {
        number = databaseError::syntax;
    }
    return number;
}

std::string_view textOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value)); // NOLINT
    return text == nullptr ? std::string_view()
                           : std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
}

bool isNull(sqlite3_value* value) {
    return sqlite3_value_type(value) == SQLITE_NULL;
}

// Left(text, count): the first characters; NULL stays NULL.
void leftFunction(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
    if (isNull(arguments[0]) || isNull(arguments[1])) {
        return;
    }
    const int count = sqlite3_value_int(arguments[1]);
    if (count < 0) {
        sqlite3_result_error(context, "Invalid procedure call: Left with a negative count", -1);
        return;
    }
    const std::string_view result =
        platform::firstCharacters(textOf(arguments[0]), static_cast<std::size_t>(count));
    sqlite3_result_text(context, result.data(), static_cast<int>(result.size()), SQLITE_TRANSIENT);
}

// SQLite calls this for `text like pattern`, with the pattern first.
void likeFunction(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
    if (!isNull(arguments[0]) && !isNull(arguments[1])) {
        const auto matches = platform::namesIgnoreCase() ? jetLikeIgnoringCase : jetLike;
        sqlite3_result_int(context, matches(textOf(arguments[1]), textOf(arguments[0])) ? 1 : 0);
    }
}

int compareIgnoringCase(void* /*unused*/, int leftSize, const void* left, int rightSize, const void* right) {
    return platform::compareIgnoringCase(
        {static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
        {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

} // namespace

Statement::~Statement() {
    giveBack();
}

Statement::Statement(Statement&& other) noexcept
    : connection_(other.connection_), handle_(std::exchange(other.handle_, nullptr)), home_(other.home_) {}

Statement& Statement::operator=(Statement&& other) noexcept {
    if (this != &other) {
        giveBack();
        connection_ = other.connection_;
        handle_ = std::exchange(other.handle_, nullptr);
        home_ = other.home_;
    }
    return *this;
}

void Statement::giveBack() noexcept {
    if (handle_ == nullptr) {
        return;
    }
    sqlite3_reset(handle_);
    sqlite3_clear_bindings(handle_);
    try {
        home_->push_back(handle_);
    } catch (const std::bad_alloc&) {
        sqlite3_finalize(handle_);
    }
    handle_ = nullptr;
}

void Statement::bindNull(int position) {
    sqlite3_bind_null(handle_, position);
}

void Statement::bindInteger(int position, std::int64_t number) {
    sqlite3_bind_int64(handle_, position, number);
}

void Statement::bindNumber(int position, double number) {
    sqlite3_bind_double(handle_, position, number);
}

void Statement::bindText(int position, std::string_view text) {
    sqlite3_bind_text(handle_, position, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

void Statement::bindBorrowedText(int position, std::string_view text) {
    sqlite3_bind_text(handle_, position, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
}

void Statement::bindValue(int position, const Value& value) {
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        bindInteger(position, *whole);
    } else if (const auto* real = std::get_if<double>(&value)) {
        bindNumber(position, *real);
    } else if (const auto* text = std::get_if<std::string>(&value)) {
        bindText(position, *text);
    } else {
        bindNull(position);
    }
}

bool Statement::step() {
    connection_->looks_ = 0;
    const int result = sqlite3_step(handle_);
    if (result != SQLITE_ROW && result != SQLITE_DONE) {
        const RuntimeError error = connection_->lastError();
        sqlite3_reset(handle_);
        throw error;
    }
    return result == SQLITE_ROW;
}

void Statement::reset() {
    sqlite3_reset(handle_);
}

void Statement::run() {
    while (step()) {
    }
    reset();
}

int Statement::columnCount() const {
    return sqlite3_column_count(handle_);
}

const char* Statement::columnName(int column) const {
    return sqlite3_column_name(handle_, column);
}

bool Statement::isNull(int column) const {
    return sqlite3_column_type(handle_, column) == SQLITE_NULL;
}

bool Statement::isReal(int column) const {
    return sqlite3_column_type(handle_, column) == SQLITE_FLOAT;
}

bool Statement::isText(int column) const {
    const int type = sqlite3_column_type(handle_, column);
    return type == SQLITE_TEXT || type == SQLITE_BLOB;
}

std::string_view Statement::text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(handle_, column)); // NOLINT
    return text == nullptr
               ? std::string_view()
               : std::string_view(text, static_cast<std::size_t>(sqlite3_column_bytes(handle_, column)));
}

double Statement::number(int column) const {
    return sqlite3_column_double(handle_, column);
}

Value Statement::value(int column) const {
    switch (sqlite3_column_type(handle_, column)) {
    case SQLITE_NULL:
        return std::monostate();
    case SQLITE_INTEGER:
        return static_cast<std::int64_t>(sqlite3_column_int64(handle_, column));
    case SQLITE_FLOAT:
        return number(column);
    default:
        return std::string(text(column));
    }
}

Connection::Connection(std::string_view path, OpenMode mode)
    : path_(path), isTrusted_(mode == OpenMode::scratch),
      mostLooks_(mostLooks + (mode == OpenMode::inPlace ? platform::fileSize(path) / bytesPerLook : 0)) {
    try {
        open(mode);
    } catch (...) {
        close();
        throw;
    }
}

void Connection::open(OpenMode mode) {
    const std::string native = platform::toNative(path_);
    if (!platform::fileExists(path_)) { // also prevents the engine from blocking on a pipe
        throw failure(databaseError::fileMissing, "There is no such file", NotDone::opened);
    }
    if (isTrusted_ && platform::isStrangersFile(path_)) {
        throw failure(databaseError::cannotOpen, "Another user has made it", NotDone::opened);
    }
    const int flags = SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE |
                      (isTrusted_ ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY);
    const char* const files =
        isTrusted_ ? enginesFiles::withoutJournals() : enginesFiles::withRegularJournals();
    if (sqlite3_open_v2(native.c_str(), &handle_, flags, files) != SQLITE_OK) {
        throw lastError();
    }
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr); // an unknown [name] is an error, no text
    if (!isTrusted_) {
        distrust(mode);
    } else {
        if (sqlite3_db_readonly(handle_, "main") == 1) {
            throw failure(databaseError::readOnly, notWritable, NotDone::opened);
        }
        for (const char* setting : scratchSettings) {
            run(setting);
        }
    }
    addFunctions();
    run("select 1 from sqlite_master"); // the first access to the file: is it a database at all?
    if (mode == OpenMode::readOnly || mode == OpenMode::inPlace) {
        requireWhole();
    }
}

void Connection::distrust(OpenMode mode) {
    // Otherwise the engine would not open a truncated file.
    const bool anyLength = mode == OpenMode::schema;
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_DEFENSIVE, anyLength ? 0 : 1, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_WRITABLE_SCHEMA, anyLength ? 1 : 0, nullptr);
    for (const int code : foreignCode) {
        sqlite3_db_config(handle_, code, 0, nullptr);
    }
    for (const auto& [limit, most] : foreignLimits) {
        sqlite3_limit(handle_, limit, most);
    }
    watchSteps();
    sqlite3_busy_timeout(handle_, waitForOtherProgram);
    for (const char* setting : readOnlySettings) {
        run(setting);
    }
}

// The engine would treat a truncated last page as a page of zeros.
void Connection::requireWhole() {
    Statement sizes = prepare("select page_count * page_size from pragma_page_count, pragma_page_size");
    sizes.step();
    if (platform::fileSize(path_) < static_cast<std::uint64_t>(sizes.number(0))) {
        throw failure(databaseError::damaged, "The database is damaged; part of it is missing",
                      NotDone::read);
    }
}

void Connection::addFunctions() {
    const int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    sqlite3_create_function_v2(handle_, "jetLeft", 2, flags, nullptr, leftFunction, nullptr, nullptr,
                               nullptr);
    sqlite3_create_function_v2(handle_, "like", 2, flags, nullptr, likeFunction, nullptr, nullptr, nullptr);
    sqlite3_create_collation_v2(handle_, ignoringCase.data(), SQLITE_UTF8, nullptr, compareIgnoringCase,
                                nullptr);
}

Connection::~Connection() {
    close();
}

void Connection::close() noexcept {
    for (auto& [text, handles] : idle_) {
        for (sqlite3_stmt* handle : handles) {
            sqlite3_finalize(handle);
        }
    }
    sqlite3_close_v2(handle_);
}

Statement Connection::prepare(const std::string& text) {
    std::vector<sqlite3_stmt*>& home = idle_[text]; // the reference stays valid when texts are added
    sqlite3_stmt* handle = nullptr;
    if (home.empty()) {
        const int length = static_cast<int>(text.size()) + 1;
        if (sqlite3_prepare_v3(handle_, text.c_str(), length, SQLITE_PREPARE_PERSISTENT, &handle, nullptr) !=
            SQLITE_OK) {
            throw lastError();
        }
    } else {
        handle = home.back();
        home.pop_back();
    }
    return {*this, handle, home};
}

void Connection::run(const std::string& text) {
    if (sqlite3_exec(handle_, text.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw lastError();
    }
}

std::int64_t Connection::changedRows() const {
    return sqlite3_changes64(handle_);
}

std::int64_t Connection::allChangedRows() const {
    return sqlite3_total_changes64(handle_);
}

void Connection::setLongWork(std::function<void()> callback) noexcept {
    longWork_ = std::move(callback);
    lastCalled_ = std::chrono::steady_clock::now();
    watchSteps();
}

void Connection::watchSteps() noexcept {
    const auto look = [](void* self) { return static_cast<Connection*>(self)->look(); };
    sqlite3_progress_handler(handle_, stepsPerLook, longWork_ || !isTrusted_ ? +look : nullptr, this);
}

// Anything but 0 ends the statement. A stored row takes some fifty steps, however slow the disk is that it
// comes from; so steps without a row are work that the file's author has thought up.
int Connection::look() {
    static constexpr std::chrono::milliseconds pause{10};
    if (longWork_ && std::chrono::steady_clock::now() - lastCalled_ >= pause) {
        longWork_();
        lastCalled_ = std::chrono::steady_clock::now();
    }
    return isInterrupted_ || (!isTrusted_ && ++looks_ > mostLooks_) ? 1 : 0;
}

RuntimeError Connection::lastError() const {
    const bool tooLarge = errno == EFBIG; // the engine takes it for any other failure to write
    const int reason = sqlite3_system_errno(handle_);
    const int result = sqlite3_errcode(handle_);
    const int code = result == SQLITE_IOERR_WRITE && tooLarge ? SQLITE_FULL : result & 0xFF;
    for (const EngineError& known : engineErrors) {
        if (known.code == code) {
            std::string cause(known.cause);
            if (known.number == databaseError::cannotOpen && reason != 0) {
                cause += " (" + std::system_category().message(reason) + ")";
            }
            return failure(known.number, cause, known.notDone);
        }
    }
    const std::string message = sqlite3_errmsg(handle_);
    return isTrusted_ ? RuntimeError(numberOf(message), "The statement failed: " + message)
                      : failure(numberOf(message), "A statement failed (" + message + ")", NotDone::loaded);
}

RuntimeError Connection::failure(int number, std::string_view cause, NotDone notDone) const {
    return platform::fileError(number, cause, path_, isTrusted_ ? notDone : NotDone::loaded);
}
