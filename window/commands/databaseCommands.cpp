#include "window/commands/databaseCommands.h"

#include "base/errorLog.h"
#include "base/errorTrap.h"
#include "export/databaseFile.h"
#include "export/reportFrame.h"
#include "platform/paths.h"
#include "scan/savedScan.h"
#include "tree/savedNodes.h"
#include "tree/startupTree.h"
#include "tree/treeOperations.h"

namespace {

constexpr std::size_t mostTopFolders = 1000;

} // namespace

const std::string DatabaseCommands::databaseFilter = "Access Databases (*.mdb)|*.mdb|All Files (*.*)|*.*";

std::string DatabaseCommands::exportDatabase() {
    std::string file = choice_.toWrite(databaseFilter, ".mdb");
    if (file.empty()) {
        return {};
    }
    const BusyPointer busy(dependencies_.userInterface);
    {
        const LongWork answering(dependencies_.database.database(),
                                 [this] { dependencies_.userInterface.yieldToEvents(); });
        modGlobal::tvwSaveNodes(dependencies_.tree, dependencies_.database.database());
    }
    const auto failure = modExport::copyDatabase(dependencies_.database, file, dependencies_.userInterface);
    modGlobal::clearSavedNodes(dependencies_.database.database());
    if (failure) {
        modGlobal::logError(failure->number(), failure->what(), "frmMain", "cp_Click", true);
        dependencies_.userInterface.messageAbout("Error " + std::to_string(failure->number()) +
                                                     " exporting to Access.  Please try again.",
                                                 failure->what());
        return {};
    }
    modExport::showSaved(dependencies_.userInterface, file);
    return file;
}

bool DatabaseCommands::loadDatabase(const std::string& file) {
    const auto loadFile = [&] {
        modExport::loadDatabase(dependencies_.database, file, dependencies_.userInterface);
    };
    return load(loadFile, platform::displayPath(platform::toInternal(file)));
}

bool DatabaseCommands::load(const std::function<void()>& load, const std::string& name) {
    choice_.forgetLastOutcome();
    const BusyPointer busy(dependencies_.userInterface);
    bool isLoaded = false;
    bool replaced = !dependencies_.database.isOpen(); // then there is no scan to keep
    modGlobal::trapped("frmMain", "cp_Click", [&] {
        load();
        isLoaded = true;
        replaced = true;
        showTree(name);
    });
    if (!replaced) {
        return false;
    }
    if (dependencies_.database.isOpen()) { // left by a tree that could not be shown
        modGlobal::trapped(
            "frmMain", "cp_Click", [&] { modGlobal::clearSavedNodes(dependencies_.database.database()); },
            modGlobal::Logging::quiet);
    }
    dependencies_.views.forget();
    dependencies_.selection.showLoaded();
    return isLoaded;
}

// A scan that was saved without a tree, as by the console program, shows its folders below the drives.
void DatabaseCommands::showTree(const std::string& name) {
    Database& database = dependencies_.database.database();
    const LongWork answering(database, [this] { dependencies_.userInterface.yieldToEvents(); });
    if (!modGlobal::tvwLoadNodes(dependencies_.tree, database, dependencies_.icons)) {
        modStartupTree::makeAnew(dependencies_.tree, dependencies_.store);
        modGlobal::addTopFolders(dependencies_.tree, dependencies_.icons,
                                 modSavedScan::scannedFolders(database, mostTopFolders));
    }
    dependencies_.userInterface.status(StatusPanel::folder, "Loaded " + name);
}
