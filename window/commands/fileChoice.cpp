#include "window/commands/fileChoice.h"

#include "export/targetFile.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/runtimeError.h"

namespace {

// Cancelling the dialog throws an error, which becomes an empty file name here.
template <class Show>
std::string chosen(Show show) {
    try {
        return show();
    } catch (const RuntimeError& error) {
        if (error.number() != errorNumber::dialogCancelled) {
            throw;
        }
        return {};
    }
}

} // namespace

std::string FileChoice::toWrite(const std::string& filter, std::string_view extension) const {
    const std::string proposed = modExport::defaultFileName(extension, platform::localTime(platform::now()));
    std::string file = chosen([&] { return dialogs_.saveFile({filter, proposed}); });
    if (file.empty()) {
        return {};
    }
    if (platform::isSameFile(file, working_.path())) {
        userInterface_.message("That is the working database. Choose another file.");
        return {};
    }
    if (!modExport::confirmOverwrite(userInterface_, file)) {
        return {};
    }
    forgetLastOutcome();
    return file;
}

std::string FileChoice::toRead(const std::string& filter) const {
    return chosen([&] { return dialogs_.openFile({filter, {}}); });
}

void FileChoice::forgetLastOutcome() const {
    userInterface_.status(StatusPanel::folder, {});
}
