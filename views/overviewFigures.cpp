#include "views/overviewFigures.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "base/clsFile.h"
#include "base/dateFormat.h"
#include "base/formatSize.h"
#include "db/folderRows.h"
#include "platform/locale.h"
#include "views/largestFiles.h"

namespace {

using modFigures::Overview;
using modFigures::OverviewFile;
using modFigures::OverviewFolder;
using modFigures::OverviewGroup;
using modFigures::OverviewLimits;

// Finds the group of a name; rows that follow each other mostly have the same.
class Groups {
public:
    void add(std::string_view name, double size) {
        if (last_ == nullptr || name != last_->first) {
            auto found = totals_.find(name);
            if (found == totals_.end()) {
                found = totals_.emplace(name, Total()).first;
            }
            last_ = &*found;
        }
        last_->second.size += size;
        ++last_->second.files;
    }

    [[nodiscard]] std::size_t count() const noexcept { return totals_.size(); }

    [[nodiscard]] std::vector<OverviewGroup> largest(std::size_t most) const {
        std::vector<const Totals::value_type*> found;
        for (const auto& total : totals_) {
            found.push_back(&total);
        }
        const auto end = found.begin() + static_cast<std::ptrdiff_t>(std::min(most, found.size()));
        std::partial_sort(found.begin(), end, found.end(), [](const auto* left, const auto* right) {
            const double first = left->second.size;
            const double second = right->second.size;
            return first != second ? first > second : left->first < right->first;
        });
        std::vector<OverviewGroup> result;
        for (auto each = found.begin(); each != end; ++each) {
            const auto& [name, total] = **each;
            result.push_back({name, modLvw::soundSize(total.size), total.files});
        }
        return result;
    }

private:
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };
    struct Total {
        double size = 0;
        std::int64_t files = 0;
    };
    using Totals = std::unordered_map<std::string, Total, Hash, std::equal_to<>>;

    Totals totals_;
    Totals::value_type* last_ = nullptr;
};

// What is directly in one of the upper folders.
struct Content {
    double filesSize = 0;
    std::int64_t files = 0;
    std::vector<std::pair<std::string, double>> folders;
};

class Reader {
public:
    Reader(Database& database, std::string_view key, const OverviewLimits& limits,
           const std::function<void()>& rowRead)
        : database_(database), key_(key), limits_(limits), rowRead_(rowRead) {}

    void readFiles();
    void readFolders(const std::function<bool(std::string_view)>& isUnread);
    [[nodiscard]] Overview result();

private:
    void enter(std::string_view parent);
    [[nodiscard]] OverviewFile fileAt(const LargestFiles::Entry& entry);
    [[nodiscard]] OverviewFolder folderOf(const std::string& path, double size, std::size_t level);
    void takeOldest();
    [[nodiscard]] bool isScannedRoot() const;
    void noteRow(std::int64_t number) {
        lastRow_ = std::max(lastRow_, number);
        if (++rows_ % 256 == 0) {
            rowRead_();
        }
    }

    Database& database_;
    std::string key_;
    const OverviewLimits& limits_;
    const std::function<void()>& rowRead_;
    Overview overview_;
    Groups types_;
    Groups owners_;
    LargestFiles largest_{1000};
    std::unordered_map<std::string, Content> upper_; // by path
    Content* content_ = nullptr;                     // of the current folder; null further down
    std::string parent_;                             // of the current row
    std::unordered_set<std::size_t> filled_;         // hashes of the paths of all folders that hold anything
    std::vector<std::pair<std::size_t, std::int64_t>> perhapsEmpty_; // hashes and rows
    bool hasUnfinished_ = false;                                     // folders directly in it
    std::int64_t lastRow_ = 0;
    std::int64_t rows_ = 0;
};

