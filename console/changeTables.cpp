#include "console/changeTables.h"

#include <array>
#include <string_view>
#include <vector>

#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "base/terminalText.h"
#include "console/textTable.h"
#include "platform/locale.h"
#include "platform/paths.h"

namespace {

using modChanges::Change;
using modChanges::Group;
using modChanges::Result;
using modChanges::State;

std::string sizeText(const std::optional<double>& size) {
    return size ? modLvw::formatSize(*size) : std::string();
}

// A table without rows is left out.
template <std::size_t columns>
std::string printed(const std::vector<std::array<std::string, columns>>& rows, std::size_t all,
                    std::size_t top, std::size_t number, std::size_t numbersEnd) {
    return rows.size() == 1
               ? std::string()
               : textTable::table(rows, number, numbersEnd) + textTable::moreLine(all, top) + "\n";
}

std::string childTable(const std::vector<Change>& children, std::size_t top) {
    std::vector<std::array<std::string, 5>> rows{{"Name", "Before", "Now", "Change", "State"}};
    for (std::size_t i = 0; i < textTable::shownRows(children.size(), top); ++i) {
        const Change& child = children[i];
        rows.push_back({textTable::shown(child.nameAlone()), sizeText(child.before), sizeText(child.now),
                        modLvw::formatChange(child.change()),
                        std::string(modChanges::stateText(child.state))});
    }
    return printed(rows, children.size(), top, 1, 4);
}

std::string groupTable(const std::string& header, std::vector<Group> groups, bool withSame, std::size_t top) {
    std::erase_if(groups, [&](const Group& group) { return !withSame && !group.differs(); });
    std::vector<std::array<std::string, 6>> rows{
        {header, "Before", "Now", "Change", "Files Before", "Files Now"}};
    for (std::size_t i = 0; i < textTable::shownRows(groups.size(), top); ++i) {
        const Group& group = groups[i];
        rows.push_back({textTable::shown(platform::lowerCase(group.name)), modLvw::formatSize(group.before),
                        modLvw::formatSize(group.now), modLvw::formatChange(group.change()),
                        std::to_string(group.filesBefore), std::to_string(group.filesNow)});
    }
    return printed(rows, groups.size(), top, 1, 6);
}

// Paths are those behind the folder's, and not cut.
std::string fileTable(const std::vector<Change>& files, std::size_t all, std::size_t top,
                      std::string_view folder) {
    std::vector<std::array<std::string, 5>> rows{{"State", "Before", "Now", "Change", "File"}};
    for (const Change& file : files) {
        const std::string path = platform::displayPath(file.path());
        rows.push_back({std::string(modChanges::stateText(file.state)), sizeText(file.before),
                        sizeText(file.now), modLvw::formatChange(file.change()),
                        forTerminal(path.substr(folder.size()))});
    }
    return printed(rows, all, top, 1, 4);
}

// "3 new, 1 gone, 2 touched".
std::string countsText(const std::array<std::int64_t, modChanges::states>& counts) {
    std::string text;
    for (const State state :
         {State::appeared, State::gone, State::grown, State::shrunk, State::touched, State::same}) {
        if (const std::int64_t count = counts.at(static_cast<std::size_t>(state)); count > 0) {
            text.append(text.empty() ? "" : ", ").append(modFormat::countText(static_cast<double>(count)));
            text.append(" ").append(modChanges::stateText(state));
        }
    }
    return text.empty() ? "none" : text;
}

std::string totalText(const Result& result) {
    const Change& folder = result.folder;
    std::string text;
    if (folder.differences == 0 && folder.change() == 0) {
        text = "Nothing has changed. ";
    }
    text += "Total: " + sizeText(folder.before) + " before, " + sizeText(folder.now) + " now, change " +
            modLvw::formatChange(folder.change()) + "\n";
    if (!result.foldersOnly) {
        text += "Files: " + countsText(result.files) + "\n";
    }
    return text + "Folders: " + countsText(result.folders) + "\n";
}

std::size_t countOfFiles(const Result& result, bool withSame) {
    std::int64_t count = 0;
    for (std::size_t state = 0; state < modChanges::states; ++state) {
        count += withSame || state != static_cast<std::size_t>(State::same) ? result.files.at(state) : 0;
    }
    return static_cast<std::size_t>(count);
}

} // namespace

std::string changeTables(Database& changes, const modChanges::Request& request, const Result& result,
                         std::size_t top) {
    std::string text = childTable(modChanges::childrenOf(changes, request.number, request.folder), top);
    text += groupTable("Extension", result.types, request.keepsSame, top);
    text += groupTable("Owner", result.owners, request.keepsSame, top);
    text += fileTable(modChanges::largest(changes, request.number, false, top),
                      countOfFiles(result, request.keepsSame), top, platform::displayPath(request.folder));
    return text + totalText(result);
}
