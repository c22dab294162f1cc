#include "views/widgets/filesList.h"

#include <QElapsedTimer>
#include <array>

#include "app/errorLog.h"
#include "app/pictures.h"
#include "db/dao.h"
#include "db/values.h"
#include "views/formatSize.h"
#include "views/widgets/listView.h"
#include "views/widgets/systemIcons.h"

namespace {

// "DATETIME" is no tag that sorting knows: dates are sorted as the texts that they are, months first,
// deliberately.
constexpr std::array<ListColumn, 5> filesColumns{{
    {"Name", "", false, "A file's short name.text"},
    {"Size", "SIZE", true, "1,023 bytes "},
    {"Owner", "", false, "administrator"},
    {"Modified", "DATETIME", false, "12/28/2028 10:58:58 AM"},
    {"Accessed", "DATETIME", false, "12/28/2028 10:58:58 AM"},
}};

// How long the window may stand still for icons, in milliseconds.
constexpr qint64 longestTick = 50;

// Makes list rows of a query's rows.
class RowReader {
public:
    RowReader(Recordset& rows, std::string_view folderKey)
        : rows_(rows), key_(folderKey), keyLength_(key_.size()) {}

    [[nodiscard]] ListRow read() {
        const std::string_view storedName = fileName_.text();
        // The folder's key and the name: the stored path is the same, but may be cut.
        key_.resize(keyLength_);
        key_.append(storedName);
        std::string_view name = storedName;
        if (name.ends_with('\\')) {
            name.remove_suffix(1);
        }
        const double bytes = size_.number();
        sizeText_.clear();
        modLvw::appendSize(sizeText_, bytes);
        reformat(dateModified_, modified_);
        reformat(dateAccessed_, accessed_);
        const std::array<ListCell, filesColumns.size()> cells{
            {{name, {}}, {sizeText_, bytes}, {owner_.text(), {}}, {modified_, {}}, {accessed_, storedName}}};
        return {key_, isFolder_.number() == 1 ? "FOLDER" : "FILE", cells};
    }

private:
    static void reformat(const Field& date, std::string& text) {
        text.clear();
        modFormat::appendReformattedDate(text, date.text(), modFormat::storedDatePicture);
    }

    Recordset& rows_;
    const Field& fileName_ = rows_.Fields("fileName");
    const Field& size_ = rows_.Fields("size");
    const Field& owner_ = rows_.Fields("owner");
    const Field& dateModified_ = rows_.Fields("dateModified");
    const Field& dateAccessed_ = rows_.Fields("dateAccessed");
    const Field& isFolder_ = rows_.Fields("isFolder");
    std::string key_;
    std::size_t keyLength_;
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
        std::int64_t count = 0;
        std::vector<ListRow> rows = newRows(database, shownRows_, count);
        if (count < shownRows_) { // rows were deleted meanwhile: which of them are still shown is unknown
            clear();
            rows = newRows(database, shownRows_, count);
        }
        lvwF_.rows().append(std::move(rows));
        shownRows_ = count;
    });
}

std::vector<ListRow> FilesList::newRows(Database& database, std::int64_t skipped, std::int64_t& count) const {
    const auto rows =
        database.OpenRecordset("SELECT drive,fullPath,fileName,size,owner,dateModified,dateAccessed,isFolder "
                               "From details "
                               "WHERE details.parentFolder=" +
                               modGlobal::quoted(shownKey_) + " order by idx");
    RowReader reader(*rows, shownKey_);
    std::vector<ListRow> result;
    for (count = 0; !rows->EndOfFile(); rows->MoveNext()) {
        if (++count > skipped) {
            result.push_back(reader.read());
        }
    }
    return result;
}

// The count of shown rows goes with the rows: else a refresh of the same folder would show only what lies
// behind them.
void FilesList::clear() {
    lvwF_.rows().clear();
    shownRows_ = nothing;
}

void FilesList::getListViewIcons() {
    modGlobal::trapped("frmMain", "getListViewIcons", [&] {
        if (!lvwF_.isVisible()) {
            return;
        }
        const auto [first, last] = lvwF_.rowsInView();
        const auto count = static_cast<unsigned>(last - first + 1);
        QElapsedTimer spent;
        spent.start();
        for (unsigned tried = 0; tried < count && !spent.hasExpired(longestTick); ++tried, ++nextIcon_) {
            const int row = first + static_cast<int>(nextIcon_ % count);
            const ListRow& shown = lvwF_.rows().row(row);
            if (shown.icon.isEmpty()) {
                lvwF_.rows().setIcon(row, modSystemIcons::getIcon(shown.key(), imlFiles_));
            }
        }
    });
}
