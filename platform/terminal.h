#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// The terminal that a console program may stand in.
namespace platform {

enum class Stream { input, output, error };

[[nodiscard]] bool isTerminal(Stream stream);

// Columns of the terminal behind standard output or error; the fallback when there is none.
[[nodiscard]] std::size_t terminalWidth(Stream stream, std::size_t fallback = 80);

// True when the terminal or locale takes UTF-8.
[[nodiscard]] bool writesUnicode();

// Writes to standard output or error. False when the bytes could not be taken (a full disk, a closed pipe).
bool writeTo(Stream stream, std::string_view text);

// The reason of the last failed writeTo; empty when the reader merely went away.
[[nodiscard]] std::string lastWriteFailure();

// A line from standard input; nothing at its end.
[[nodiscard]] std::optional<std::string> readLine();

// While one lives, the first Ctrl-C only sets a flag; a second one ends the program. A program that was
// started with Ctrl-C ignored goes on ignoring it.
class InterruptionWatch {
public:
    InterruptionWatch();
    ~InterruptionWatch();
    InterruptionWatch(const InterruptionWatch&) = delete;
    InterruptionWatch& operator=(const InterruptionWatch&) = delete;

private:
    bool replaced_ = false;
};

// True once Ctrl-C was pressed under a watch.
[[nodiscard]] bool wasInterrupted();

// From here on a reader of standard output that goes away does not end the program.
void ignoreBrokenPipes();

// From here on no file that the program opens takes the place of a standard stream that it was started
// without; writing to that one goes on failing.
void keepClosedStreamsClosed();

} // namespace platform
