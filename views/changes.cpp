#include "views/changes.h"

#include <algorithm>
#include <cmath>

#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "db/values.h"
#include "platform/locale.h"
#include "views/folderFigures.h"

namespace modChanges {

namespace {

constexpr std::array<std::string_view, states> stateTexts{"same",  "new",    "gone",
                                                          "grown", "shrunk", "touched"};

// In the order in which rows are written.
constexpr std::array<std::string_view, 15> columns{
    "parentFolder", "fileName",    "isFolder",   "sizeBefore",  "sizeNow",
    "state",        "filesBefore", "filesNow",   "differences", "dateModified",
    "owner",        "extension",   "comparison", "sizeChange",  "amount"};
constexpr std::size_t readColumns = 12; // of these

std::string digitsOf(std::int64_t number) {
    return std::to_string(number);
}

std::string ofComparison(std::int64_t comparison) {
    return "comparison=" + digitsOf(comparison);
}

std::optional<double> sizeOf(const Field& field) {
    return field.isNull() ? std::nullopt : std::optional(modLvw::soundSize(field.number()));
}

State stateOf(const Field& field) {
    const auto number = static_cast<std::size_t>(field.number());
    return static_cast<State>(std::min(number, states - 1));
}

State stateOf(double before, double now) {
    return now > before ? State::grown : now < before ? State::shrunk : State::same;
}

bool isLarger(const Change& left, const Change& right) {
    return std::abs(left.change()) > std::abs(right.change());
}

// The first of them; all if `most` is 0.
std::vector<Change> rowsOf(Database& database, const std::string& condition, std::size_t most = 0) {
    std::vector<Change> result;
    Reader reader(database, condition, Reader::Order::largestFirst);
    for (; !reader.atEnd() && (most == 0 || result.size() < most); reader.next()) {
        result.push_back(reader.row());
    }
    return result;
}

} // namespace

std::string_view stateText(State state) {
    return stateTexts[static_cast<std::size_t>(state)];
}

std::string_view Change::nameAlone() const noexcept {
    std::string_view result = name;
    result.remove_suffix(result.ends_with('\\') ? 1 : 0);
    return result;
}

void makeTable(Database& database) {
    const std::string path = platform::namesIgnoreCase() ? "text collate nocase" : "text";
    database.Define("create table changes (number integer primary key, parentFolder " + path + ", fileName " +
                    path +
                    ", isFolder smallint, sizeBefore double, sizeNow double, state smallint,"
                    " filesBefore double, filesNow double, differences integer, dateModified text,"
                    " owner text, extension text, comparison integer, sizeChange double, amount double)");
    database.Define("create index changes_parentFolder on changes (parentFolder)");
    database.Define(
        "create view changed as select number as idx, parentFolder, fileName, null as description,"
        " isFolder, coalesce(sizeNow, sizeBefore) as size, dateModified, null as dateAccessed,"
        " owner, extension, state from changes");
}

Table::Table(Database& database, std::int64_t comparison)
    : comparison_(comparison), rows_(database.OpenRecordset("changes")) {
    std::transform(columns.begin(), columns.end(), fields_.begin(),
                   [this](std::string_view column) { return &rows_->Fields(column); });
}

void Table::append(const Change& change) {
    rows_->AddNew();
    const auto* field = fields_.data();
    const auto next = [&]() -> Field& { return **field++; };
    const auto setSize = [&](const std::optional<double>& size) {
        Field& place = next();
        if (size) {
            place.setNumber(*size);
        }
    };
    next().setText(change.folder);
    next().setText(change.name);
    next().setInteger(change.isFolder ? 1 : 0);
    setSize(change.before);
    setSize(change.now);
    next().setInteger(static_cast<std::int64_t>(change.state));
    next().setNumber(change.filesBefore);
    next().setNumber(change.filesNow);
    next().setInteger(change.differences);
    next().setText(change.modified);
    next().setText(change.owner);
    next().setText(change.extension);
    next().setInteger(comparison_);
    next().setNumber(change.change());
    next().setNumber(std::abs(change.change()));
    rows_->Update();
}

Reader::Reader(Database& database, const std::string& condition, Order order) {
    std::string statement = "select ";
    for (std::size_t i = 0; i < readColumns; ++i) {
        statement.append(i == 0 ? "" : ",").append(columns.at(i));
    }
    statement.append(" from changes ").append(condition.empty() ? "" : "where ").append(condition);
    statement.append(order == Order::largestFirst ? " order by amount desc,number"
                                                  : " order by parentFolder,fileName");
    rows_ = database.OpenRecordset(statement);
    for (std::size_t i = 0; i < readColumns; ++i) {
        fields_.at(i) = &rows_->Fields(static_cast<int>(i));
    }
}

const Change& Reader::row() {
    if (std::exchange(isRead_, true)) {
        return row_;
    }
    const auto* field = fields_.data();
    const auto next = [&]() -> const Field& { return **field++; };
    row_.folder = next().text();
    row_.name = next().text();
    row_.isFolder = next().number() == 1;
    row_.before = sizeOf(next());
    row_.now = sizeOf(next());
    row_.state = stateOf(next());
    row_.filesBefore = next().number();
    row_.filesNow = next().number();
    row_.differences = static_cast<std::int64_t>(next().number());
    row_.modified = next().text();
    row_.owner = next().text();
    row_.extension = next().text();
    return row_;
}

void Reader::next() {
    rows_->MoveNext();
    isRead_ = false;
}

std::optional<Change> folderRow(Database& database, std::int64_t comparison, std::string_view folder) {
    using modGlobal::quoted;
    const auto [parent, name] = splitKey(folder);
    Reader reader(database,
                  ofComparison(comparison) + " and isFolder=1 and parentFolder=" + quoted(parent) +
                      " and fileName=" + quoted(name),
                  Reader::Order::largestFirst);
    return reader.atEnd() ? std::nullopt : std::optional(reader.row());
}

std::vector<Change> entriesIn(Database& database, std::int64_t comparison, std::string_view folder) {
    return rowsOf(database, ofComparison(comparison) + " and parentFolder=" + modGlobal::quoted(folder));
}

std::vector<Change> childrenOf(Database& database, std::int64_t comparison, std::string_view folder) {
    std::vector<Change> result = rowsOf(
        database, ofComparison(comparison) + " and isFolder=1 and parentFolder=" + modGlobal::quoted(folder));
    const std::optional<Change> itself = folderRow(database, comparison, folder);
    if (itself && (itself->filesBefore != 0 || itself->filesNow != 0)) {
        Change files;
        files.folder = folder;
        files.name = modFigures::filesLabel;
        files.before = itself->filesBefore;
        files.now = itself->filesNow;
        files.state = stateOf(*files.before, *files.now);
        result.insert(std::upper_bound(result.begin(), result.end(), files, isLarger), files);
    }
    return result;
}

void forget(Database& database, std::int64_t comparison) {
    database.Execute("delete * from changes where " + ofComparison(comparison));
}

std::vector<Change> largest(Database& database, std::int64_t comparison, bool folders, std::size_t most) {
    return rowsOf(database, ofComparison(comparison) + " and isFolder=" + (folders ? "1" : "0"), most);
}

std::pair<std::string_view, std::string_view> splitKey(std::string_view folder) {
    const std::size_t inner =
        folder.size() < 2 ? std::string_view::npos : folder.rfind('\\', folder.size() - 2);
    const std::size_t split = inner == std::string_view::npos ? 0 : inner + 1;
    return {folder.substr(0, split), folder.substr(split)};
}

} // namespace modChanges
