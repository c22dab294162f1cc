#include "console/consoleOptions.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>

#include "base/clsSettings.h"
#include "base/terminalText.h"
#include "collect/serverUrl.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/runtimeError.h"
#include "platform/terminal.h"

namespace {

constexpr int wrongUsage = 2;
constexpr std::int64_t mostRows = 1'000'000'000;

// For options that name a file.
std::string requireName(const std::string& file) {
    return file.empty() ? "The name of a file is missing" : "";
}

// A script may give what it has not set; that would match everything.
std::string requireText(const std::string& text) {
    return text.empty() ? "is empty" : "";
}

// Workbooks and databases are no texts.
std::string requireRealFile(const std::string& file) {
    return file == platform::standardOutput ? "This cannot be written to standard output" : requireName(file);
}

void addOutputs(CLI::App& app, ConsoleOptions& options) {
    app.add_option("--html", options.htmlFile, "Write an HTML report")->type_name("FILE")->check(requireName);
    app.add_option("--text", options.textFile, "Write a text report (comma-separated)")
        ->type_name("FILE")
        ->check(requireName);
    app.add_option("--xml", options.xmlFile, "Write an XML report, nested by folder")
        ->type_name("FILE")
        ->check(requireName);
    app.add_option("--excel", options.excelFile, "Write an Excel workbook")
        ->type_name("FILE")
        ->check(requireRealFile);
    app.add_option("--overview", options.overviewFile, "Write a page to read, about each PATH (HTML)")
        ->type_name("FILE")
        ->check(requireName);
    app.add_option("--database", options.databaseFile, "Save the scan as an SQLite database")
        ->type_name("FILE")
        ->check(requireRealFile);
}

CLI::Option* addLoad(CLI::App& app, ConsoleOptions& options) {
    return app
        .add_option("--load", options.loadFile,
                    "Load a saved scan, or one from a server, instead of scanning; PATH then only selects "
                    "what is shown")
        ->type_name("FILE|URL")
        ->check(requireName);
}

void addExactness(CLI::App& app, ConsoleOptions& options) {
    app.add_flag("--full-sizes", options.fullSizes, "Record the real size of files of 2 GiB or more");
    app.add_flag("--exact", options.exact,
                 "Exact figures and reports for this run: real sizes, HTML 5, RFC 4180 text");
    const auto addOnDisk = [&](const char* name, bool onDisk, const char* text) {
        return app.add_flag_callback(
            name, [&options, onDisk] { options.onDisk = onDisk; }, text);
    };
    CLI::Option* onDisk =
        addOnDisk("--on-disk", true,
                  "Count what files and folders take on the disk, as du does, whatever the settings say");
    addOnDisk("--no-on-disk", false, "Count their sizes")->excludes(onDisk);
}

void addKeep(CLI::App& app, ConsoleOptions& options, CLI::Option* load) {
    CLI::Option* keep =
        app.add_option("--keep", options.keepFolder,
                       "Save the scan of each PATH in this folder, as a new file with the time in its name")
            ->type_name("DIR")
            ->check(requireName)
            ->excludes(load);
    app.add_option("--keep-last", options.keepLast, "Then remove all but the last N scans of PATH kept there")
        ->option_text("N")
        ->check(CLI::Range(std::int64_t{1}, mostRows))
        ->needs(keep);
}

CLI::Option* addHistory(CLI::App& app, ConsoleOptions& options) {
    constexpr int oneEach = 1;
    return app
        .add_option(
            "--history", options.history,
            "Tell what became of PATH from this saved scan, or from all in this folder; can be repeated")
        ->type_name("FILE|DIR")
        ->check(requireName)
        ->expected(oneEach)
        ->take_all()
        ->allow_extra_args(false);
}

std::string requireServerUrl(const std::string& text) {
    try {
        static_cast<void>(parseServerUrl(text));
        return {};
    } catch (const RuntimeError& error) {
        return error.what();
    }
}

std::string requirePlainName(const std::string& text) {
    return isPlainName(text) ? "" : "A name has letters, digits and \"_\" only";
}

void addCollect(CLI::App& app, ConsoleOptions& options) {
    constexpr std::int64_t secondsPerDay = 86400;
    app.add_option("--collect", options.collectUrl,
                   "Send the scan of each PATH to the ClickHouse server at this URL: "
                   "https://USER@HOST:PORT/DATABASE")
        ->option_text("URL")
        ->check(requireServerUrl);
    CLI::Option* setup = app.add_option("--collect-setup", options.collectSetupUrl,
                                        "Make the database for scans on such a server, and do nothing else")
                             ->option_text("URL")
                             ->check(requireServerUrl);
    app.add_option("--cluster", options.collectCluster,
                   "Spread it over this cluster; do it on each server of it")
        ->option_text("NAME")
        ->check(requirePlainName)
        ->needs(setup);
    app.add_option("--collect-password-file", options.collectPasswordFile,
                   "The first line of FILE is the password there (else SPANNORY_COLLECT_PASSWORD)")
        ->type_name("FILE")
        ->check(requireName);
    app.add_option("--collect-patience", options.collectPatience,
                   "How long to try again while the server is down, in seconds; 0 for one try")
        ->option_text("SECONDS=" + std::to_string(options.collectPatience))
        ->check(CLI::Range(std::int64_t{0}, secondsPerDay));
}

CLI::Option* addCollected(CLI::App& app, ConsoleOptions& options) {
    constexpr std::int64_t mostDays = 36500;
    CLI::Option* collected =
        app.add_option("--collected", options.collectedUrl,
                       "Tell what the server at this URL knows of all machines, or of PATH on them")
            ->option_text("URL")
            ->check(requireServerUrl);
    app.add_option("--host", options.host, "Of this machine alone; with --load URL, the one whose scan it is")
        ->option_text("NAME")
        ->check(requireText);
    app.add_option("--scan", options.scan,
                   "With --load URL, the id of the scan (default: the newest of PATH)")
        ->option_text("ID")
        ->check(requireText);
    app.add_option("--days", options.days, "How many days back to tell growth from")
        ->option_text("N=" + std::to_string(options.days))
        ->check(CLI::Range(std::int64_t{0}, mostDays))
        ->needs(collected);
    return collected;
}

// Nothing is scanned, loaded or looked for when saved scans or a server are asked.
void requireAlone(CLI::App& app, CLI::Option* asked) {
    if (asked->empty()) {
        return;
    }
    for (const char* name :
         {"--history", "--collected", "--load", "--compare", "--overview", "--database", "--keep",
          "--collect", "--collect-setup", "--exclude", "--exclude-from", "--unreadable", "--find", "--larger",
          "--smaller", "--older", "--newer", "--extension", "--owner"}) {
        if (name != asked->get_name() && !app.get_option(name)->empty()) {
            throw CLI::ExcludesError(asked->get_name(), name);
        }
    }
}

void requireHistoryAlone(CLI::App& app, const ConsoleOptions& options, CLI::Option* history) {
    requireAlone(app, history);
    if (!history->empty() && !options.xmlFile.empty()) {
        throw CLI::ExcludesError("--history", "--xml");
    }
    if (!history->empty() && options.paths.size() != 1) {
        throw CLI::ArgumentMismatch("--history needs one PATH");
    }
}

void requireCollectedAlone(CLI::App& app, const ConsoleOptions& options, CLI::Option* collected) {
    requireAlone(app, collected);
    if (!collected->empty() && options.paths.size() > 1) {
        throw CLI::ArgumentMismatch("--collected needs no PATH, or one");
    }
}

void addExcludes(CLI::App& app, ConsoleOptions& options, CLI::Option* load) {
    const auto addRepeatable = [&](const char* name, std::vector<std::string>& values, const char* text) {
        constexpr int oneEach = 1;
        return app.add_option(name, values, text)
            ->expected(oneEach)
            ->take_all()
            ->allow_extra_args(false)
            ->excludes(load);
    };
    addRepeatable("--exclude", options.excludes,
                  "Leave out what fits this pattern: a name or the end of a path, with *, ? and [...]")
        ->option_text("PATTERN");
    addRepeatable("--exclude-from", options.excludeFiles, "Leave out what fits a pattern in FILE, one a line")
        ->type_name("FILE")
        ->check(requireName);
}

void addComparison(CLI::App& app, ConsoleOptions& options) {
    CLI::Option* compare = app.add_option("--compare", options.compareFile,
                                          "Print and write what has changed since this saved scan")
                               ->type_name("FILE")
                               ->check(requireName);
    app.add_option("--compare-folder", options.compareFolder,
                   "The folder in that saved scan to compare PATH with, if it is another one")
        ->type_name("FOLDER")
        ->check(requireName)
        ->needs(compare);
    CLI::Option* all =
        app.add_flag("--all", options.keepsSame, "List what has not changed too")->needs(compare);
    app.add_flag("--changed-only")
        ->description("List only what has changed (the default)")
        ->needs(compare)
        ->excludes(all);
}

std::string requireSize(const std::string& text) {
    return modFind::parseSize(text) ? ""
                                    : "'" + text + "' is not a size; say it as 500, 10M or 1.5G, for example";
}

std::string requireDays(const std::string& text) {
    const bool isNumber = text.find_first_not_of("0123456789.") == std::string::npos;
    return isNumber && modFind::parseMoment(text, platform::now()) ? ""
                                                                   : "'" + text + "' is not a number of days";
}

// What was typed to find something; each is empty unless its option was given.
struct TypedConditions {
    std::string name;
    std::string larger;
    std::string smaller;
    std::string older;
    std::string newer;
    std::string extension;
    std::string owner;
};

std::vector<CLI::Option*> addFind(CLI::App& app, TypedConditions& typed, CLI::Option* noOwners) {
    return {
        app.add_option("--find", typed.name,
                       "Print the files with this in their name, or whose name fits a pattern with * and ?, "
                       "largest first")
            ->option_text("PATTERN")
            ->check(requireText),
        app.add_option("--larger", typed.larger, "Print files larger than this (500, 10M, 1.5G)")
            ->option_text("SIZE")
            ->check(requireSize),
        app.add_option("--smaller", typed.smaller, "Print files smaller than this")
            ->option_text("SIZE")
            ->check(requireSize),
        app.add_option("--older", typed.older, "Print files modified longer ago than this")
            ->option_text("DAYS")
            ->check(requireDays),
        app.add_option("--newer", typed.newer, "Print files modified since then")
            ->option_text("DAYS")
            ->check(requireDays),
        app.add_option("--extension", typed.extension, "Print files with this extension, or a pattern of it")
            ->option_text("EXT")
            ->check(requireText),
        app.add_option("--owner", typed.owner, "Print files of this owner, or a pattern of it")
            ->option_text("NAME")
            ->check(requireText)
            ->excludes(noOwners)};
}

modFind::Conditions conditionsOf(const TypedConditions& typed) {
    const platform::Seconds now = platform::now();
    modFind::Conditions conditions;
    conditions.name = typed.name;
    conditions.extension = typed.extension;
    conditions.owner = typed.owner;
    conditions.larger = modFind::parseSize(typed.larger);
    conditions.smaller = modFind::parseSize(typed.smaller);
    conditions.older = modFind::parseMoment(typed.older, now);
    conditions.newer = modFind::parseMoment(typed.newer, now);
    return conditions;
}

// Whoever looks for an owner wants owners looked up.
void takeConditions(const std::vector<CLI::Option*>& given, const TypedConditions& typed,
                    ConsoleOptions& options) {
    if (std::any_of(given.begin(), given.end(), [](const auto* each) { return each->count() > 0; })) {
        options.find = conditionsOf(typed);
    }
    if (!typed.owner.empty()) {
        options.owners = true;
    }
}

// What the parser cannot check.
void requireSense(const ConsoleOptions& options) {
    if (!options.collectSetupUrl.empty()) {
        if (!options.paths.empty() || !options.loadFile.empty() || !options.collectUrl.empty()) {
            throw CLI::ValidationError("--collect-setup", "does not go together with a scan");
        }
        return;
    }
    if (!options.collectedUrl.empty()) {
        return;
    }
    if (options.paths.empty() && options.loadFile.empty()) {
        throw CLI::RequiredError("PATH");
    }
    const bool loadsFromServer = isServerUrl(options.loadFile);
    if (loadsFromServer && options.host.empty()) {
        throw CLI::ValidationError("--load", "from a server needs --host");
    }
    if (!loadsFromServer && !(options.host.empty() && options.scan.empty())) {
        throw CLI::ValidationError("--host and --scan", "go together with --load URL or --collected");
    }
    if (options.find && !options.compareFile.empty()) {
        throw CLI::ValidationError("--compare", "does not go together with options that find files");
    }
    if (options.onDisk.value_or(false) && (!options.compareFile.empty() || !options.history.empty())) {
        throw CLI::ValidationError("--on-disk",
                                   "does not go together with --compare and --history, which tell sizes");
    }
    if (!options.compareFolder.empty() && options.paths.size() > 1) {
        throw CLI::ValidationError("--compare-folder", "needs a single PATH");
    }
}

} // namespace

