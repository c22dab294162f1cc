#include "views/findQuery.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/dateFormat.h"
#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "db/folderRows.h"
#include "db/jetLike.h"
#include "db/values.h"
#include "platform/locale.h"
#include "platform/paths.h"

namespace modFind {

namespace {

constexpr double firstStep = 4096; // rows of a slice
constexpr std::chrono::milliseconds slowSlice{8};
constexpr std::chrono::milliseconds quickSlice{3};
constexpr int mostLooked = 200'000;     // rows of an index that are looked at to narrow the table
constexpr std::size_t rowsPerLook = 64; // at the clock

std::string digitsOf(double number) {
    std::string result;
    modFormat::appendNumber(result, number);
    return result;
}

std::string_view withoutEnd(std::string_view name) {
    name.remove_suffix(name.ends_with('\\') ? 1 : 0);
    return name;
}

const char* columnOf(Date date) {
    return date == Date::modified ? "dateModified" : "dateAccessed";
}

std::optional<double> keyOf(const Field& date) {
    const auto time = modFormat::parseDate(date.text());
    return time ? std::optional(modFormat::momentKey(*time)) : std::nullopt;
}

std::optional<double> keyOf(const std::optional<platform::LocalTime>& time) {
    return time ? std::optional(modFormat::momentKey(*time)) : std::nullopt;
}

// The longest part of the pattern that a name must have as it is.
std::string_view longestText(std::string_view typed) {
    std::string_view longest;
    for (std::size_t begin = 0; begin <= typed.size();) {
        const std::size_t end = std::min(typed.find_first_of("*?", begin), typed.size());
        if (end - begin > longest.size()) {
            longest = typed.substr(begin, end - begin);
        }
        begin = end + 1;
    }
    return longest;
}

// Of the path that the two parts make.
std::size_t hashOf(std::string_view folder, std::string_view name) {
    return platform::NameHash()(std::string(folder).append(name));
}

} // namespace

std::string_view Item::nameAlone() const noexcept {
    return withoutEnd(name);
}

std::string foundText(Kind kind, std::int64_t count, double size) {
    const bool isFile = kind == Kind::files;
    return modFormat::countedText(static_cast<double>(count), isFile ? "file" : "folder",
                                  isFile ? "files" : "folders") +
           ", " + modLvw::formatSize(size);
}

// The current row of a slice. Columns that no condition needs are not read.
class FindQuery::Row {
public:
    Row(Recordset& rows, const FindQuery& query)
        : idx(rows.Fields("idx")), size(rows.Fields("size")),
          fileName(query.name_.empty() && query.conditions_.kind != Kind::emptyFolders
                       ? nullptr
                       : &rows.Fields("fileName")),
          date(query.older_ || query.newer_ ? &rows.Fields(columnOf(query.conditions_.date)) : nullptr),
          rank(query.order_.by == Order::By::size
                   ? nullptr
                   : &rows.Fields(
                         columnOf(query.order_.by == Order::By::modified ? Date::modified : Date::accessed))),
          parent(query.conditions_.kind == Kind::emptyFolders ? &rows.Fields("parentFolder") : nullptr),
          fits(parent == nullptr ? nullptr : &rows.Fields("fits")) {}

