#pragma once

#include <string>
#include <string_view>

#include "base/clsUserInterface.h"
#include "db/workingDatabase.h"
#include "window/dialogs/clsDialogs.h"

// Asks for the file that a command writes or reads. Nothing is owned.
class FileChoice {
public:
    FileChoice(clsDialogs& dialogs, clsUserInterface& userInterface, const WorkingDatabase& working)
        : dialogs_(dialogs), userInterface_(userInterface), working_(working) {}

    // Shows the save dialog, with the current date and time and the extension (".html") as the proposed name,
    // and asks before overwriting a file. Empty if the user cancels or, after a message, if the chosen file
    // is the working database.
    [[nodiscard]] std::string toWrite(const std::string& filter, std::string_view extension) const;

    // Shows the open dialog. Empty if the user cancels.
    [[nodiscard]] std::string toRead(const std::string& filter) const;

    // Takes the status bar's text about the last file away, which could be taken for this one's.
    void forgetLastOutcome() const;

private:
    clsDialogs& dialogs_;
    clsUserInterface& userInterface_;
    const WorkingDatabase& working_;
};
