#include "platform/terminal.h"

#include <fcntl.h>
#include <langinfo.h>
#include <locale.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <iostream>
#include <system_error>

namespace platform {

namespace {

volatile std::sig_atomic_t interrupted = 0;
int writeFailure = 0;

int descriptorOf(Stream stream) {
    switch (stream) {
    case Stream::input:
        return STDIN_FILENO;
    case Stream::output:
        return STDOUT_FILENO;
    default:
        return STDERR_FILENO;
    }
}

extern "C" void onInterruption(int) {
    interrupted = 1;
}

} // namespace

bool isTerminal(Stream stream) {
    return ::isatty(descriptorOf(stream)) == 1;
}

std::size_t terminalWidth(Stream stream, std::size_t fallback) {
    winsize size{};
    const bool known = ::ioctl(descriptorOf(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : fallback;
}

bool writesUnicode() {
    const locale_t locale = ::newlocale(LC_CTYPE_MASK, "", nullptr);
    if (locale == nullptr) {
        return false;
    }
    const bool result = std::string_view(::nl_langinfo_l(CODESET, locale)) == "UTF-8";
    ::freelocale(locale);
    return result;
}

bool writeTo(Stream stream, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptorOf(stream), text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            writeFailure = errno;
            return false;
        }
    }
    return true;
}

std::string lastWriteFailure() {
    return writeFailure == 0 || writeFailure == EPIPE ? "" : std::generic_category().message(writeFailure);
}

std::optional<std::string> readLine() {
    std::string line;
    if (!std::getline(std::cin, line)) {
        return std::nullopt;
    }
    return line;
}

InterruptionWatch::InterruptionWatch() {
    struct sigaction action {};
    ::sigaction(SIGINT, nullptr, &action);
    replaced_ = action.sa_handler != SIG_IGN; // a background job must not be interrupted
    if (replaced_) {
        action = {};
        action.sa_handler = onInterruption;
        action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
        ::sigaction(SIGINT, &action, nullptr);
    }
}

InterruptionWatch::~InterruptionWatch() {
    if (replaced_) {
        ::signal(SIGINT, SIG_DFL);
    }
}

bool wasInterrupted() {
    return interrupted != 0;
}

void ignoreBrokenPipes() {
    ::signal(SIGPIPE, SIG_IGN);
}

void keepClosedStreamsClosed() {
    int descriptor = 0;
    do {
        descriptor = ::open("/dev/null", O_RDONLY); // so writing to it fails, as with a closed stream
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor >= 0) {
        ::close(descriptor);
    }
}

} // namespace platform
