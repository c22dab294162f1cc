#include "views/comparison.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>

#include "base/clsUserInterface.h"
#include "base/formatSize.h"
#include "db/folderRows.h"
#include "db/values.h"
#include "platform/locale.h"
#include "platform/text.h"
#include "views/changedFolders.h"

namespace modChanges {

namespace {

// Of a folder, in bytes: four for each character that a path may have.
constexpr std::size_t longestFolder = std::size_t{4} * 32767;

constexpr std::string_view columns =
    "select parentFolder,fileName,isFolder,size,dateModified,owner,extension from details where ";

// The columns of a query that begins so.
class EntryFields {
public:
    explicit EntryFields(Recordset& rows) {
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            fields_.at(i) = &rows.Fields(static_cast<int>(i));
        }
    }

    [[nodiscard]] std::string_view folder() const { return fields_[0]->text(); }
    [[nodiscard]] Entry entry(std::string_view folder) const {
        return {folder,
                fields_[1]->text(),
                fields_[2]->number() == 1,
                modLvw::soundSize(fields_[3]->number()),
                fields_[4]->text(),
                fields_[5]->text(),
                fields_[6]->text()};
    }

private:
    std::array<Field*, 7> fields_{};
};

// The rows below a folder in one of the two scans, in the order of their paths.
class Entries {
public:
    Entries(Database& database, std::string_view folder, bool foldersOnly)
        : rows_(database.OpenRecordset(
              std::string(columns) +
              (foldersOnly ? modFolderRows::foldersAnywhereIn(folder) : modFolderRows::anywhereIn(folder)) +
              " order by parentFolder,fileName")),
          fields_(*rows_), bytes_(folder.size()), characters_(platform::characterCount(folder)) {
        read();
    }

    [[nodiscard]] bool atEnd() const { return rows_->EndOfFile(); }
    [[nodiscard]] const Entry& current() const noexcept { return entry_; }

    void next() {
        rows_->MoveNext();
        read();
    }

private:
    // What lies in a folder whose path is too long is of no scan.
    void read() {
        for (; !rows_->EndOfFile(); rows_->MoveNext()) {
            const std::string_view folder = fields_.folder();
            if (folder.size() <= longestFolder) {
                entry_ = fields_.entry(behindStart(folder));
                return;
            }
        }
    }

    // If case is ignored, the start may be stored in another form, of another length in bytes.
    [[nodiscard]] std::string_view behindStart(std::string_view folder) const {
        return folder.substr(
            platform::namesIgnoreCase() ? platform::firstCharacters(folder, characters_).size() : bytes_);
    }

    std::unique_ptr<Recordset> rows_;
    EntryFields fields_;
    std::size_t bytes_;
    std::size_t characters_;
    Entry entry_;
};

// A folder's own row, which holds the texts of the entry.
struct OwnRow {
    OwnRow(Database& database, std::string_view folder)
        : rows(database.OpenRecordset(std::string(columns) + modFolderRows::itself(folder))) {
        if (!rows->EndOfFile()) {
            entry = EntryFields(*rows).entry({});
        }
    }

    std::unique_ptr<Recordset> rows;
    std::optional<Entry> entry;
};

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};

class Groups {
public:
    Group& of(std::string_view name) {
        if (last_ == nullptr || last_->name != name) {
            auto found = groups_.find(name);
            if (found == groups_.end()) {
                found = groups_.emplace(std::string(name), Group{}).first;
                found->second.name = name;
            }
            last_ = &found->second;
        }
        return *last_;
    }

    [[nodiscard]] std::vector<Group> largestFirst() {
        std::vector<Group> result;
        result.reserve(groups_.size());
        for (auto& [name, group] : groups_) {
            result.push_back(std::move(group));
        }
        std::sort(result.begin(), result.end(), [](const Group& left, const Group& right) {
            const double leftChange = std::abs(left.change());
            const double rightChange = std::abs(right.change());
            return leftChange != rightChange ? leftChange > rightChange : left.name < right.name;
        });
        return result;
    }

private:
    std::unordered_map<std::string, Group, TextHash, std::equal_to<>> groups_;
    Group* last_ = nullptr; // of the file before
};

bool holdsFiles(Database& database, std::string_view folder) {
    return !database
                .OpenRecordset("select idx from details where " + modFolderRows::anywhereIn(folder) +
                               " and isFolder=0")
                ->EndOfFile();
}

