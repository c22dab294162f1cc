#pragma once

#include <optional>
#include <string>

// What `spannory` was asked for on its command line.
struct WindowOptions {
    std::string applicationFolder; // as typed; empty for the usual one
    std::string path;              // the folder to select and scan at once, as typed; may be empty

    // Set when there is nothing more to do (help, version, wrong usage): what to exit with.
    std::optional<int> exitStatus;
};

// Takes its own options; prints help, version and errors of usage itself. Qt's own options (-style,
// -platform, …) must have been taken out before.
[[nodiscard]] WindowOptions parseWindowCommandLine(int argumentCount, const char* const* arguments);
