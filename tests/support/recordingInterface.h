#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/clsUserInterface.h"

// A user interface that records all calls and answers every question the same way.
class RecordingInterface final : public clsUserInterface {
public:
    void message(std::string_view text) override { messages.emplace_back(text); }
    bool ask(Question question, std::string_view text) override {
        questions.emplace_back(question, text);
        return answer;
    }
    bool confirm(Question question, std::string_view text, std::string_view subject) override {
        confirmed.emplace_back(subject);
        return ask(question, text);
    }
    void setBusy(bool busy) override { busyDepth += busy ? 1 : -1; }
    void progressStart(std::int64_t maximum) override {
        progressMaximum = maximum;
        progressValue = 0;
        progressVisible = true;
    }
    void progressStep() override { ++progressValue; }
    void progressHide() override { progressVisible = false; }
    void status(StatusPanel panel, std::string_view text) override { statuses.emplace_back(panel, text); }
    void yieldToEvents() override {
        ++yields;
        if (onYield) {
            onYield();
        }
    }
    void openFile(std::string_view path) override { opened.emplace_back(path); }

    bool answer = true;
    std::function<void()> onYield;

    std::vector<std::string> messages;
    std::vector<std::pair<Question, std::string>> questions;
    std::vector<std::string> confirmed; // the subjects of those questions that have No as their default
    std::vector<std::pair<StatusPanel, std::string>> statuses;
    std::vector<std::string> opened;
    int busyDepth = 0;
    int yields = 0;
    std::int64_t progressMaximum = 0;
    std::int64_t progressValue = 0;
    bool progressVisible = false;
};
