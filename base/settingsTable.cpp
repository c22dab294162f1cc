#include "base/settingsTable.h"

#include <algorithm>
#include <array>

#include "base/modGlobal.h"
#include "platform/runtimeError.h"

namespace modSettings {

namespace {

constexpr std::string_view application = "APPLICATION_SETTINGS";
constexpr std::string_view startup = "startup";
constexpr std::string_view user = "User_Settings";
constexpr std::string_view excludes = "Excludes";

constexpr std::string_view columnText =
    "The column by which the list is sorted. A click on its header does the same.";
constexpr std::string_view orderText = "Which end comes first. A second click on the header turns it round.";

constexpr std::array<Key, 19> table{{
    {application, "exact", "0", Kind::flag, Topic::scanning, Effect::atOnce, true, "&Exact figures",
     "Counts every file with its real size, scans everything below a folder when you refresh it, sorts dates "
     "by time, and writes reports in the forms that today's programs expect. Without it, figures and "
     "reports can be compared with those of earlier versions. The same as View > Exact Figures."},
    {application, "onDisk", "0", Kind::flag, Topic::scanning, Effect::atOnce, true, "Sizes on dis&k",
     "Counts what files and folders take on the disk instead of their sizes, in all views and reports. A "
     "file with several names is counted once, and a sparse one with what is stored of it. The same as "
     "View > Size on Disk."},
    {application, "fullFileSizes", "0", Kind::flag, Topic::scanning, Effect::nextScan, false,
     "&Real sizes of large files",
     "Records the real size of files of 2 GiB or more. Without it, 3 GiB count as -1 GiB, and 4 GiB as 0. "
     "Exact figures include this."},
    {application, "getOwnerInfo", "1", Kind::flag, Topic::scanning, Effect::nextScan, true,
     "Look up the &owners of files",
     "Finds out to whom each file and folder belongs, for the Owners tab and the reports. Scans are faster "
     "without it. The same as View > File Owners."},
    {application, "caseSensitiveExtensions", "0", Kind::flag, Topic::scanning, Effect::nextScan, false,
     "Tell .JPG from .&jpg",
     "Counts extensions in upper and in lower case as different file types. Without it, they are one."},
    {application, "readers", "-1", Kind::readers, Topic::scanning, Effect::nextScan, false,
     "Read a&head with",
     "How many threads read folders while others are recorded. More help with network drives, where most of "
     "a scan is waiting. The figures do not depend on it."},
    {application, "getExtensionInfo", "1", Kind::flag, Topic::scanning, Effect::none, false,
     "Look up e&xtensions", "Is only here because older settings files have it."},

    {excludes, "Excludes", "", Kind::patterns, Topic::excludes, Effect::nextScan, false,
     "&Patterns, one a line",
     "What fits a pattern is not read and counts in nothing; of a folder, neither does what is in it. "
     "* stands for any characters, also /, ? for one, [a-z] for one of these, [!a-z] for one of all others, "
     "and \\ takes the next character as it stands. A pattern has to describe the whole path of a file or "
     "folder, from the root on, or all that is behind one of its /: build leaves out each file or folder of "
     "this name, a/build only those in an a, and build/, with a / at its end, nothing. On Windows, upper and "
     "lower case are the same, and \\ is a separator like /. Item > Exclude from Scans adds whole paths: "
     "remove the line to undo it, and scan the folder above it again."},

    {user, "DetailListSortColumn", "2", Kind::column, Topic::filesList, Effect::atOnce, true, "Sort &by",
     columnText},
    {user, "DetailListSortOrder", "1", Kind::order, Topic::filesList, Effect::atOnce, true, "&Order",
     orderText},
    {user, "FileTypeListSortColumn", "3", Kind::column, Topic::fileTypesList, Effect::atOnce, true,
     "Sort b&y", columnText},
    {user, "FileTypeListSortOrder", "1", Kind::order, Topic::fileTypesList, Effect::atOnce, true, "O&rder",
     orderText},
    {user, "UserListSortColumn", "2", Kind::column, Topic::ownersList, Effect::atOnce, true, "Sor&t by",
     columnText},
    {user, "UserListSortOrder", "1", Kind::order, Topic::ownersList, Effect::atOnce, true, "Ord&er",
     orderText},

    {application, "databasePath", "main.dat", Kind::database, Topic::files, Effect::nextStart, false,
     "Working data&base",
     "The file that holds the current scan. It is emptied at every start: to keep a scan, save it with "
     "File > Export Data. An empty field means the usual place."},
    {application, "errorLogFile", "errorLog.txt", Kind::errorLog, Topic::files, Effect::atOnce, false,
     "&Error log",
     "If this file exists, each error that the program meets is added to it as one line. An empty field "
     "means the usual place."},
    {startup, "errorLogTextFile", "errorLog.txt", Kind::errorLog, Topic::files, Effect::atOnce, false,
     "Error log if there is &none",
     "If the file above does not exist, this one is made anew for each error, so it holds only the last "
     "one. An empty field means the usual place."},

    {application, "readOnly", "0", Kind::flag, Topic::window, Effect::atOnce, false,
     "&Change nothing on the disk",
     "Takes away all commands that change files or folders, such as Move to Trash. Reports can still be "
     "written."},
    {startup, "dontUseNetwork", "0", Kind::notZero, Topic::window, Effect::nextStart, false,
     "Leave the &network out of the tree",
     "Shows no branch for the network in the tree. You can still type the path of a folder there."},
}};

} // namespace

std::span<const Key> keys() noexcept {
    return table;
}

const Key& keyNamed(std::string_view name) {
    const auto* const found =
        std::find_if(table.begin(), table.end(), [&](const Key& key) { return key.name == name; });
    if (found == table.end()) {
        throw RuntimeError::about(errorNumber::invalidCall, std::string(name));
    }
    return *found;
}

std::string_view effectText(Effect effect) noexcept {
    switch (effect) {
    case Effect::none:
        return "Has no effect.";
    case Effect::atOnce:
        return "Takes effect at once.";
    case Effect::nextScan:
        return "Takes effect with the next scan.";
    case Effect::nextStart:
        return "Takes effect at the next start.";
    }
    return {};
}

std::string defaultOf(const Key& key, std::string_view applicationFolder) {
    return (isPath(key.kind) ? modGlobal::addBackslash(applicationFolder) : "") +
           std::string(key.defaultText);
}

} // namespace modSettings
