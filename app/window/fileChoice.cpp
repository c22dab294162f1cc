#include "app/window/fileChoice.h"

#include "export/exportQueries.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/runtimeError.h"

namespace {

// Leaving the dialog is an error to whoever shows it, and here no file name.
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
        userInterface_.message("This is the database that the program works with. Choose another file.");
        return {};
    }
    if (!modExport::confirmOverwrite(userInterface_, file)) {
        return {};
    }
    forgetLastOutcome();
    return file;
}

std::string FileChoice::toRead(const std::string& filter) const {
    std::string file = chosen([&] { return dialogs_.openFile({filter, {}}); });
    if (!file.empty()) {
        forgetLastOutcome();
    }
    return file;
}

// What the status bar says of the last file would be taken for this one's.
void FileChoice::forgetLastOutcome() const {
    userInterface_.status(StatusPanel::folder, {});
}
