#include "console/consoleInterface.h"

#include "base/numberFormat.h"
#include "base/terminalText.h"
#include "db/dao.h"
#include "platform/clock.h"
#include "platform/terminal.h"
#include "platform/text.h"
#include "scan/clsSearch.h"

namespace {

constexpr std::int64_t millisecondsPerRefresh = 100;

// The lines of a message joined into one.
std::string oneLine(std::string_view text) {
    std::string result(text);
    for (std::size_t at = 0; (at = result.find("\r\n", at)) != std::string::npos;) {
        result.replace(at, 2, " ");
    }
    return forTerminal(result);
}

} // namespace

ConsoleInterface::ConsoleInterface(bool force, bool quiet)
    : force_(force), showsProgress_(!quiet && platform::isTerminal(platform::Stream::error)) {}

void ConsoleInterface::message(std::string_view text) {
    ++messageCount_;
    clearProgress();
    const bool isNamed = text.find(": " + subject_ + " was not ") != std::string_view::npos;
    const std::string subject = subject_.empty() || isNamed ? "" : subject_ + ": ";
    platform::writeTo(platform::Stream::error,
                      "spannory-scan: " + oneLine(subject + std::string(text)) + "\n");
}

bool ConsoleInterface::ask(Question question, std::string_view text) {
    return confirm(question, text, {});
}

bool ConsoleInterface::confirm(Question question, std::string_view text, std::string_view subject) {
    if (question == Question::openLargeReport) {
        return false; // the console program never opens files
    }
    if (force_) {
        return true;
    }
    if (!platform::isTerminal(platform::Stream::input) || !platform::isTerminal(platform::Stream::error)) {
        message(std::string(text) +
                " Not done: this needs an answer, and there is no terminal (use --force)");
        return false;
    }
    clearProgress();
    const std::string line =
        subject.empty() ? subject_ + ": " + std::string(text) : std::string(text).append(" ").append(subject);
    platform::writeTo(platform::Stream::error, oneLine(line) + " [y/N] ");
    const std::string answer = platform::readLine().value_or("");
    return !answer.empty() && platform::asciiLower(answer.front()) == 'y';
}

void ConsoleInterface::setBusy(bool busy) {
    if (!busy) {
        clearProgress();
    }
}

void ConsoleInterface::progressStart(std::int64_t maximum) {
    progressMaximum_ = maximum;
    progressValue_ = 0;
}

void ConsoleInterface::progressStep() {
    ++progressValue_;
    constexpr std::int64_t stepsPerLook = 4096; // between looks at the clock
    if (showsProgress_ && progressValue_ % stepsPerLook == 0) {
        showProgress(subject_ + ": " + std::to_string(progressValue_) + " of " +
                     std::to_string(progressMaximum_));
    }
}

void ConsoleInterface::progressHide() {
    clearProgress();
}

void ConsoleInterface::status(StatusPanel panel, std::string_view text) {
    if (panel == StatusPanel::throughput) {
        throughput_ = text;
    } else if (panel == StatusPanel::folder) {
        folder_ = text;
    }
}

void ConsoleInterface::yieldToEvents() {
    if (search_ == nullptr) {
        return;
    }
    if (platform::wasInterrupted()) {
        search_->CancelScan = true;
    }
    if (showsProgress_) {
        std::string text;
        modFormat::appendNumber(text, search_->filesSeen);
        showProgress(text + " files, " + (throughput_.empty() ? "0 files/sec" : throughput_) + "  " +
                     folder_);
    }
}

void ConsoleInterface::openFile(std::string_view /*path*/) {}

void ConsoleInterface::showProgress(const std::string& text) {
    const std::int64_t tick = platform::tickCount();
    if (progressOnScreen_ && tick - lastShown_ < millisecondsPerRefresh) {
        return;
    }
    lastShown_ = tick;
    progressOnScreen_ = true;
    const std::size_t width = platform::terminalWidth(platform::Stream::error);
    platform::writeTo(platform::Stream::error,
                      "\r\x1b[K" + std::string(platform::firstCharacters(oneLine(text), width - 1)));
}

void ConsoleInterface::clearProgress() {
    if (progressOnScreen_) {
        platform::writeTo(platform::Stream::error, "\r\x1b[K");
        progressOnScreen_ = false;
    }
}
