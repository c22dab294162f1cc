#include <exception>

#include "base/terminalText.h"
#include "console/consoleOptions.h"
#include "console/consoleRun.h"
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
        return parsed.exitStatus ? *parsed.exitStatus : ConsoleRun(parsed.options).run();
    } catch (const std::exception& error) {
        platform::writeTo(platform::Stream::error, "spannory-scan: " + forTerminal(error.what()) + "\n");
        return statusFailed;
    }
}
