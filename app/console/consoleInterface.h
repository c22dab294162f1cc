#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "app/clsUserInterface.h"

class clsSearch;

// The user interface of the console program: messages and progress on standard error, questions only where
// there is a terminal to answer them.
class ConsoleInterface final : public clsUserInterface {
public:
    // `force` answers yes to overwriting and to large Excel reports; `quiet` shows no progress.
    ConsoleInterface(bool force, bool quiet);

    // The scan that progress is shown of and that Ctrl-C cancels; not owned. Null when there is none any
    // more.
    void watch(clsSearch* search) { search_ = search; }

    // What messages are about until it is set anew: a path as typed, or nothing.
    void setSubject(std::string_view subject) { subject_ = subject; }

    [[nodiscard]] std::int64_t messageCount() const noexcept { return messageCount_; }

    void message(std::string_view text) override;
    [[nodiscard]] bool ask(Question question, std::string_view text) override;
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
    std::int64_t lastShown_ = 0; // tick
    bool force_;
    bool showsProgress_;
    bool progressOnScreen_ = false;
};
