#include "widgets/filesList.h"

#include <algorithm>
#include <array>
#include <functional>
#include <vector>

#include "base/dateFormat.h"
#include "base/errorTrap.h"
#include "base/formatSize.h"
#include "db/dao.h"
#include "db/folderRows.h"
#include "db/values.h"
#include "views/folderSummary.h"
#include "widgets/listView.h"

namespace {

// Odd on purpose: unless figures are exact, sorting does not know the tag "DATETIME", so dates are sorted as
// text, by month first.
constexpr std::array<ListColumn, 5> filesColumns{{
    {"Name", "", false, "A file's short name.text", true},
    {"Size", "SIZE", true, "1,023 bytes "},
    {"Owner", "", false, "administrator"},
    {"Modified", "DATETIME", false, "12/28/2028 10:58:58 AM"},
    {"Accessed", "DATETIME", false, "12/28/2028 10:58:58 AM"},
}};

// In this order.
enum class Further : std::size_t { sizeOnDisk, share, files, folders };

constexpr std::array<ListColumn, 4> furtherColumns{{
    {"Size on Disk", "SIZE", true, "1,023 bytes "},
    {"Share", "SHARE", true, "100.0% of it"},
    {"Files", "NUMBER", true, "1234567"},
    {"Folders", "NUMBER", true, "1234567"},
}};

// Turns rows of a query into list rows.
class RowReader {
public:
    // `further`: the positions of the further columns; `total`: what shares refer to.
    RowReader(Recordset& rows, std::string_view folderKey, const std::vector<std::size_t>& further,
              double total)
        : rows_(rows), further_(further), total_(total), key_(folderKey), keyLength_(key_.size()) {}

    [[nodiscard]] ListRow read() {
        const std::string_view storedName = fileName_.text();
        // The folder's key plus the name: the stored path is the same but may be cut.
        key_.resize(keyLength_);
        key_.append(storedName);
        name_ = storedName.substr(0, storedName.size() - (storedName.ends_with('\\') ? 1 : 0));
        if (description_.text() == modFolderRows::otherVolume) {
            name_ += " (other volume)";
        }
        const double bytes = size_.number();
        sizeText_.clear();
        modLvw::appendSize(sizeText_, bytes);
        reformat(dateModified_, modified_);
        reformat(dateAccessed_, accessed_);
        cells_.assign(
            {{name_, {}}, {sizeText_, bytes}, {owner_.text(), {}}, {modified_, {}}, {accessed_, storedName}});
        for (std::size_t i = 0; i < further_.size(); ++i) {
            cells_.push_back(furtherCell(Further{further_[i]}, furtherTexts_.at(i)));
        }
        return {key_, isFolder_.number() == 1 ? "FOLDER" : "FILE", cells_};
    }

    // Adds the content of a row to a hash of the rows before it.
    void addTo(std::size_t& digest) const {
        constexpr std::size_t spread = 0x9E3779B97F4A7C15U;
        const auto add = [&](std::size_t hash) { digest = (digest ^ hash) * spread + (digest >> 32U); };
        for (const Field* field : {&fileName_, &description_, &owner_, &dateModified_, &dateAccessed_}) {
            add(std::hash<std::string_view>()(field->text()));
        }
        for (const Field* field : {&size_, &sizeOnDisk_, &fileCount_, &folderCount_}) {
            add(std::hash<double>()(field->number()));
        }
    }

private:
    // What is not known has neither text nor tag.
    [[nodiscard]] ListCell furtherCell(Further column, std::string& text) const {
        text.clear();
        switch (column) {
        case Further::sizeOnDisk:
            if (sizeOnDisk_.isNull()) {
                return {};
            }
            modLvw::appendSize(text, sizeOnDisk_.number());
            return {text, sizeOnDisk_.number()};
        case Further::share:
            if (total_ <= 0) {
                return {};
            }
            text += modFigures::percentText(size_.number() / total_);
            return {text, size_.number() / total_};
        case Further::files:
            return countCell(fileCount_, text);
        default:
            return countCell(folderCount_, text);
        }
    }

