#pragma once

#include <optional>
#include <string>

// What `spannory` was asked for on its command line.
struct WindowOptions {
    std::string applicationFolder; // as typed; empty for the usual one
    std::string path;              // the folder to select and scan at once, as typed; may be empty

    // When nothing more is to be done (help, version, wrong usage): what to exit with, what to say before.
    std::optional<int> exitStatus;
    std::string answer;
};

// Takes its own options. Qt's own (-style, -platform, …) must have been taken out before.
[[nodiscard]] WindowOptions parseWindowCommandLine(int argumentCount, const char* const* arguments);