ParsedCommandLine parseCommandLine(int argumentCount, const char* const* arguments) {
    ParsedCommandLine parsed;
    ConsoleOptions& options = parsed.options;
    CLI::App app("Scans folders and shows what uses the space.", "spannory-scan");
    app.allow_windows_style_options(false); // "/etc" is a path on every system
    app.set_version_flag("--version", "spannory-scan " SPANNORY_VERSION);
    app.set_help_flag("-h,--help", "Print this help and exit");

    app.add_option("PATH", options.paths, "Folders to scan; paths in the form used in the database work too")
        ->type_name("");
    addOutputs(app, options);
    CLI::Option* load = addLoad(app, options);
    addComparison(app, options);
    addKeep(app, options, load);
    addCollect(app, options);
    CLI::Option* collected = addCollected(app, options);
    CLI::Option* history = addHistory(app, options);
    app.add_flag("--summary", options.summary,
                 "Only folders in HTML, text and Excel reports, and in a saved scan");
    bool withOwners = false;
    bool withoutOwners = false;
    CLI::Option* owners = app.add_flag("--owners", withOwners, "Look up owners, whatever the settings say");
    CLI::Option* noOwners =
        app.add_flag("--no-owners", withoutOwners, "Do not look up owners")->excludes(owners);
    addExactness(app, options);
    app.add_flag("--unreadable", options.unreadable,
                 "List the folders and files that could not be read, and other volumes")
        ->excludes(load);
    app.add_option("--readers", options.readers,
                   "Threads that read folders ahead of the scan, 0 for none (default: as many as help)")
        ->option_text("N")
        ->check(CLI::Range(0, clsSettings::mostReaders));
    addExcludes(app, options, load);
    app.add_option("--app-folder", options.applicationFolder,
                   "Application folder, with settings.ini, main.dat and errorLog.txt")
        ->type_name("DIR");
    app.add_option("--top", options.top, "Rows per printed table, 0 for all")
        ->option_text("N=" + std::to_string(options.top))
        ->check(CLI::Range(std::int64_t{0}, mostRows));
    TypedConditions typed;
    const std::vector<CLI::Option*> conditions = addFind(app, typed, noOwners);
    app.add_flag("--force", options.force, "Overwrite files and write large Excel reports without asking");
    app.add_flag("--quiet", options.quiet, "Print nothing but errors");

    try {
        app.parse(argumentCount, arguments);
        requireHistoryAlone(app, options, history);
        requireCollectedAlone(app, options, collected);
        if (withOwners || withoutOwners) {
            options.owners = withOwners;
        }
        takeConditions(conditions, typed, options);
        requireSense(options);
    } catch (const CLI::ParseError& error) {
        std::ostringstream answer;
        parsed.exitStatus = app.exit(error, answer, answer) == 0 ? 0 : wrongUsage;
        platform::writeTo(*parsed.exitStatus == 0 ? platform::Stream::output : platform::Stream::error,
                          linesForTerminal(answer.str())); // it may hold what was typed
    }
    return parsed;
}
