#include "scan/hardLinks.h"

#include <map>
#include <string>

#include "base/clsFile.h"
#include "db/folderRows.h"

namespace {

std::unique_ptr<Recordset> rowWith(Database& database, std::int64_t number) {
    return database.OpenRecordset("select parentFolder,fileName from details where idx=" +
                                  std::to_string(number));
}

} // namespace

std::int64_t HardLinks::record(Database& database, std::string_view path, const platform::EntryFacts& facts,
                               std::int64_t row) {
    if (facts.number == 0 || facts.sizeOnDisk == 0) {
        return facts.sizeOnDisk;
    }
    const File file{facts.volume, facts.number};
    const auto [counted, isNew] = counted_.try_emplace(file, Counted{row, facts.sizeOnDisk});
    if (!isNew && countsElsewhere(database, counted->second.row, path)) {
        further_.push_back({file, row});
        return 0;
    }
    counted->second = {row, facts.sizeOnDisk};
    return facts.sizeOnDisk;
}

// Since an earlier scan, the file may have been deleted, and its number given to another.
bool HardLinks::countsElsewhere(Database& database, std::int64_t row, std::string_view path) const {
    if (row >= firstRow_) {
        return platform::hasFurtherNames(path);
    }
    const auto found = rowWith(database, row);
    return !found->EndOfFile() &&
           platform::areNamesOfOneFile(std::string(found->Fields(0).text()).append(found->Fields(1).text()),
                                       path);
}

void HardLinks::settle(Database& database) {
    std::map<std::string, double> added; // to folders
    std::erase_if(further_, [&](const Further& name) {
        const auto own = rowWith(database, name.row);
        if (own->EndOfFile()) {
            return true;
        }
        Counted& counted = counted_.at(name.file);
        if (!rowWith(database, counted.row)->EndOfFile()) {
            return false;
        }
        counted.row = name.row;
        modFolderRows::setSizeOnDisk(database, name.row, static_cast<double>(counted.bytes));
        added[std::string(own->Fields(0).text())] += static_cast<double>(counted.bytes);
        return true;
    });
    for (; !added.empty(); added.erase(std::prev(added.end()))) { // what is deeper comes later
        const auto& [folder, bytes] = *added.rbegin();
        if (modFolderRows::addSizeOnDisk(database, folder, bytes)) { // else it counts in none above, either
            added[std::string(clsFile(folder).parentFolder())] += bytes;
        }
    }
}

void HardLinks::forget() noexcept {
    counted_.clear();
    further_.clear();
}