    const Field& idx;
    const Field& size;
    const Field* fileName;
    const Field* date;
    const Field* rank;
    const Field* parent;
    const Field* fits;
};

FindQuery::FindQuery(const Conditions& conditions, const Order& order, std::string_view folder,
                     std::size_t most)
    : conditions_(conditions), order_(order), folder_(folder), most_(most), older_(keyOf(conditions.older)),
      newer_(keyOf(conditions.newer)) {
    if (conditions.name.empty()) {
        return;
    }
    const bool isText = !isPattern(conditions.name);
    isNameText_ = isText && !platform::namesIgnoreCase();
    name_ = likePattern(conditions.name, Form::name);
    if (isText && !isNameText_) {
        name_ = "*" + name_ + "*";
    }
    if (!platform::namesIgnoreCase()) {
        namePart_ = platform::internalName(longestText(conditions.name));
    }
}

double FindQuery::size() const noexcept {
    return modLvw::soundSize(size_);
}

void FindQuery::run(Database& database) {
    while (!advance(database, std::chrono::hours(1))) {
    }
}

bool FindQuery::advance(Database& database, std::chrono::milliseconds time) {
    const Clock::time_point end = Clock::now() + time;
    if (stage_ == Stage::begin) {
        begin(database);
    }
    if (stage_ == Stage::read) {
        read(database, end);
    }
    if (stage_ == Stage::fetch && Clock::now() < end) {
        fetch(database, end);
    }
    return stage_ == Stage::done;
}

// --- Where to look ----------------------------------------------------------------------------------------

std::string FindQuery::table() const {
    return conditions_.onlyChanged ? "changed" : "details";
}

void FindQuery::begin(Database& database) {
    const auto first = database.OpenRecordset("select min(idx) from " + table());
    const auto last = database.OpenRecordset("select max(idx) from " + table());
    row_ = first->Fields(0).number() - 1;
    lastRow_ = first->Fields(0).isNull() ? row_ : last->Fields(0).number();
    step_ = firstStep;
    stage_ = Stage::read;
    writeStatement(database.sizeColumn());
    const bool hasIndexes = !conditions_.onlyChanged && database.hasIndexes(); // of rows that are read
    if (folder_.empty() || (hasIndexes && modFolderRows::holdsAll(database, folder_))) {
        return;
    }
    condition_ += " and " + modFolderRows::anywhereInOfTable(folder_);
    if (hasIndexes) {
        narrow(database);
    }
}

// A scan records what is in a folder in one go, so the rows of a small part of the table are mostly next to
// each other.
void FindQuery::narrow(Database& database) {
    double first = std::numeric_limits<double>::infinity();
    double last = -first;
    int looked = 0;
    const auto rows =
        database.OpenRecordset("select idx from details where " + modFolderRows::anywhereIn(folder_));
    const Field& idx = rows->Fields(0);
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        if (++looked > mostLooked) {
            return;
        }
        first = std::min(first, idx.number());
        last = std::max(last, idx.number());
    }
    row_ = looked == 0 ? lastRow_ : first - 1;
    lastRow_ = looked == 0 ? lastRow_ : last;
}

// `size` is the column that counts.
void FindQuery::writeStatement(const std::string& size) {
    const bool findsEmpty = conditions_.kind == Kind::emptyFolders;
    const bool isDated = older_ || newer_;
    columns_ = "idx," + size + " as size";
    if (!name_.empty() || findsEmpty) {
        columns_ += ",fileName";
    }
    if ((isDated && conditions_.date == Date::modified) || order_.by == Order::By::modified) {
        columns_ += ",dateModified";
    }
    if ((isDated && conditions_.date == Date::accessed) || order_.by == Order::By::accessed) {
        columns_ += ",dateAccessed";
    }
    std::string fits = conditions_.kind == Kind::files ? "isFolder=0" : "isFolder=1";
    if (conditions_.larger) {
        fits += " and " + size + ">" + digitsOf(*conditions_.larger);
    }
    if (conditions_.smaller) {
        fits += " and " + size + "<" + digitsOf(*conditions_.smaller);
    }
    fits += textConditions(conditions_);
    if (conditions_.state) {
        fits += " and state=" + std::to_string(static_cast<int>(*conditions_.state));
    }
    if (findsEmpty) { // all rows are read, as each says of a folder that it is not; what was not read has no
                      // stamp
        columns_ += ",parentFolder,(" + fits + " and details.size=0 and scanCompleteTime<>\"\") as fits";
    } else {
        condition_ = " and " + fits;
    }
}

// --- Reading ----------------------------------------------------------------------------------------------

void FindQuery::read(Database& database, Clock::time_point end) {
    while (row_ < lastRow_) {
        const Clock::time_point start = Clock::now();
        if (start >= end) {
            return;
        }
        const double last = std::min(row_ + step_, lastRow_);
        readSlice(database, last);
        row_ = last;
        const auto taken = Clock::now() - start;
        step_ = std::max(firstStep / 4, taken > slowSlice    ? step_ / 2
                                        : taken < quickSlice ? step_ * 2
                                                             : step_);
    }
    finishReading();
}

