#pragma once

#include <string>
#include <vector>

namespace platform {

// The arguments that the program was started with, in the form of main's (the program's name first, a null
// pointer behind the last), as UTF-8 on every system. What takes some of them out lowers the count.
class CommandLine {
public:
    // Those of main.
    CommandLine(int count, char** arguments);
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    [[nodiscard]] int& count() noexcept { return count_; }
    [[nodiscard]] char** arguments() noexcept { return pointers_.data(); }

private:
    int count_ = 0;
    std::vector<std::string> words_;
    std::vector<char*> pointers_;
};

} // namespace platform
