#include "scan/savedScan.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <set>
#include <unordered_set>

#include "base/clsFile.h"
#include "base/modGlobal.h"
#include "db/folderRows.h"
#include "db/values.h"
#include "platform/locale.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace {

constexpr std::size_t longestPath = 32767;

// The one with the longest drive first. Both separators may stand between names, and "/" in the path of a
// drive.
void appendKeys(std::vector<std::string>& result, std::string_view typedPath) {
    constexpr std::size_t deepestDrive = 64;
    std::string path(typedPath.substr(typedPath.starts_with("/\\") ? 1 : 0));
    std::replace(path.begin(), path.end(), '/', '\\');
    path = modGlobal::addBackslash(path);
    std::vector<std::string> keys;
    if (path.starts_with("\\\\")) {
        keys.push_back(path); // of a share
    }
    std::string key = path;
    for (std::size_t end = path.find('\\'); end != std::string::npos && keys.size() < deepestDrive;
         end = path.find('\\', end + 1)) {
        keys.push_back(end == 0 ? "/" + path : key);
        key[end] = '/';
    }
    std::move(keys.rbegin(), keys.rend(), std::back_inserter(result));
}

// The key in the spelling of the rows; empty if there are none.
std::string storedKey(Database& database, const std::string& key) {
    const auto in =
        database.OpenRecordset("select parentFolder from details where " + modFolderRows::directlyIn(key));
    if (!in->EndOfFile()) {
        return std::string(in->Fields(0).text());
    }
    const auto own = database.OpenRecordset("select parentFolder,fileName from details where " +
                                            modFolderRows::itself(key));
    return own->EndOfFile() ? std::string()
                            : std::string(own->Fields(0).text()).append(own->Fields(1).text());
}

} // namespace

std::vector<std::string> modSavedScan::possibleKeys(std::string_view typedPath) {
    std::vector<std::string> keys;
    if (!typedPath.empty()) {
        appendKeys(keys, platform::toInternal(typedPath));
        appendKeys(keys, typedPath); // the scanned machine may have had another system
    }
    return keys;
}

std::string modSavedScan::findFolder(Database& database, const std::vector<std::string>& keys) {
    for (const std::string& key : keys) {
        if (std::string stored = storedKey(database, key); !stored.empty()) {
            return stored;
        }
    }
    return {};
}

std::string modSavedScan::findFolder(Database& database, std::string_view typedPath) {
    return findFolder(database, possibleKeys(typedPath));
}

std::vector<std::string> modSavedScan::topFolders(Database& database) {
    std::unordered_set<std::string, platform::NameHash, platform::NameEqual> folders;
    const auto own = database.OpenRecordset("select parentFolder, fileName from details where isFolder=1");
    for (; !own->EndOfFile(); own->MoveNext()) {
        folders.insert(std::string(own->Fields(0).text()).append(own->Fields(1).text()));
    }
    std::vector<std::string> result;
    const auto parents =
        database.OpenRecordset("select distinct parentFolder from details order by parentFolder");
    for (; !parents->EndOfFile(); parents->MoveNext()) {
        std::string key(parents->Fields("parentFolder").text());
        const bool isOfNoScan = platform::characterCount(key) > longestPath;
        if (!key.empty() && !isOfNoScan && !folders.contains(key)) {
            result.push_back(std::move(key));
        }
    }
    return result;
}

std::vector<std::string> modSavedScan::scannedFolders(Database& database, std::size_t most) {
    constexpr std::int64_t allRows = std::numeric_limits<std::int64_t>::max();
    std::vector<std::string> result;
    for (const std::string& top : topFolders(database)) {
        if (result.size() >= most) {
            break;
        }
        if (wasWalked(database, top, allRows)) {
            result.push_back(top);
            continue;
        }
        for (std::string& folder : subfolders(database, top)) {
            result.push_back(std::move(folder));
        }
    }
    result.resize(std::min(result.size(), most));
    return result;
}

std::vector<std::string> modSavedScan::subfolders(Database& database, std::string_view key) {
    std::vector<std::string> result;
    const auto rows = database.OpenRecordset(
        "select distinct fileName from details where isFolder=1 and parentFolder=" + modGlobal::quoted(key));
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        result.push_back(modGlobal::addBackslash(std::string(key).append(rows->Fields(0).text())));
    }
    return result;
}

bool modSavedScan::wasWalked(Database& database, std::string_view key, std::int64_t lastRow) {
    const bool isRoot = clsFile(key).fullPathNoDrive().empty();
    const auto rows =
        database.OpenRecordset("select isFolder from details where parentFolder=" + modGlobal::quoted(key) +
                               " and idx<=" + std::to_string(lastRow));
    for (int folders = 0; !rows->EndOfFile(); rows->MoveNext()) {
        if (rows->Fields(0).number() == 0 || (isRoot && ++folders > 1)) {
            return true;
        }
    }
    return false;
}
