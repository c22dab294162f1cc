#pragma once

#include <string>
#include <vector>

namespace platform {

// The program's arguments as UTF-8 on every system, in the form that main gets them: the program's name
// first, a null pointer after the last. Code that takes out some of them lowers the count.
class CommandLine {
public:
    // The arguments of main.
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
