#include <exception>

#include "base/terminalText.h"
#include "console/collectedRun.h"
#include "console/collecting.h"
#include "console/consoleOptions.h"
#include "console/consoleRun.h"
#include "console/historyRun.h"
#include "platform/commandLine.h"
#include "platform/environment.h"
#include "platform/terminal.h"

int main(int argumentCount, char** arguments) {
    constexpr int statusFailed = 1;
    try {
        platform::keepSystemBoxesAway();
        platform::letTooLargeWritesFail();
        platform::keepClosedStreamsClosed();
        platform::CommandLine given(argumentCount, arguments);
        const ParsedCommandLine parsed = parseCommandLine(given.count(), given.arguments());
        if (parsed.exitStatus) {
            return *parsed.exitStatus;
        }
        if (!parsed.options.collectSetupUrl.empty()) {
            return setUpServer(parsed.options);
        }
        if (!parsed.options.collectedUrl.empty()) {
            return CollectedRun(parsed.options).run();
        }
        return parsed.options.history.empty() ? ConsoleRun(parsed.options).run()
                                              : HistoryRun(parsed.options).run();
    } catch (const std::exception& error) {
        platform::writeTo(platform::Stream::error, "spannory-scan: " + forTerminal(error.what()) + "\n");
        return statusFailed;
    }
}
