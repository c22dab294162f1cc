#include "window/commandLine.h"

#include <CLI/CLI.hpp>
#include <sstream>

#include "base/terminalText.h"

WindowOptions parseWindowCommandLine(int argumentCount, const char* const* arguments) {
    constexpr int wrongUsage = 2;
    WindowOptions options;
    CLI::App app("Shows what uses the space on a disk, in a window.", "spannory");
    app.allow_windows_style_options(false); // "/etc" is a path on every system
    app.set_version_flag("--version", "spannory " SPANNORY_VERSION);
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.add_option("PATH", options.path, "Folder to scan, or saved scan to load, at once")->type_name("");
    app.add_option("--app-folder", options.applicationFolder,
                   "Application folder, with settings.ini, main.dat and errorLog.txt")
        ->type_name("DIR");
    app.add_flag("--read-only", options.readOnly, "Offer nothing that changes files or folders");
    try {
        app.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& error) {
        std::ostringstream answer;
        options.exitStatus = app.exit(error, answer, answer) == 0 ? 0 : wrongUsage;
        options.answer = linesForTerminal(answer.str());
    }
    return options;
}