void FindQuery::readSlice(Database& database, double last) {
    const auto rows = database.OpenRecordset("select " + columns_ + " from " + table() + " where idx>" +
                                             digitsOf(row_) + " and idx<=" + digitsOf(last) + condition_);
    const Row row(*rows, *this);
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        if (matches(row)) {
            const std::size_t path =
                row.parent == nullptr ? 0 : hashOf(row.parent->text(), row.fileName->text());
            add({rankOf(row).value_or(-std::numeric_limits<double>::infinity()), row.idx.number(),
                 modLvw::soundSize(row.size.number()), path});
        }
    }
}

bool FindQuery::matches(const Row& row) {
    if (row.parent != nullptr) {
        if (const std::string_view parent = row.parent->text(); parent != lastFilled_) {
            lastFilled_ = parent;
            filled_.insert(hashOf(parent, {}));
        }
        if (row.fits->number() != 1) {
            return false;
        }
    }
    if (!name_.empty() && !matchesName(withoutEnd(row.fileName->text()))) {
        return false;
    }
    if (row.date == nullptr) {
        return true;
    }
    const std::optional<double> moment = keyOf(*row.date);
    return moment && (!older_ || *moment < *older_) && (!newer_ || *moment > *newer_);
}

bool FindQuery::matchesName(std::string_view name) const {
    if (name.find(namePart_) == std::string_view::npos) {
        return false;
    }
    if (isNameText_) {
        return true;
    }
    return platform::namesIgnoreCase() ? jetLikeIgnoringCase(name, name_) : jetLike(name, name_);
}

std::optional<double> FindQuery::rankOf(const Row& row) const {
    const std::optional<double> value =
        row.rank == nullptr ? std::optional(modLvw::soundSize(row.size.number())) : keyOf(*row.rank);
    return value && !order_.descending ? std::optional(-*value) : value;
}

void FindQuery::add(const Found& found) {
    if (conditions_.kind != Kind::emptyFolders) { // which may yet turn out to be filled
        ++count_;
        size_ += found.size;
    }
    if (least_ && found.rank <= *least_) { // so many come before it, as rows are read in their order
        return;
    }
    found_.push_back(found);
    if (conditions_.kind != Kind::emptyFolders && most_ < all / 2 && found_.size() >= 2 * most_) {
        keepFirst();
        const auto last =
            std::min_element(found_.begin(), found_.end(),
                             [](const Found& left, const Found& right) { return left.rank < right.rank; });
        least_ = last == found_.end() ? least_ : std::optional(last->rank);
    }
}

void FindQuery::keepFirst() {
    const auto isBefore = [](const Found& left, const Found& right) {
        return left.rank != right.rank ? left.rank > right.rank : left.row < right.row;
    };
    const std::size_t kept = std::min(most_, found_.size());
    std::nth_element(found_.begin(), found_.begin() + static_cast<std::ptrdiff_t>(kept), found_.end(),
                     isBefore);
    found_.resize(kept);
    if (stage_ == Stage::fetch) {
        std::sort(found_.begin(), found_.end(), isBefore);
    }
}

void FindQuery::finishReading() {
    stage_ = Stage::fetch;
    if (conditions_.kind == Kind::emptyFolders) {
        std::erase_if(found_, [this](const Found& found) { return filled_.contains(found.path); });
        count_ = static_cast<std::int64_t>(found_.size());
    }
    keepFirst();
    items_.reserve(found_.size());
}

void FindQuery::fetch(Database& database, Clock::time_point end) {
    for (; fetched_ < found_.size(); ++fetched_) {
        if (fetched_ % rowsPerLook == 0 && Clock::now() >= end) {
            return;
        }
        const auto row = database.OpenRecordset(
            "select parentFolder,fileName,description,owner,dateModified,dateAccessed," +
            database.sizeColumn() + ",isFolder," + (conditions_.onlyChanged ? "state" : "0") + " from " +
            table() + " where idx=" + digitsOf(found_[fetched_].row));
        if (row->EndOfFile()) { // it is gone by now
            continue;
        }
        Item& item = items_.emplace_back();
        int column = 0;
        for (std::string* text :
             {&item.folder, &item.name, &item.description, &item.owner, &item.modified, &item.accessed}) {
            *text = row->Fields(column++).text();
        }
        item.size = modLvw::soundSize(row->Fields(column++).number());
        item.isFolder = row->Fields(column++).number() == 1;
        item.isGone = row->Fields(column).number() == static_cast<int>(modChanges::State::gone);
    }
    stage_ = Stage::done;
}

} // namespace modFind
