#include "platform/commandLine.h"

#include <windows.h>

#include <shellapi.h>

#include <memory>

#include "platform/win32/wide.h"

namespace platform {

// The arguments are read from the system again: those of main are in the machine's code page and have lost
// the characters that it lacks.
CommandLine::CommandLine(int /*count*/, char** /*arguments*/) {
    const std::unique_ptr<wchar_t*, decltype(&::LocalFree)> list(
        ::CommandLineToArgvW(::GetCommandLineW(), &count_), &::LocalFree);
    for (int i = 0; i < count_; ++i) {
        words_.push_back(narrow(list.get()[i]));
    }
    for (std::string& word : words_) {
        pointers_.push_back(word.data());
    }
    pointers_.push_back(nullptr);
}

} // namespace platform