bool isSavedWithoutFiles(Database& database, std::string_view folder) {
    const OwnRow own(database, folder);
    const double size = own.entry ? own.entry->size : modFolderRows::sum(database, folder);
    return size != 0 && !holdsFiles(database, folder);
}

std::int64_t countOf(Database& database, std::string_view folder) {
    const modFolderRows::ItemCounts counts = modFolderRows::count(database, folder);
    return counts.files + counts.folders;
}

// Reads both scans at once.
class Merge {
public:
    Merge(const Sources& sources, const Request& request, Result& result)
        : now_(sources.now, request.folder, result.foldersOnly),
          before_(sources.before, request.folderBefore, result.foldersOnly),
          table_(sources.before, request.number), folders_(table_, request, result), result_(result) {
        const OwnRow before(sources.before, request.folderBefore);
        const OwnRow now(sources.now, request.folder);
        folders_.setItself(before.entry, now.entry);
    }

    [[nodiscard]] bool atEnd() const { return now_.atEnd() && before_.atEnd(); }

    void step() {
        const int order = before_.atEnd() ? -1 : now_.atEnd() ? 1 : compare();
        if (order < 0) {
            take(nullptr, &now_.current());
            now_.next();
        } else if (order > 0) {
            take(&before_.current(), nullptr);
            before_.next();
        } else {
            take(&before_.current(), &now_.current());
            before_.next();
            now_.next();
        }
    }

    void finish() {
        folders_.finish();
        result_.types = types_.largestFirst();
        result_.owners = owners_.largestFirst();
    }

private:
    [[nodiscard]] int compare() const {
        const Entry& now = now_.current();
        const Entry& before = before_.current();
        const int folders = platform::compareNames(now.folder, before.folder);
        const int names = folders != 0 ? folders : platform::compareNames(now.name, before.name);
        return names != 0 || now.isFolder == before.isFolder ? names : now.isFolder ? -1 : 1;
    }

    void take(const Entry* before, const Entry* now) {
        folders_.add(before, now);
        for (const Entry* entry : {before, now}) {
            if (entry != nullptr && !entry->isFolder) {
                count(types_.of(entry->extension), entry->size, entry == now);
                count(owners_.of(entry->owner), entry->size, entry == now);
            }
        }
    }

    static void count(Group& group, double size, bool isNow) {
        (isNow ? group.now : group.before) += size;
        ++(isNow ? group.filesNow : group.filesBefore);
    }

    Entries now_;
    Entries before_;
    Table table_;
    ChangedFolders folders_;
    Groups types_;
    Groups owners_;
    Result& result_;
};

} // namespace

std::string remark(const std::vector<modScans::Scan>& before, const std::vector<modScans::Scan>& now,
                   bool oneLacksFiles) {
    std::string text = modScans::differences(before, now);
    if (oneLacksFiles) {
        text.append(text.empty() ? "" : ", ")
            .append("one of the two has no files, so only folders are compared");
    }
    return text.empty() ? text : "Compared although the two scans differ: " + text + ".";
}

Result compare(const Sources& sources, const Request& request) {
    constexpr std::int64_t rowsPerLook = 1024;
    Result result;
    const bool nowWithout = isSavedWithoutFiles(sources.now, request.folder);
    const bool beforeWithout = isSavedWithoutFiles(sources.before, request.folderBefore);
    result.foldersOnly = nowWithout || beforeWithout;
    result.oneLacksFiles = nowWithout != beforeWithout;
    const auto yield = [&] { sources.userInterface.yieldToEvents(); };
    const LongWork reading(sources.now, yield);
    const LongWork writing(sources.before, yield);
    ShownProgress progress(sources.userInterface, std::max(countOf(sources.now, request.folder),
                                                           countOf(sources.before, request.folderBefore)));
    const auto goesOn = [&] { return !sources.goesOn || sources.goesOn(); };
    sources.before.BeginTrans();
    {
        Merge merge(sources, request, result);
        std::int64_t steps = 0;
        while (!merge.atEnd() && (steps % rowsPerLook != 0 || goesOn())) {
            merge.step();
            progress.step();
            ++steps;
        }
        result.complete = merge.atEnd();
        merge.finish();
    }
    sources.before.CommitTrans();
    return result;
}

} // namespace modChanges
