#include "platform/terminal.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>

#include "platform/systemError.h"
#include "platform/win32/wide.h"

namespace platform {

namespace {

std::atomic<bool> interrupted = false;
DWORD writeFailure = ERROR_SUCCESS;

HANDLE handleOf(Stream stream) {
    switch (stream) {
    case Stream::input:
        return ::GetStdHandle(STD_INPUT_HANDLE);
    case Stream::output:
        return ::GetStdHandle(STD_OUTPUT_HANDLE);
    default:
        return ::GetStdHandle(STD_ERROR_HANDLE);
    }
}

// The first Ctrl-C sets the flag; the second ends the program.
BOOL WINAPI onInterruption(DWORD event) {
    const bool taken = event == CTRL_C_EVENT && !interrupted.exchange(true);
    return taken ? TRUE : FALSE;
}

// A console takes text, not bytes, and understands the sequences that clear a line only after it has been
// told to.
bool writeToConsole(HANDLE console, std::string_view text) {
    DWORD mode = 0;
    if (::GetConsoleMode(console, &mode) != 0 && (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) == 0) {
        ::SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
    const std::wstring units = wide(text);
    constexpr std::size_t mostAtOnce = 8192;
    for (std::size_t done = 0; done < units.size();) {
        DWORD written = 0;
        const auto count = static_cast<DWORD>(std::min(mostAtOnce, units.size() - done));
        if (::WriteConsoleW(console, units.data() + done, count, &written, nullptr) == 0) {
            writeFailure = ::GetLastError();
            return false;
        }
        done += written;
    }
    return true;
}

std::string withoutLineEnd(std::string line) {
    while (line.ends_with('\n') || line.ends_with('\r')) {
        line.pop_back();
    }
    return line;
}

std::optional<std::string> readConsoleLine(HANDLE console) {
    std::array<wchar_t, 4096> units{};
    DWORD count = 0;
    if (::ReadConsoleW(console, units.data(), static_cast<DWORD>(units.size()), &count, nullptr) == 0 ||
        count == 0 || units[0] == 0x1A) { // Ctrl-Z
        return std::nullopt;
    }
    return withoutLineEnd(narrow({units.data(), count}));
}

} // namespace

bool isTerminal(Stream stream) {
    DWORD mode = 0;
    return ::GetConsoleMode(handleOf(stream), &mode) != 0;
}

std::size_t terminalWidth(Stream stream, std::size_t fallback) {
    CONSOLE_SCREEN_BUFFER_INFO screen{};
    if (::GetConsoleScreenBufferInfo(handleOf(stream), &screen) == 0) {
        return fallback;
    }
    const int columns = screen.srWindow.Right - screen.srWindow.Left + 1;
    return columns > 0 ? static_cast<std::size_t>(columns) : fallback;
}

// A console accepts any text; all other output is UTF-8 without a byte order mark.
bool writesUnicode() {
    return isTerminal(Stream::output) || ::GetACP() == CP_UTF8;
}

bool writeTo(Stream stream, std::string_view text) {
    HANDLE handle = handleOf(stream);
    if (isTerminal(stream)) {
        return writeToConsole(handle, text);
    }
    while (!text.empty()) {
        DWORD written = 0;
        const auto count = static_cast<DWORD>(std::min<std::size_t>(text.size(), 1U << 20));
        if (::WriteFile(handle, text.data(), count, &written, nullptr) == 0) {
            writeFailure = ::GetLastError();
            return false;
        }
        text.remove_prefix(written);
    }
    return true;
}

std::string lastWriteFailure() {
    const bool readerIsGone = writeFailure == ERROR_BROKEN_PIPE || writeFailure == ERROR_NO_DATA;
    return writeFailure == ERROR_SUCCESS || readerIsGone ? "" : systemMessage(writeFailure);
}

std::optional<std::string> readLine() {
    HANDLE input = handleOf(Stream::input);
    if (isTerminal(Stream::input)) {
        return readConsoleLine(input);
    }
    std::string line;
    for (;;) {
        char c = 0;
        DWORD count = 0;
        if (::ReadFile(input, &c, 1, &count, nullptr) == 0 || count == 0) {
            return line.empty() ? std::nullopt : std::optional(withoutLineEnd(line));
        }
        if (c == '\n') {
            return withoutLineEnd(line);
        }
        line += c;
    }
}

InterruptionWatch::InterruptionWatch() : replaced_(::SetConsoleCtrlHandler(onInterruption, TRUE) != 0) {}

InterruptionWatch::~InterruptionWatch() {
    if (replaced_) {
        ::SetConsoleCtrlHandler(onInterruption, FALSE);
    }
}

bool wasInterrupted() {
    return interrupted;
}

// They never end the program here.
void ignoreBrokenPipes() {}

// Files never take a stream's place here.
void keepClosedStreamsClosed() {}

} // namespace platform
