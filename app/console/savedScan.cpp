#include "app/console/savedScan.h"

#include <algorithm>
#include <set>
#include <unordered_set>

#include "app/modGlobal.h"
#include "db/values.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "scan/clsFile.h"

namespace {

constexpr std::size_t longestStoredPath = 255;

bool holdsRows(Database& database, const std::string& key) {
    const clsFile folder(key);
    return !database.OpenRecordset("select idx from details where parentFolder=" + modGlobal::quoted(key))
                ->EndOfFile() ||
           !database
                .OpenRecordset(
                    "select idx from details where fullPath=" + modGlobal::quoted(folder.fullPathNoDrive()) +
                    " and drive=" + modGlobal::quoted(folder.drive()))
                ->EndOfFile();
}

} // namespace

std::string modSavedScan::findFolder(Database& database, std::string_view typedPath) {
    const std::string wanted =
        platform::displayPath(modGlobal::addBackslash(platform::toInternal(typedPath)));
    std::vector<std::string> keys;
    const auto drives = database.OpenRecordset("select distinct drive from details");
    for (; !drives->EndOfFile(); drives->MoveNext()) {
        const std::string drive(drives->Fields("drive").text());
        const std::string shown = platform::displayPath(drive);
        if (!shown.empty() && wanted.starts_with(shown)) {
            std::string names = wanted.substr(shown.size());
            std::replace(names.begin(), names.end(), '/', '\\');
            keys.push_back(drive + names);
        }
    }
    const auto found =
        std::find_if(keys.begin(), keys.end(), [&](const auto& key) { return holdsRows(database, key); });
    return found == keys.end() ? std::string() : *found;
}

std::vector<std::string> modSavedScan::topFolders(Database& database) {
    std::unordered_set<std::string> folders;
    const auto own = database.OpenRecordset("select drive, fullPath from details where isFolder=1");
    for (; !own->EndOfFile(); own->MoveNext()) {
        folders.insert(std::string(own->Fields("drive").text()).append(own->Fields("fullPath").text()));
    }
    std::vector<std::string> result;
    const auto parents =
        database.OpenRecordset("select distinct parentFolder from details order by parentFolder");
    for (; !parents->EndOfFile(); parents->MoveNext()) {
        std::string key(parents->Fields("parentFolder").text());
        const clsFile folder(key);
        // A longer path was cut in its folder's own row, and so would not be found there.
        const bool wasCut = platform::characterCount(folder.fullPathNoDrive()) > longestStoredPath;
        if (!key.empty() && !wasCut && !folders.contains(key)) {
            result.push_back(std::move(key));
        }
    }
    return result;
}
