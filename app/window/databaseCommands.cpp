#include "app/window/databaseCommands.h"

#include "app/errorLog.h"
#include "export/databaseFile.h"
#include "export/reportFrame.h"
#include "platform/paths.h"
#include "scan/savedScan.h"
#include "tree/savedNodes.h"
#include "tree/startupTree.h"
#include "tree/treeOperations.h"

namespace {

constexpr std::size_t mostTopFolders = 1000;
const std::string databaseFilter = "Access Databases (*.mdb)|*.mdb|All Files (*.*)|*.*";

} // namespace

void DatabaseCommands::exportDatabase() {
    const std::string file = choice_.toWrite(databaseFilter, ".mdb");
    if (file.empty()) {
        return;
    }
    const BusyPointer busy(with_.userInterface);
    {
        const LongWork answering(with_.database.database(), [this] { with_.userInterface.yieldToEvents(); });
        modGlobal::tvwSaveNodes(with_.tree, with_.database.database());
    }
    const auto failure = modExport::copyDatabase(with_.database, file, with_.userInterface);
    modGlobal::clearSavedNodes(with_.database.database());
    if (failure) {
        modGlobal::logError(failure->number(), failure->what(), "frmMain", "cp_Click", true);
        with_.userInterface.message("Error " + std::to_string(failure->number()) +
                                    " exporting to Access.  Please try again.");
    } else {
        modExport::showSaved(with_.userInterface, file);
    }
}

void DatabaseCommands::loadDatabase() {
    const std::string file = choice_.toRead(databaseFilter);
    if (file.empty()) {
        return;
    }
    const BusyPointer busy(with_.userInterface);
    modGlobal::trapped("frmMain", "cp_Click", [&] { load(file); });
    if (with_.database.isOpen()) { // those of a load that failed half-way
        modGlobal::trapped(
            "frmMain", "cp_Click", [&] { modGlobal::clearSavedNodes(with_.database.database()); },
            modGlobal::Logging::quiet);
    }
    with_.views.forget();
    with_.selection.showLoaded();
}

// A file that was saved without a tree, as the console program's are, shows the folders that it holds below
// the drives.
void DatabaseCommands::load(const std::string& file) {
    modExport::loadDatabase(with_.database, file, with_.userInterface);
    Database& database = with_.database.database();
    const LongWork answering(database, [this] { with_.userInterface.yieldToEvents(); });
    if (!modGlobal::tvwLoadNodes(with_.tree, database, with_.icons)) {
        modStartupTree::makeAnew(with_.tree, with_.store);
        modGlobal::addTopFolders(with_.tree, with_.icons,
                                 modSavedScan::scannedFolders(database, mostTopFolders));
    }
    with_.userInterface.status(StatusPanel::folder,
                               "Loaded " + platform::displayPath(platform::toInternal(file)));
}
