#pragma once

#include <cstdint>
#include <string>

// The export options. One object lives as long as the program, so its values are kept from one export to the
// next.
class clsExport {
public:
    static constexpr std::int32_t detailed = 1; // all files and folders
    static constexpr std::int32_t summary = 2;  // folders only

    std::int32_t detail = 0;   // one of these; anything else works like `detailed`
    bool exportType = false;   // cleared before the options are shown; nothing reads it
    bool cancelExport = false; // the options were last closed with Cancel

    bool onlyFolder = false; // only `folder` and what is below it, if there is one
    std::string folder;      // the selected folder (a key), if it has rows; set before the options are shown
};
