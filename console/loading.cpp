#include "console/loading.h"

#include "collect/collectedFigures.h"
#include "collect/collectedScan.h"
#include "collect/password.h"
#include "collect/server.h"
#include "db/scanRecords.h"
#include "export/databaseFile.h"
#include "platform/terminal.h"

void Loading::load(WorkingDatabase& working) {
    if (isServerUrl(options_.loadFile)) {
        loadFromServer(working);
    } else {
        modExport::loadDatabase(working, options_.loadFile, userInterface_);
    }
}

void Loading::loadFromServer(WorkingDatabase& working) {
    HttpClient server(parseServerUrl(options_.loadFile), collectPassword(options_.collectPasswordFile),
                      [] { return !platform::wasInterrupted(); });
    const platform::InterruptionWatch watch;
    modServer::requireSchema(server);
    const std::string path =
        options_.paths.empty() ? std::string() : modCollected::folderPath(options_.paths.front());
    const modCollected::Found found = modCollected::find(server, {options_.host, options_.scan, path});
    modCollected::load(working, modCollected::fetch(working, server, found, userInterface_), userInterface_);
    title_ = modCollected::titleOf(found, server);
}

std::string Loading::title(const WorkingDatabase& working) const {
    return title_.empty() ? modExport::savedScanText(options_.loadFile, modScans::all(working.database()))
                          : title_;
}
