#include "widgets/filesList.h"

#include <array>
#include <functional>

#include "base/dateFormat.h"
#include "base/errorTrap.h"
#include "base/formatSize.h"
#include "db/dao.h"
#include "db/folderRows.h"
#include "db/values.h"
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

// Turns rows of a query into list rows.
class RowReader {
public:
    RowReader(Recordset& rows, std::string_view folderKey)
        : rows_(rows), key_(folderKey), keyLength_(key_.size()) {}

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
        const std::array<ListCell, filesColumns.size()> cells{
            {{name_, {}}, {sizeText_, bytes}, {owner_.text(), {}}, {modified_, {}}, {accessed_, storedName}}};
        return {key_, isFolder_.number() == 1 ? "FOLDER" : "FILE", cells};
    }

    // Adds the content of a row to a hash of the rows before it.
    void addTo(std::size_t& digest) const {
        constexpr std::size_t spread = 0x9E3779B97F4A7C15U;
        const auto add = [&](std::size_t hash) { digest = (digest ^ hash) * spread + (digest >> 32U); };
        for (const Field* field : {&fileName_, &description_, &owner_, &dateModified_, &dateAccessed_}) {
            add(std::hash<std::string_view>()(field->text()));
        }
        add(std::hash<double>()(size_.number()));
    }

private:
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

void FilesList::updateFileFolderListview(Database& database, std::string_view selectedKey) {
    modGlobal::trapped("frmMain", "updateFileFolderListview", [&] {
        if (selectedKey.empty() || selectedKey == "ROOT") {
            return;
        }
        if (selectedKey != shownKey_) {
            clear();
            shownKey_ = selectedKey;
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
    const auto rows = database.OpenRecordset(
        "SELECT drive,fullPath,fileName,description,size,owner,dateModified,dateAccessed,isFolder "
        "From details "
        "WHERE details.parentFolder=" +
        modGlobal::quoted(shownKey_) + " order by idx");
    RowReader reader(*rows, shownKey_);
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
