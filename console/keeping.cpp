#include "console/keeping.h"

#include <cstddef>

#include "base/terminalText.h"
#include "export/keptScans.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"

bool Keeping::check() {
    try {
        if (isWanted()) {
            modExport::KeptScans(options_.keepFolder).checkFolder();
        }
    } catch (const RuntimeError& error) {
        refuse(error.what());
        isGivenUp_ = true;
    }
    return !isGivenUp_;
}

void Keeping::refuse(std::string_view reason) {
    userInterface_.setSubject(options_.keepFolder);
    userInterface_.message(reason);
}

bool Keeping::keep(WorkingDatabase& working, const std::vector<std::string>& keys, std::string& lines) {
    bool all = true;
    for (const std::string& key : keys) {
        all = keepOne(working, key, lines) && all;
    }
    return all;
}

bool Keeping::keepOne(WorkingDatabase& working, std::string_view key, std::string& lines) {
    userInterface_.setSubject(options_.keepFolder);
    const std::int64_t messagesBefore = userInterface_.messageCount();
    try {
        const modExport::KeptScans kept(options_.keepFolder);
        const std::string file =
            kept.keep(working, {key, options_.summary}, options_.paths.size() == 1, userInterface_);
        lines += "Kept as " + forTerminal(platform::displayPath(file)) + "\n";
        if (options_.keepLast) {
            for (const std::string& reason :
                 kept.removeOld(key, static_cast<std::size_t>(*options_.keepLast))) {
                userInterface_.message(reason);
            }
        }
    } catch (const RuntimeError& error) {
        userInterface_.message(error.what());
    }
    return userInterface_.messageCount() == messagesBefore;
}
