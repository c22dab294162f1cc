// The bytes of a saved scan: the file is refused with a reason and the scan at hand stays whole, or all its
// outputs are as sound as those of any rows. What can be loaded can be read in place, too, or is refused with
// a reason. No loading and no reading changes the file.

#include <algorithm>
#include <cmath>

#include "export/databaseFile.h"
#include "fuzz/support/input.h"
#include "fuzz/support/loadedScan.h"
#include "fuzz/support/require.h"
#include "fuzz/support/rootPath.h"
#include "platform/paths.h"
#include "scan/savedScan.h"
#include "scan/scanFile.h"

namespace {

double rowsOf(const LoadedScan& scan, const char* table) {
    return scan.working.database()
        .OpenRecordset("select count(*) as total from " + std::string(table))
        ->Fields(0)
        .number();
}

void startWithOneRow(LoadedScan& scan) {
    scan.working.startAnew();
    scan.working.database().Execute(
        "insert into details ([drive], [fileName], [size]) values (\"/\\\", \"own\", 7)");
}

void requireReadable(const std::string& file) {
    constexpr std::size_t mostNames = 1000;
    try {
        const ScanFile saved(file);
        require(saved.scans().size() <= modScans::mostRead, "no more scans than asked for");
        std::vector<std::string> folders{"/", "/usr", "C:\\"};
        for (const modScans::Scan& scan : saved.scans()) {
            require(scan.host.size() <= mostNames * 4, "names are cut");
            folders.push_back(platform::displayPath(scan.path));
        }
        folders.resize(std::min<std::size_t>(folders.size(), 6));
        for (const std::string& folder : folders) {
            const std::string key = saved.find(modSavedScan::possibleKeys(folder));
            if (const auto found = saved.folder(key)) {
                require(std::isfinite(found->size) && found->files.value_or(0) >= 0, "figures are figures");
            }
            static_cast<void>(saved.finished(key));
        }
    } catch (const RuntimeError& error) {
        require(std::string_view(error.what()).find("saved.dat") != std::string_view::npos,
                "a reason names the file", error.what());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static LoadedScan scan;
    static bool isOwn = false;
    if (!isOwn) {
        startWithOneRow(scan);
        isOwn = true;
    }
    const std::string_view bytes = Input(data, size).rest();
    scan.folder.write("saved.dat", bytes);
    bool loaded = false;
    try {
        modExport::loadDatabase(scan.working, rootPath(scan.folder, "saved.dat"), scan.userInterface);
        loaded = true;
    } catch (const RuntimeError& error) {
        require(std::string_view(error.what()).find("saved.dat") != std::string_view::npos,
                "a reason names the file", error.what());
        require(!scan.working.database().holdsLoadedRows() && rowsOf(scan, "details") == 1 &&
                    rowsOf(scan, "nodes") == 0,
                "a refused file leaves the scan at hand");
    }
    requireReadable(rootPath(scan.folder, "saved.dat"));
    require(scan.folder.read("saved.dat") == bytes, "a file is not changed by loading it");
    if (!loaded) {
        return 0;
    }
    isOwn = false;
    require(scan.working.database().holdsLoadedRows(), "loaded rows are known as such");
    require(rowsOf(scan, "details") + rowsOf(scan, "nodes") <= 2 * static_cast<double>(size),
            "no more rows than the file can hold");
    scan.requireSoundOutputs({size % 2 == 0, true});
    try {
        scan.requireSoundComparison(rootPath(scan.folder, "saved.dat"));
    } catch (const RuntimeError& error) { // what a load does not look at is no table of scans
        require(std::string_view(error.what()).find("saved.dat") != std::string_view::npos,
                "a reason names the file", error.what());
    }
    return 0;
}
