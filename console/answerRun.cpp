#include "console/answerRun.h"

#include <algorithm>
#include <utility>

#include "base/applicationFolder.h"
#include "base/errorLog.h"
#include "base/errorLogFiles.h"
#include "export/targetFile.h"
#include "platform/files.h"
#include "platform/runtimeError.h"
#include "platform/terminal.h"

namespace {

constexpr int statusDone = 0;
constexpr int statusFailed = 1;
constexpr int statusCancelled = 130;

} // namespace

AnswerRun::AnswerRun(ConsoleOptions options)
    : options_(std::move(options)), userInterface_(options_.force, options_.quiet) {}

int AnswerRun::run() {
    platform::ignoreBrokenPipes();
    if (!start()) {
        return statusFailed;
    }
    checkOutputs();
    const platform::InterruptionWatch watch;
    try {
        answer();
    } catch (const RuntimeError& error) {
        if (!platform::wasInterrupted()) {
            fail({}, error.what());
        }
    }
    if (platform::wasInterrupted()) {
        return statusCancelled;
    }
    return failed_ ? statusFailed : statusDone;
}

bool AnswerRun::start() {
    try {
        applicationFolder_ = findApplicationFolder(options_.applicationFolder);
        modGlobal::setErrorLog(&userInterface_,
                               [this] { return modGlobal::errorLogFiles(store_, applicationFolder_); });
        return true;
    } catch (const RuntimeError& error) {
        fail({}, error.what());
        return false;
    }
}

void AnswerRun::checkOutputs() {
    std::vector<OwnFile> ownFiles =
        programsFiles(applicationFolder_, modGlobal::errorLogFiles(store_, applicationFolder_));
    ownFiles.push_back({applicationFolder_ + "main.dat", "the working database"});
    for (OwnFile& file : inputs()) {
        ownFiles.push_back(std::move(file));
    }
    outputs_ = outputsOf(options_);
    failed_ = !keepWritable(outputs_, ownFiles, userInterface_) || failed_;
    printsNothing_ =
        options_.quiet || std::any_of(outputs_.begin(), outputs_.end(), [](const Output& output) {
            return output.file == platform::standardOutput;
        });
}

void AnswerRun::print(const std::string& text) {
    if (printsNothing_ || platform::writeTo(platform::Stream::output, text)) {
        return;
    }
    const std::string reason = platform::lastWriteFailure();
    if (!reason.empty()) {
        fail("standard output", reason);
    }
}

void AnswerRun::write(const std::function<void(const Output& output, clsUserInterface& userInterface)>& one) {
    for (const Output& output : outputs_) {
        userInterface_.setSubject(output.file);
        if (!output.agreed && !modExport::confirmOverwrite(userInterface_, output.file)) {
            failed_ = true;
            continue;
        }
        const std::int64_t messagesBefore = userInterface_.messageCount();
        one(output, userInterface_);
        failed_ = failed_ || userInterface_.messageCount() != messagesBefore;
    }
}

void AnswerRun::fail(std::string_view subject, std::string_view reason) {
    failed_ = true;
    userInterface_.setSubject(subject);
    userInterface_.message(reason);
}
