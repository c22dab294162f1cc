#pragma once

#include <optional>
#include <string>

// The content of `spannory`'s command line.
struct WindowOptions {
    std::string applicationFolder; // as typed; empty for the default
    bool readOnly = false;         // nothing on the disk may be changed
    std::string path;              // the folder to scan or the saved scan to load, as typed; empty for none

    // The exit status and the text to print first, if there is nothing more to do (help, version, wrong
    // usage).
    std::optional<int> exitStatus;
    std::string answer;
};

// Parses the program's own options. Qt's options (-style, -platform, …) must have been removed before.
[[nodiscard]] WindowOptions parseWindowCommandLine(int argumentCount, const char* const* arguments);
