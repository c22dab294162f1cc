#include "views/folderFigures.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>

#include "base/formatSize.h"
#include "db/folderRows.h"
#include "db/values.h"
#include "platform/locale.h"
#include "views/fileGroups.h"

namespace {

// Odd on purpose: groups with the same name share a row of the list, which shows the last of them.
std::vector<modFigures::FileGroup> shown(const FileGroups& groups,
                                         std::optional<std::string> FileGroups::Key::*name) {
    std::vector<modFigures::FileGroup> result;
    std::unordered_map<std::string, std::size_t> indexes;
    groups.forEach([&](const FileGroups::Key& key, const FileGroups::Total& total) {
        const auto [known, isNew] = indexes.try_emplace((key.*name).value_or(""), result.size());
        if (isNew) {
            result.emplace_back();
        }
        result[known->second] = {known->first, modLvw::soundSize(total.size), std::to_string(total.files)};
    });
    return result;
}

std::optional<std::string_view> valueOf(const Field& field) {
    return field.isNull() ? std::nullopt : std::optional(field.text());
}

// A saved scan may keep folders only; their sizes tell what the files took. What a folder itself takes on the
// disk is counted with them.
void addUnkeptFiles(Database& database, std::string_view key, std::vector<ChartEntry>& entries) {
    const auto files = database.OpenRecordset("select idx from details where isFolder=0 and " +
                                              modFolderRows::anywhereIn(key));
    const modFolderRows::RecordedFolder own = modFolderRows::find(database, key);
    if (!files->EndOfFile() || !(own.totals.size > modFolderRows::sum(database, key))) {
        return;
    }
    double rest = modLvw::soundSize(modFolderRows::countedSize(database, key, own));
    for (const ChartEntry& entry : entries) {
        rest -= entry.size;
    }
    entries.push_back({std::string(modFigures::filesLabel), rest});
}

// A walk goes depth first, so only one subfolder can have contents and no row of its own yet: that of the
// last row.
void addUnfinished(Database& database, std::string_view key, std::vector<ChartEntry>& entries) {
    const std::string last = modFigures::lastFolder(database);
    if (last.size() <= key.size() || !platform::sameName(std::string_view(last).substr(0, key.size()), key)) {
        return;
    }
    const std::string name = last.substr(key.size(), last.find('\\', key.size()) - key.size());
    if (std::any_of(entries.begin(), entries.end(),
                    [&](const ChartEntry& entry) { return platform::sameName(entry.label, name); })) {
        return;
    }
    const std::string folder = std::string(key) + name + "\\";
    const auto files = database.OpenRecordset("select sum(details." + database.sizeColumn() +
                                              ") as total from details where isFolder=0 and " +
                                              modFolderRows::anywhereIn(folder));
    const double size =
        files->EndOfFile() || files->Fields("Total").isNull() ? 0 : files->Fields("Total").number();
    entries.push_back({name, modLvw::soundSize(size), true});
}

} // namespace

std::string modFigures::lastFolder(Database& database) {
    const auto last = database.OpenRecordset("select max(idx) as lastNumber from details");
    if (last->EndOfFile() || last->Fields("lastNumber").isNull()) {
        return {};
    }
    const auto row = database.OpenRecordset("select parentFolder from details where idx=" +
                                            std::string(last->Fields("lastNumber").text()));
    return row->EndOfFile() ? std::string() : std::string(row->Fields("parentFolder").text());
}

std::vector<ChartEntry> modFigures::chartEntries(Database& database, std::string_view key, ScanState state) {
    std::vector<ChartEntry> entries;
    const auto files = database.OpenRecordset("select sum(details." + database.sizeColumn() +
                                              ") as total from details "
                                              " where isFolder=0 and parentfolder=" +
                                              modGlobal::quoted(key));
    const bool hasFiles = !files->EndOfFile() && !files->Fields("Total").isNull();
    if (hasFiles) {
        entries.push_back(
            {std::string(modFigures::filesLabel), modLvw::soundSize(files->Fields("Total").number())});
    }
    const auto folders =
        database.OpenRecordset("select distinct fileName," + database.selectedSize() +
                               " from details where " + modFolderRows::directlyIn(key) + " and isFolder=1");
    const Field& name = folders->Fields("fileName");
    const Field& size = folders->Fields("size");
    for (; !folders->EndOfFile(); folders->MoveNext()) {
        std::string_view label = name.text();
        label.remove_suffix(label.ends_with('\\') ? 1 : 0);
        entries.push_back({std::string(label), modLvw::soundSize(size.number())});
    }
    if (!hasFiles && state != ScanState::running) {
        addUnkeptFiles(database, key, entries);
    }
    if (state == ScanState::running) {
        addUnfinished(database, key, entries);
    }
    if (!entries.empty()) {
        modQuickSort::quickSortUDT(entries, 0, static_cast<std::ptrdiff_t>(entries.size()) - 1);
    }
    return entries;
}

std::vector<modFigures::FileGroup> modFigures::fileTypes(Database& database, std::string_view key) {
    FileGroups groups;
    const auto files = database.OpenRecordset(
        "select extension,description," + database.selectedSize() + " from details where " +
        modFolderRows::filesAnywhereIn(database, key, modFolderRows::Form::range));
    const Field& extension = files->Fields("extension");
    const Field& description = files->Fields("description");
    const Field& size = files->Fields("size");
    for (; !files->EndOfFile(); files->MoveNext()) {
        groups.add({valueOf(extension), valueOf(description)}, size.number(), !extension.isNull());
    }
    return shown(groups, &FileGroups::Key::extension);
}

std::vector<modFigures::FileGroup> modFigures::owners(Database& database, std::string_view key) {
    FileGroups groups;
    const auto files =
        database.OpenRecordset("select owner,extension," + database.selectedSize() + " from details where " +
                               modFolderRows::filesAnywhereIn(database, key, modFolderRows::Form::pattern));
    const Field& owner = files->Fields("owner");
    const Field& extension = files->Fields("extension");
    const Field& size = files->Fields("size");
    for (; !files->EndOfFile(); files->MoveNext()) {
        groups.add({std::nullopt, valueOf(owner)}, size.number(), !extension.isNull());
    }
    return shown(groups, &FileGroups::Key::name);
}

std::string modFigures::itemsText(Database& database) {
    const auto rows = database.OpenRecordset("select count(*) as total from details");
    return itemsText(rows->EndOfFile() ? 0 : static_cast<std::int64_t>(rows->Fields("Total").number()));
}

std::string modFigures::itemsText(std::int64_t count) {
    return std::to_string(count) + " items.";
}
