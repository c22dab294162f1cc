#include "app/console/consoleOptions.h"

#include <CLI/CLI.hpp>

namespace {

constexpr int wrongUsage = 2;
constexpr std::int64_t mostRows = 1'000'000'000;

} // namespace

ParsedCommandLine parseCommandLine(int argumentCount, const char* const* arguments) {
    ParsedCommandLine parsed;
    ConsoleOptions& options = parsed.options;
    CLI::App app("Scans folders into a database and reports what takes the space.", "spannory-scan");
    app.allow_windows_style_options(false); // "/etc" is a path everywhere
    app.set_version_flag("--version", "spannory-scan " SPANNORY_VERSION);
    app.set_help_flag("-h,--help", "Print this help and exit");

    app.add_option("PATH", options.paths,
                   "Folders to scan: native paths, or drives and shares in the program's form")
        ->type_name("");
    app.add_option("--html", options.htmlFile, "Write an HTML report")->type_name("FILE");
    app.add_option("--text", options.textFile, "Write a text report (comma-separated)")->type_name("FILE");
    app.add_option("--xml", options.xmlFile, "Write an XML report of the folders")->type_name("FILE");
    app.add_option("--excel", options.excelFile, "Write an Excel workbook")->type_name("FILE");
    app.add_option("--database", options.databaseFile, "Write a copy of the scan database")
        ->type_name("FILE");
    app.add_option("--load", options.loadFile,
                   "Start from a saved database instead of scanning; PATH then only chooses what is shown")
        ->type_name("FILE");
    app.add_flag("--summary", options.summary, "Folders only in HTML, text and Excel reports");
    bool withOwners = false;
    bool withoutOwners = false;
    CLI::Option* owners = app.add_flag("--owners", withOwners, "Look up owners, whatever the settings say");
    app.add_flag("--no-owners", withoutOwners, "Do not look up owners")->excludes(owners);
    app.add_flag("--full-sizes", options.fullSizes, "Record whole 64-bit file sizes");
    app.add_option("--app-folder", options.applicationFolder,
                   "Where 001.dat, settings.ini, main.dat and errorLog.txt live")
        ->type_name("DIR");
    app.add_option("--top", options.top, "Rows per printed table, 0 for all")
        ->option_text("N=" + std::to_string(options.top))
        ->check(CLI::Range(std::int64_t{0}, mostRows));
    app.add_flag("--force", options.force, "Answer yes to overwriting and to large Excel reports");
    app.add_flag("--quiet", options.quiet, "Print nothing but errors");

    try {
        app.parse(argumentCount, arguments);
        if (options.paths.empty() && options.loadFile.empty()) {
            throw CLI::RequiredError("PATH");
        }
        if (withOwners || withoutOwners) {
            options.owners = withOwners;
        }
    } catch (const CLI::ParseError& error) {
        parsed.exitStatus = app.exit(error) == 0 ? 0 : wrongUsage;
    }
    return parsed;
}