// Of the folders down to the last level that is shown, contents are kept.
void Reader::enter(std::string_view parent) {
    if (parent == parent_) {
        return;
    }
    parent_ = parent;
    filled_.insert(platform::NameHash()(parent));
    const std::string_view below = parent.substr(std::min(parent.size(), key_.size()));
    const auto level = static_cast<std::size_t>(std::count(below.begin(), below.end(), '\\'));
    content_ = level < limits_.largestFolders.size() ? &upper_[key_ + std::string(below)] : nullptr;
}

void Reader::readFiles() {
    const auto rows = database_.OpenRecordset(
        "select idx," + database_.selectedSize() +
        ",extension,owner,dateModified,parentFolder from details where " +
        modFolderRows::filesAnywhereIn(database_, key_, modFolderRows::Form::pattern));
    const Field& number = rows->Fields("idx");
    const Field& size = rows->Fields("size");
    const Field& extension = rows->Fields("extension");
    const Field& owner = rows->Fields("owner");
    const Field& modified = rows->Fields("dateModified");
    const Field& parent = rows->Fields("parentFolder");
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        const double bytes = size.number();
        const auto row = static_cast<std::int64_t>(number.number());
        noteRow(row);
        enter(parent.text());
        ++overview_.files;
        overview_.hasNegativeSizes = overview_.hasNegativeSizes || bytes < 0;
        types_.add(extension.text(), bytes);
        owners_.add(owner.text(), bytes);
        if (largest_.accepts(bytes)) {
            largest_.add({bytes, row, std::string(modified.text())});
        }
        if (content_ != nullptr) {
            content_->filesSize += bytes;
            ++content_->files;
        }
    }
}

void Reader::readFolders(const std::function<bool(std::string_view)>& isUnread) {
    const auto rows = database_.OpenRecordset(
        "select idx,size," + database_.sizeColumn() +
        " as counted,parentFolder,fileName,description,scanCompleteTime from details where " +
        modFolderRows::foldersAnywhereIn(key_));
    const Field& number = rows->Fields("idx");
    const Field& size = rows->Fields("size");
    const Field& counted = rows->Fields("counted");
    const Field& parent = rows->Fields("parentFolder");
    const Field& name = rows->Fields("fileName");
    const Field& description = rows->Fields("description");
    const Field& stamp = rows->Fields("scanCompleteTime");
    std::string path;
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        const auto row = static_cast<std::int64_t>(number.number());
        noteRow(row);
        enter(parent.text());
        ++overview_.folders;
        std::string_view shortName = name.text();
        path.assign(parent_).append(shortName);
        shortName.remove_suffix(shortName.ends_with('\\') ? 1 : 0);
        if (content_ != nullptr) {
            content_->folders.emplace_back(shortName, modLvw::soundSize(counted.number()));
        }
        const bool isOther = description.text() == modFolderRows::otherVolume;
        overview_.otherVolumes += isOther ? 1 : 0;
        if (isOther || isUnread(path)) {
            continue;
        }
        if (stamp.isNull()) {
            hasUnfinished_ = hasUnfinished_ || parent_ == key_;
        } else if (size.number() == 0) {
            perhapsEmpty_.emplace_back(platform::NameHash()(path), row);
        }
    }
}

OverviewFile Reader::fileAt(const LargestFiles::Entry& entry) {
    const auto row = database_.OpenRecordset("select parentFolder,fileName from details where idx=" +
                                             std::to_string(entry.row));
    std::string path;
    if (!row->EndOfFile()) {
        path.append(row->Fields(0).text()).append(row->Fields(1).text());
    }
    return {std::move(path), modLvw::soundSize(entry.size), entry.modified};
}

