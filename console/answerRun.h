#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/clsRegSettings.h"
#include "console/consoleInterface.h"
#include "console/consoleOptions.h"
#include "console/outputs.h"

// What runs have in common that scan and load nothing, and so need no working database: they print an answer,
// and write it to the outputs.
class AnswerRun {
public:
    explicit AnswerRun(ConsoleOptions options);
    virtual ~AnswerRun() = default;
    AnswerRun(const AnswerRun&) = delete;
    AnswerRun& operator=(const AnswerRun&) = delete;

    // As ConsoleRun::run.
    [[nodiscard]] int run();

protected:
    // After outputs were looked at. Calls `print` and `write`. An error may be thrown or told (fail).
    virtual void answer() = 0;
    // Files that an output must not replace, beside the program's own.
    [[nodiscard]] virtual std::vector<OwnFile> inputs() { return {}; }

    [[nodiscard]] const ConsoleOptions& options() const noexcept { return options_; }

    [[nodiscard]] bool hasOutputs() const noexcept { return !outputs_.empty(); }
    void print(const std::string& text);
    // Writes each output, which `one` does; a message of its tells of a failure.
    void write(const std::function<void(const Output& output, clsUserInterface& userInterface)>& one);
    void fail(std::string_view subject, std::string_view reason);

private:
    [[nodiscard]] bool start();
    void checkOutputs();

    ConsoleOptions options_;
    ConsoleInterface userInterface_;
    clsRegSettings store_;
    std::string applicationFolder_;
    std::vector<Output> outputs_;
    bool printsNothing_ = false;
    bool failed_ = false;
};
