#include <exception>

#include "app/console/consoleOptions.h"
#include "app/console/consoleRun.h"
#include "platform/terminal.h"

int main(int argumentCount, char** arguments) {
    constexpr int statusFailed = 1;
    try {
        const ParsedCommandLine parsed = parseCommandLine(argumentCount, arguments);
        return parsed.exitStatus ? *parsed.exitStatus : ConsoleRun(parsed.options).run();
    } catch (const std::exception& error) {
        platform::writeTo(platform::Stream::error, std::string("spannory-scan: ") + error.what() + "\n");
        return statusFailed;
    }
}
