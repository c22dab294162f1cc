#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/clsUserInterface.h"

class clsSearch;

// The user interface of the console program: messages and progress on standard error, questions only if there
// is a terminal to answer them.
class ConsoleInterface final : public clsUserInterface {
public:
    // `force` answers yes to questions about overwriting and large Excel reports; `quiet` hides the progress.
    ConsoleInterface(bool force, bool quiet);

    // The scan whose progress is shown and that Ctrl-C cancels; not owned. Null when there is none.
    void watch(clsSearch* search) { search_ = search; }

    // The subject of the messages that follow: a path as typed, or nothing.
    void setSubject(std::string_view subject) { subject_ = subject; }

    [[nodiscard]] std::int64_t messageCount() const noexcept { return messageCount_; }

    void message(std::string_view text) override;
    [[nodiscard]] bool ask(Question question, std::string_view text) override;
    [[nodiscard]] bool confirm(Question question, std::string_view text, std::string_view subject) override;
    void setBusy(bool busy) override;
    void progressStart(std::int64_t maximum) override;
    void progressStep() override;
    void progressHide() override;
    void status(StatusPanel panel, std::string_view text) override;
    void yieldToEvents() override;
    void openFile(std::string_view path) override;

private:
    void showProgress(const std::string& text);
    void clearProgress();

    clsSearch* search_ = nullptr;
    std::string subject_;
    std::string throughput_;
    std::string folder_;
    std::int64_t messageCount_ = 0;
    std::int64_t progressMaximum_ = 0;
    std::int64_t progressValue_ = 0;
    std::int64_t lastShown_ = 0; // a tick of the clock
    bool force_;
    bool showsProgress_;
    bool progressOnScreen_ = false;
};
