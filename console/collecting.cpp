#include "console/collecting.h"

#include <algorithm>

#include "base/terminalText.h"
#include "collect/password.h"
#include "collect/patience.h"
#include "collect/server.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"
#include "platform/terminal.h"

namespace {

bool goesOn() {
    return !platform::wasInterrupted();
}

} // namespace

bool Collecting::check() {
    if (options_.collectUrl.empty()) {
        return true;
    }
    try {
        client_ = std::make_unique<HttpClient>(parseServerUrl(options_.collectUrl),
                                               collectPassword(options_.collectPasswordFile), &goesOn);
    } catch (const RuntimeError& error) {
        refuse(error.what());
        isGivenUp_ = true;
    }
    return !isGivenUp_;
}

void Collecting::refuse(std::string_view reason) {
    userInterface_.setSubject({});
    userInterface_.message(reason);
}

Collecting::Result Collecting::send(const Rows& rows, const std::vector<std::string>& keys,
                                    std::string& lines) {
    const platform::InterruptionWatch watch;
    Result all = Result::done;
    for (const std::string& key : keys) {
        const Result one = sendOne(rows, key, lines);
        if (one == Result::cancelled) {
            return one;
        }
        all = one == Result::failed ? one : all;
    }
    return all;
}

Collecting::Result Collecting::sendOne(const Rows& rows, const std::string& key, std::string& lines) {
    userInterface_.setSubject(platform::displayPath(key));
    try {
        modCollect::ScanToSend scan = modCollect::scanOf(rows.scans, key, options_.summary);
        scan.mostRows = rows.most;
        sendPatiently(rows.database, scan, lines);
        userInterface_.progressHide();
        return Result::done;
    } catch (const ServerError& error) {
        userInterface_.progressHide();
        const bool isCancelled = error.kind() == ServerError::Kind::cancelled;
        userInterface_.message(isCancelled ? std::string("not collected, because this was cancelled")
                                           : "not collected: " + std::string(error.what()));
        return isCancelled ? Result::cancelled : Result::failed;
    } catch (const RuntimeError& error) {
        userInterface_.progressHide();
        userInterface_.message(error.what());
        return Result::failed;
    }
}

void Collecting::sendPatiently(Database& database, const modCollect::ScanToSend& scan, std::string& lines) {
    constexpr double most = 1e15;
    const double total = database.OpenRecordset("select max(idx) from details")->Fields(0).number();
    modCollect::Outcome outcome = modCollect::Outcome::sent;
    modCollect::patiently(options_.collectPatience, &goesOn, [&] {
        std::int64_t shown = 0;
        userInterface_.progressStart(static_cast<std::int64_t>(std::clamp(total, 0.0, most)));
        outcome = modCollect::send(*client_, database, scan, [&](std::int64_t sent) {
            for (; shown < sent; ++shown) {
                userInterface_.progressStep();
            }
        });
    });
    lines += (outcome == modCollect::Outcome::sent ? "Collected on " : "Already collected on ") +
             client_->url().shown() + " as " + modCollect::idOf(scan) + ": " +
             forTerminal(platform::displayPath(scan.key)) + "\n";
}

int setUpServer(const ConsoleOptions& options) {
    constexpr int statusFailed = 1;
    constexpr int statusCancelled = 130;
    ConsoleInterface userInterface(options.force, options.quiet);
    platform::ignoreBrokenPipes();
    try {
        const platform::InterruptionWatch watch;
        HttpClient client(parseServerUrl(options.collectSetupUrl),
                          collectPassword(options.collectPasswordFile), &goesOn);
        modCollect::patiently(options.collectPatience, &goesOn,
                              [&] { modServer::setUp(client, options.collectCluster); });
        if (!options.quiet) {
            platform::writeTo(platform::Stream::output, "The database " + client.url().database + " on " +
                                                            client.url().shown() + " takes scans.\n");
        }
        return 0;
    } catch (const RuntimeError& error) {
        userInterface.message(error.what());
        return platform::wasInterrupted() ? statusCancelled : statusFailed;
    }
}