OverviewFolder Reader::folderOf(const std::string& path, double size, std::size_t level) {
    OverviewFolder result;
    result.size = size;
    const auto found = upper_.find(path);
    if (found == upper_.end()) {
        return result;
    }
    Content& content = found->second;
    result.ownFilesSize = modLvw::soundSize(content.filesSize);
    result.ownFiles = content.files;
    result.subfolders = content.folders.size();
    for (const auto& [name, bytes] : content.folders) {
        result.subfoldersSize = modLvw::soundSize(result.subfoldersSize + bytes);
    }
    const auto shown =
        static_cast<std::ptrdiff_t>(std::min(content.folders.size(), limits_.largestFolders.at(level)));
    std::partial_sort(content.folders.begin(), content.folders.begin() + shown, content.folders.end(),
                      [](const auto& left, const auto& right) {
                          return left.second != right.second ? left.second > right.second
                                                             : left.first < right.first;
                      });
    for (auto each = content.folders.begin(); each != content.folders.begin() + shown; ++each) {
        OverviewFolder folder =
            folderOf(std::string(path).append(each->first).append("\\"), each->second, level + 1);
        folder.name = each->first;
        result.largest.push_back(std::move(folder));
    }
    return result;
}

// Files without a date are not looked at.
void Reader::takeOldest() {
    const std::vector<LargestFiles::Entry>& files = largest_.largestFirst();
    constexpr std::int64_t fewest = 50;
    overview_.consideredFiles =
        std::min(files.size(), static_cast<std::size_t>(std::max(fewest, (overview_.files + 9) / 10)));
    std::vector<std::pair<double, const LargestFiles::Entry*>> dated;
    for (std::size_t i = 0; i < overview_.consideredFiles; ++i) {
        if (const auto time = modFormat::parseDate(files[i].modified)) {
            dated.emplace_back(modFormat::momentKey(*time), &files[i]);
        }
        overview_.leastConsidered = modLvw::soundSize(files[i].size);
    }
    std::stable_sort(dated.begin(), dated.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    dated.resize(std::min(dated.size(), limits_.oldestFiles));
    for (const auto& [moment, file] : dated) {
        overview_.oldestFiles.push_back(fileAt(*file));
    }
}

// A drive's root has no row that would tell. If only something below it was scanned, it holds just the folder
// on the way there.
bool Reader::isScannedRoot() const {
    const bool isWalked = overview_.folder.ownFiles > 0 || overview_.folder.subfolders > 1;
    return clsFile(key_).fullPathNoDrive().empty() && isWalked && !hasUnfinished_;
}

Overview Reader::result() {
    const modFolderRows::RecordedFolder recorded = modFolderRows::find(database_, key_);
    const double size = modFolderRows::countedSize(database_, key_, recorded);
    overview_.folder = folderOf(key_, modLvw::soundSize(size), 0);
    overview_.isComplete = recorded.hasOwnRow ? !recorded.stamp.empty() : isScannedRoot();
    overview_.types = types_.largest(limits_.groups);
    overview_.typeCount = types_.count();
    overview_.owners = owners_.largest(limits_.groups);
    overview_.ownerCount = owners_.count();
    const auto& files = largest_.largestFirst();
    for (std::size_t i = 0; i < std::min(files.size(), limits_.largestFiles); ++i) {
        overview_.largestFiles.push_back(fileAt(files[i]));
    }
    takeOldest();
    for (const auto& [hash, row] : perhapsEmpty_) {
        if (!filled_.contains(hash) && overview_.emptyFolderCount++ < limits_.emptyFolders) {
            overview_.emptyFolders.push_back(fileAt({0, row, {}}).path);
        }
    }
    const auto last =
        database_.OpenRecordset("select dateInserted from details where idx=" + std::to_string(lastRow_));
    overview_.recorded = last->EndOfFile() ? std::string_view() : last->Fields(0).text();
    return std::move(overview_);
}

} // namespace

modFigures::Overview modFigures::overview(Database& database, std::string_view key,
                                          const OverviewLimits& limits,
                                          const std::function<bool(std::string_view)>& isUnread,
                                          const std::function<void()>& rowRead) {
    Reader reader(database, key, limits, rowRead);
    reader.readFiles();
    reader.readFolders(isUnread);
    return reader.result();
}