    static ListCell countCell(const Field& count, std::string& text) {
        if (count.isNull()) {
            return {};
        }
        text = count.text();
        return {text, count.number()};
    }

    static void reformat(const Field& date, std::string& text) {
        text.clear();
        modFormat::appendReformattedDate(text, date.text(), modFormat::storedDatePicture);
    }

    Recordset& rows_;
    const Field& fileName_ = rows_.Fields("fileName");
    const Field& description_ = rows_.Fields("description");
    const Field& size_ = rows_.Fields("size");
    const Field& owner_ = rows_.Fields("owner");
    const Field& dateModified_ = rows_.Fields("dateModified");
    const Field& dateAccessed_ = rows_.Fields("dateAccessed");
    const Field& isFolder_ = rows_.Fields("isFolder");
    const Field& sizeOnDisk_ = rows_.Fields("sizeOnDisk");
    const Field& fileCount_ = rows_.Fields("fileCount");
    const Field& folderCount_ = rows_.Fields("folderCount");
    const std::vector<std::size_t>& further_;
    double total_;
    std::vector<ListCell> cells_;
    std::array<std::string, furtherColumns.size()> furtherTexts_;
    std::string key_;
    std::size_t keyLength_;
    std::string name_;
    std::string sizeText_;
    std::string modified_;
    std::string accessed_;
};

} // namespace

std::span<const ListColumn> FilesList::columns() noexcept {
    return filesColumns;
}

FilesList::FilesList(ListView& lvwF, ImageList& imlFiles)
    : lvwF_(lvwF), further_(lvwF, furtherColumns), icons_(lvwF, imlFiles) {
    QObject::connect(&further_, &ColumnChoice::aboutToChange, &further_, [this] { clear(); });
}

// 0 if no column tells shares.
double FilesList::totalFor(Database& database) const {
    constexpr auto share = static_cast<std::size_t>(Further::share);
    const bool isAsked = std::binary_search(further_.shown().begin(), further_.shown().end(), share);
    return isAsked ? modFolderRows::countedSize(database, shownKey_, modFolderRows::find(database, shownKey_))
                   : 0;
}

void FilesList::updateFileFolderListview(Database& database, std::string_view selectedKey) {
    modGlobal::trapped("frmMain", "updateFileFolderListview", [&] {
        if (selectedKey.empty() || selectedKey == "ROOT") {
            return;
        }
        if (selectedKey != shownKey_) {
            clear();
            shownKey_ = selectedKey;
        }
        const double total = totalFor(database);
        if (total != shownTotal_) {
            clear();
            shownTotal_ = total;
        }
        NewRows found = newRows(database);
        if (!found.followTheShown) {
            clear();
            found = newRows(database);
        }
        lvwF_.rows().append(std::move(found.rows));
        shownRows_ = found.count;
        shownDigest_ = found.digest;
    });
}

FilesList::NewRows FilesList::newRows(Database& database) const {
    const auto rows =
        database.OpenRecordset("SELECT drive,fullPath,fileName,description," + database.selectedSize() +
                               ",owner,dateModified,dateAccessed,isFolder,sizeOnDisk,fileCount,folderCount "
                               "From details "
                               "WHERE details.parentFolder=" +
                               modGlobal::quoted(shownKey_) + " order by idx");
    RowReader reader(*rows, shownKey_, further_.shown(), shownTotal_);
    NewRows found;
    std::size_t known = 0;
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        reader.addTo(found.digest);
        if (++found.count > shownRows_) {
            found.rows.push_back(reader.read());
        } else {
            known = found.digest;
        }
    }
    found.followTheShown = shownRows_ == nothing || (found.count >= shownRows_ && known == shownDigest_);
    return found;
}

// The count of shown rows is reset too: otherwise a refresh of the same folder would show only the rows after
// them.
void FilesList::clear() {
    lvwF_.rows().clear();
    shownRows_ = nothing;
    shownDigest_ = 0;
}

void FilesList::getListViewIcons() {
    modGlobal::trapped("frmMain", "getListViewIcons", [&] { icons_.fetch(); });
}
