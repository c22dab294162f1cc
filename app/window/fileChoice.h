#pragma once

#include <string>
#include <string_view>

#include "app/clsUserInterface.h"
#include "app/window/clsDialogs.h"
#include "db/workingDatabase.h"

// How a command comes by the file that it is to write or read. Nothing is owned.
class FileChoice {
public:
    FileChoice(clsDialogs& dialogs, clsUserInterface& userInterface, const WorkingDatabase& working)
        : dialogs_(dialogs), userInterface_(userInterface), working_(working) {}

    // Shows the Save dialog, proposing the present date and time with the extension (".html") as the name,
    // and asks before an existing file is overwritten. Empty when the person does not go on, or chose the
    // working database itself, which is told.
    [[nodiscard]] std::string toWrite(const std::string& filter, std::string_view extension) const;

    // Shows the Open dialog. Empty when it was left without a choice.
    [[nodiscard]] std::string toRead(const std::string& filter) const;

private:
    void forgetLastOutcome() const;

    clsDialogs& dialogs_;
    clsUserInterface& userInterface_;
    const WorkingDatabase& working_;
};
