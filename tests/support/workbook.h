#pragma once

#include <cstdio>
#include <string>

// One part of a workbook, unpacked by the system's tool; empty where that is missing.
inline std::string unpacked(const std::string& workbook, const std::string& part) {
    std::string content;
    std::FILE* const pipe = ::popen(("unzip -p '" + workbook + "' " + part).c_str(), "r");
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
        content.push_back(static_cast<char>(c));
    }
    ::pclose(pipe);
    return content;
}
