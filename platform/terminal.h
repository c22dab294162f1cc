#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// The terminal of a console program.
namespace platform {

enum class Stream { input, output, error };

[[nodiscard]] bool isTerminal(Stream stream);

// The width, in columns, of the terminal behind standard output or error; `fallback` if there is none.
[[nodiscard]] std::size_t terminalWidth(Stream stream, std::size_t fallback = 80);

// True if the terminal or locale accepts UTF-8.
[[nodiscard]] bool writesUnicode();

// Writes to standard output or error. False if not all bytes could be written (a full disk, a closed pipe).
bool writeTo(Stream stream, std::string_view text);

// The reason why the last writeTo failed; empty if the reader merely went away.
[[nodiscard]] std::string lastWriteFailure();

// A line from standard input; nothing at the end of input.
[[nodiscard]] std::optional<std::string> readLine();

// While an object lives, the first Ctrl-C only sets a flag; a second one ends the program. A program that was
// started with Ctrl-C ignored keeps ignoring it.
class InterruptionWatch {
public:
    InterruptionWatch();
    ~InterruptionWatch();
    InterruptionWatch(const InterruptionWatch&) = delete;
    InterruptionWatch& operator=(const InterruptionWatch&) = delete;

private:
    bool replaced_ = false;
};

// True after Ctrl-C was pressed during a watch.
[[nodiscard]] bool wasInterrupted();

// From here on, the program does not end when the reader of its standard output goes away.
void ignoreBrokenPipes();

// If the program was started without a standard stream, no file that it opens later takes that stream's
// place; writing to the stream keeps failing.
void keepClosedStreamsClosed();

} // namespace platform
