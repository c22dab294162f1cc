#pragma once

#include <cstdint>

// The export options. One object lives as long as the program, so that its values carry over from one export
// to the next.
class clsExport {
public:
    std::int32_t detail = 0;   // 1: all files and folders; 2: folders only; anything else selects as 1 does
    bool exportType = false;   // cleared before the options are asked for; nothing reads it
    bool cancelExport = false; // the options were last left with Cancel
};
