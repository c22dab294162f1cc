#pragma once

#include <string>
#include <string_view>

#include "platform/environment.h"
#include "platform/paths.h"
#include "support/testSystem.h"

// Converts texts that tests write in one form to those of this system.

// The displayed form of these internal names on the test drive: `usr\a` is /usr/a or C:\usr\a.
[[nodiscard]] inline std::string shown(std::string_view names) {
    return platform::displayPath(testSystem::root().append(names));
}

// The text with the line ends that reports use.
[[nodiscard]] inline std::string withLineEnds(std::string_view text) {
    std::string result;
    for (const char c : text) {
        c == '\n' ? result.append(platform::lineEnd) : result.append(1, c);
    }
    return result;
}

// The template of the working database beside the test program.
[[nodiscard]] inline std::string templateFile() {
    return platform::executableFolder() + "001.dat";
}
