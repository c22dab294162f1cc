#include "console/consoleFixture.h"

#include <algorithm>

#include "platform/paths.h"
#include "support/sqliteScript.h"

namespace fs = std::filesystem;

namespace {

TEST_F(Console, printsTheFiguresOfEachPath) {
    const Outcome outcome = run("%T %T/b", {{"LC_ALL", "C"}, {"TZ", "UTC"}});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    const std::string out = outcome.output;
    const std::size_t a = out.find("  a  ");
    const std::size_t b = out.find("  b  ");
    const std::size_t files = out.find("  |Files|  ");
    EXPECT_TRUE(a < b && b < files && files != std::string::npos) << out;
    EXPECT_TRUE(holds(out, "4.0 Kb\n")) << out;
    EXPECT_TRUE(holds(out, "  txt                 4.0 Kb           3\n")) << out;
    EXPECT_TRUE(holds(out, "  (no extension)      2.0 Kb           1\n")) << out;
    EXPECT_TRUE(holds(out, "\n\n6.0 Kb, 4 files, 3 folders\n\n8 items.\nFinished in ")) << out;
    EXPECT_TRUE(holds(out, platform::displayPath(folder.internal("tree/b") + "\\") + "\n"))
        << "the second path";
    EXPECT_TRUE(holds(run("--top 1 %T").output, "  (2 more)\n"));
    EXPECT_EQ(run("--quiet %T").output, "");
}

TEST_F(Console, saysWhatTheFiguresLack) {
    folder.write("tree/big", "");
    folder.write("tree/closed/file", "x");
    std::filesystem::resize_file(folder / "tree/big", 3ULL << 30);
    const std::string wrapped = "1 file of 2 GB or more is counted with wrapped sizes.";
    EXPECT_TRUE(holds(run("%T").errors, wrapped)) << "use --exact";
    EXPECT_TRUE(holds(run("--quiet %T").errors, wrapped));
    EXPECT_EQ(run("--exact %T").errors, "");
    EXPECT_TRUE(holds(run("--exact --unreadable %T").output, "All folders were read.\n"));

    const std::string saved = "%F/saved.mdb";
    EXPECT_EQ(run("--exact --quiet --database " + saved + " %T").errors, "");
    EXPECT_TRUE(holds(run("--load " + saved).output, "Saved scan: " + folder.typed("saved.mdb") + " ("));
    EXPECT_EQ(run("--quiet --load " + saved).output, "");
}

TEST_F(Console, leavesOutWhatIsExcluded) {
    folder.write("app/settings.ini", "[Excludes]\n1=direct.*\n");
    folder.write("patterns", "\r\nnone\r\ntwo.txt\r\n");
    const std::string others = "%F/patterns --exclude b/c --exclude none";
    const struct {
        std::string arguments;
        std::string summary;
        std::string leftOut;
    } cases[] = {
        {"", "6.0 Kb, 3 files, 3 folders\n", "1 item was left out by excludes.\n"},
        {"--exclude-from " + others, "2.0 Kb, 1 file, 2 folders\n", "3 items were left out by excludes.\n"},
    };
    for (const auto& each : cases) {
        const Outcome outcome = run(each.arguments + " %T");
        EXPECT_EQ(outcome.status, 0);
        EXPECT_TRUE(holds(outcome.output, each.summary)) << outcome.output;
        EXPECT_EQ(outcome.errors, "spannory-scan: " + folder.typed("tree") + ": " + each.leftOut);
    }
}

TEST_F(Console, writesAnOverviewOfEachPath) {
    EXPECT_EQ(run("--quiet --overview %F/o.html --database %F/saved.mdb %T/b %T/a").status, 0);
    const std::string page = folder.read("o.html");
    const std::size_t b = page.find(folder.typed("tree/b") + "</bdi></h2>");
    EXPECT_LT(b, page.find(folder.typed("tree/a") + "</bdi></h2>"));
    EXPECT_TRUE(holds(page, "Nothing: all was read"));

    const std::string load = "--quiet --force --load %F/saved.mdb --overview %F/o.html ";
    for (const auto& [path, sections] : {std::pair("", 2), std::pair("%T/a", 1)}) {
        EXPECT_EQ(run(load + path).status, 0);
        const std::string loaded = folder.read("o.html");
        int found = 0;
        for (std::size_t at = 0; (at = loaded.find("<section", at)) != std::string::npos; ++at) {
            ++found;
        }
        EXPECT_EQ(found, sections) << path;
        EXPECT_TRUE(holds(loaded, "Nothing: all was read"));
        EXPECT_FALSE(holds(loaded, "Free on the drive")) << "it may be another machine's";
    }
    EXPECT_TRUE(holds(run("--overview - %T").output, "<!DOCTYPE html>"));

    runSqliteScript(folder.typed("saved.mdb"),
                    "update scans set host='elsewhere', system='OS <9>', unreadableFolders=2, "
                    "excludes='*.o' || char(10) || 'x&y', finished='2020-02-29 12:00:00';");
    EXPECT_EQ(run(load + "%T/a").status, 0);
    EXPECT_TRUE(holds(folder.read("o.html"), "<dt>Host</dt><dd>elsewhere (OS &lt;9&gt;)</dd>"));
    EXPECT_TRUE(holds(folder.read("o.html"), ": 2 folders could not be read."));
    EXPECT_TRUE(holds(folder.read("o.html"), "What fits *.o, x&amp;y</dd>"));
    EXPECT_TRUE(
        holds(run("--load %F/saved.mdb", {{"TZ", "UTC"}}).output, "saved.mdb (02/29/2020 12:00:00 PM)\n"));
    runSqliteScript(folder.typed("saved.mdb"), "drop table scans;");
    EXPECT_EQ(run(load + "%T/a").status, 0) << "as earlier versions saved it";
    EXPECT_TRUE(holds(folder.read("o.html"), "A saved scan does not tell what could not be read"));
}

TEST_F(Console, keepsScansAndTheLastOfThem) {
    const auto kept = [this] {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder / "kept")) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    };
    EXPECT_TRUE(holds(run("--keep %F/kept %T").output, "\nKept as " + folder.typed("kept/")));
    EXPECT_EQ(kept().size(), 1U);
    for (int i = 0; i < 2; ++i) {
        const Outcome outcome = run("--quiet --keep %F/kept --keep-last 2 --summary %T/a %T");
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.output + outcome.errors, "");
    }
    EXPECT_EQ(kept().size(), 4U) << "two of each path";
    for (const std::string& name : kept()) {
        EXPECT_TRUE(holds(run("--load %F/kept/" + name).output, "File Count\n\n"))
            << name << " has no types of files";
    }
    EXPECT_EQ(run("--keep %F/kept --load %F/kept/x").status, 2);
    EXPECT_EQ(run("--keep-last 2 %T").status, 2);
    EXPECT_EQ(run("--keep %F/kept --keep-last 0 %T").status, 2);
    const Outcome failed = run("--quiet --keep %T/direct.txt %T");
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(std::count(failed.errors.begin(), failed.errors.end(), '\n'), 1) << failed.errors;
}

TEST_F(Console, tellsTheHistoryOfAFolder) {
    const auto keep = [&] { EXPECT_EQ(run("--quiet --keep %F/kept %T").status, 0); };
    keep();
    folder.write("tree/a/more", std::string(8192, 'x'));
    keep();
    EXPECT_EQ(run("--quiet --keep %F/kept %T/b").status, 0);
    const Outcome outcome =
        run("--history %F/kept --history %F/kept --text %F/h.txt %T/a", {{"LC_ALL", "C"}, {"COLUMNS", "80"}});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    const std::string& out = outcome.output;
    EXPECT_TRUE(out.starts_with(folder.typed("tree/a"))) << out;
    const std::size_t first = out.find("   4.0 Kb      2           ");
    const std::size_t second = out.find("  12.0 Kb      3  +8.0 Kb  ");
    EXPECT_TRUE(first < second && second != std::string::npos) << out;
    if (fs::path::preferred_separator == '/') { // elsewhere no variable tells what a terminal can show
        EXPECT_TRUE(holds(out, "Kb      2           ########\n") &&
                    holds(out, "Kb  #########################\n"))
            << out;
    }
    EXPECT_TRUE(holds(out, "\n1 saved scan is of other folders.\n")) << out;
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 7) << "each file once";
    EXPECT_TRUE(holds(folder.read("h.txt"), ",12288,8192,3,"));
    EXPECT_TRUE(holds(run("--history %F/kept --html - %T/a").output, "<svg "));

    folder.write("kept/damaged.mdb", "x");
    const Outcome damaged = run("--history %F/kept %T/a");
    EXPECT_EQ(damaged.status, 1);
    EXPECT_TRUE(holds(damaged.output, "12.0 Kb")) << "the rest is told";
    EXPECT_EQ(std::count(damaged.errors.begin(), damaged.errors.end(), '\n'), 1) << damaged.errors;
    const std::string saved = folder.read("kept/damaged.mdb");
    EXPECT_EQ(run("--force --history %F/kept/damaged.mdb --text %F/kept/damaged.mdb %T").status, 1);
    EXPECT_EQ(folder.read("kept/damaged.mdb"), saved);
    for (const char* wrong :
         {"--history %F/kept", "--history %F/kept %T %T/a", "--history %F/kept --xml %F/x %T",
          "--history %F/kept --find x %T", "--history '' %T"}) {
        EXPECT_EQ(run(wrong).status, 2) << wrong;
    }
    for (const char* failing : {"--history %F/kept %T/none", "--history %F/none %T", "--history %T %T"}) {
        const Outcome none = run(failing);
        EXPECT_EQ(none.status, 1) << failing;
        EXPECT_NE(none.errors, "") << failing;
    }
}

TEST_F(Console, endsWithAStatusAndALineForEachFailure) {
    folder.write("garbage.dat", "this is no database");
    folder.write("exists.html", "precious");
    struct Case {
        std::string arguments;
        int status;
        std::string error; // part of the line on stderr; empty for none
    };
    std::vector<Case> cases = {
        {"", 2, "PATH"},
        {"--nonsense %T", 2, "nonsense"},
        {"--red\x1b[31m %T", 2, "--red\\033[31m"},
        {"--owners --no-owners %T", 2, "excludes"},
        {"--unreadable --load %F/exists.html", 2, "excludes"},
        {"--exclude x --load %F/exists.html", 2, "excludes"},
        {"--exclude %T --exclude", 2, "exclude"},
        {"--exclude-from '' %T", 2, "exclude-from"},
        {"--exclude-from %F/missing %T", 1, "missing was not read"},
        {"--top many %T", 2, "top"},
        {"--top -1 %T", 2, "top"},
        {"--text '' %T", 2, "text"},
        {"--database - %T", 2, "standard output"},
        {"--excel - %T", 2, "standard output"},
        {"--overview '' %T", 2, "overview"},
        {"--overview %F/no/where.html %T", 1, "where.html"},
        {"--quiet --overview %F/2 --html %F/2 %T", 1, "named for two outputs"},
        {"--overview %F/nothing.html %F/missing", 1, "missing"},
        {"--top 99999999999999999999 %T", 2, "top"},
        {"--html", 2, "html"},
        {"--help", 0, ""},
        {"--version", 0, ""},
        {"/missing", 1, "/missing: Folder not found"},
        {"%F/missing", 1, "missing: Folder not found"},
        {"%T/direct.txt", 1, "direct.txt: Folder not found"},
        {"''", 1, "Folder not found"},
        {"%F/missing %T", 1, "missing"},
        {"--load %F/missing", 1, "missing"},
        {"--load %F", 1, " was not loaded.\n"},
        {"--load %F/garbage.dat", 1, "spannory-scan: Unrecognized database format: "},
        {"--html %F/exists.html %T", 1, "exists.html: Overwrite existing file?"},
        {"--html %F/no/where.html %T", 1, "where.html"},
        {"--text %F %T", 1, "It is a folder: "},
        {"--excel %F/no/where.xlsx %T", 1, "where.xlsx"},
        {"--database %F/no/where.mdb %T", 1, "where.mdb"},
        {"--database %F/app/main.dat --force %T", 1, "this is the working database"},
        {"--html %F/app/main.dat --force %T", 1, "this is the working database"},
        {"--text %F/app/errorLog.txt --force %T", 1, "this is the error log"},
        {"--xml %F/app/main.dat.lock --force %T", 1, "this is the lock"},
        {"--xml %F/app/settings.ini --force %T", 1, "this is the file of settings"},
        {"--html %F/1 --text %F/app/../1 --quiet %T", 1, "app/../1: named for two outputs"},
        {"--html - --text - --quiet %T", 1, "named for two outputs"},
        {"--database %F/nothing.mdb %F/missing", 1, "missing"},
        {"--force --html %F/exists.html --quiet %T", 0, ""},
    };
    if (testSystem::makePipe(folder / "pipe")) {
        cases.push_back({"--load %F/pipe", 1, "pipe"});
    }
    const std::string full = testSystem::fullDevice();
    if (!full.empty()) {
        cases.push_back(
            {"--text " + full + " %T", 1, "scan: 61 The disk is full: " + full + " was not written."});
        cases.push_back({"--xml " + full + " %T", 1, "The disk is full: " + full + " was not written."});
    }
    for (const Case& c : cases) {
        const Outcome outcome = run(c.arguments);
        EXPECT_EQ(outcome.status, c.status) << c.arguments << "\n" << outcome.errors;
        if (c.error.empty()) {
            EXPECT_EQ(outcome.errors, "") << c.arguments;
        } else {
            EXPECT_TRUE(holds(outcome.errors, c.error)) << c.arguments << "\n" << outcome.errors;
        }
        EXPECT_FALSE(holds(outcome.errors, "\x1b")) << c.arguments;
        if (c.status == 1) {
            const auto lines = c.arguments.find("%F/nothing") != std::string::npos ? 2 : 1;
            EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), lines)
                << outcome.errors;
        }
        if (c.arguments.starts_with("--html %F/exists")) {
            EXPECT_EQ(folder.read("exists.html"), "precious");
        }
    }
    EXPECT_TRUE(holds(folder.read("exists.html"), "<TITLE>Spannory - Detail Report"));
    EXPECT_FALSE(fs::exists(folder / "nothing.mdb"));
    if (!full.empty()) {
        EXPECT_EQ(run("%T", {}, full).errors, "spannory-scan: standard output: No space left on device\n");
    }
}

// A table instead of the figures; files have it whole.
TEST_F(Console, findsFiles) {
    folder.write("tree/b/c/large.bin", std::string(5000, 'x'));
    const struct {
        const char* options;
        std::vector<std::string> found; // in this order
    } table[] = {
        {"--find r", {"direct.txt", "three", "large.bin"}},
        {"--find *r* --top 1", {"large.bin"}},
        {"--larger 2K", {"large.bin"}},
        {"--larger 1.5k --smaller 3k", {"one.TXT", "three", "two.txt"}},
        {"--extension .txt --smaller 10", {"direct.txt"}},
        {"--older 1", {}},
        {"--newer 1 --find large", {"large.bin"}},
        {"--owner nobody-of-this-name", {}},
    };
    for (const auto& each : table) {
        const Outcome outcome = run(std::string(each.options) + " %T");
        EXPECT_EQ(outcome.status, 0) << each.options;
        for (const char* name : {"one.TXT", "two.txt", "three", "direct.txt", "large.bin"}) {
            EXPECT_EQ(holds(outcome.output, std::string("  ") + name),
                      std::find(each.found.begin(), each.found.end(), name) != each.found.end())
                << each.options << " " << name << outcome.output;
        }
        EXPECT_FALSE(holds(outcome.output, "Total Size")) << "the other tables";
    }
    EXPECT_TRUE(holds(run("--find *r* --top 1 %T").output, "(2 more)"));
    EXPECT_TRUE(holds(run("--larger 2K %T").output, "1 file, 4.9 Kb"));

    EXPECT_EQ(
        run("--find t* --text %F/found.csv --html %F/found.html --excel %F/found.xlsx --top 1 %T/a %T/b")
            .status,
        0);
    const std::string text = folder.read("found.csv");
    EXPECT_TRUE(text.starts_with("Name,Folder,Size (Bytes),Size,Owner,Modified,Accessed\r\n"));
    EXPECT_TRUE(holds(text, "two.txt") && holds(text, ",2048,2.0 Kb,") && holds(text, "\nthree,")) << text;
    EXPECT_FALSE(holds(text, "one.TXT"));
    EXPECT_TRUE(holds(folder.read("found.html"), "<td>two.txt</td>"));
    EXPECT_TRUE(folder.read("found.xlsx").starts_with("PK"));
    EXPECT_EQ(run("--find nothing --text %F/none.csv %T").status, 1) << "an empty report is none";

    for (const auto& [options, complaint] : {std::pair("--larger 5Q", "'5Q' is not a size"),
                                             {"--smaller ''", "is not a size"},
                                             {"--older soon", "'soon' is not a number of days"},
                                             {"--newer 5w", "'5w' is not a number"},
                                             {"--extension ''", "is empty"},
                                             {"--owner x --no-owners", "excludes"}}) {
        const Outcome outcome = run(std::string(options) + " %T");
        EXPECT_EQ(outcome.status, 2) << options;
        EXPECT_TRUE(holds(outcome.errors, complaint)) << outcome.errors;
    }
}

TEST_F(Console, writesTheSameReportsFromASavedScan) {
    EXPECT_EQ(run("--quiet --text %F/1.csv --xml %F/1.xml --html %F/1.html --excel %F/1.xlsx --database "
                  "%F/1.mdb %T")
                  .errors,
              "");
    std::string saved = folder.read("app/main.dat");
    saved.replace(saved.find("SPNY"), 4, "SPNS"); // the mark of a saved scan
    EXPECT_EQ(saved, folder.read("1.mdb"));
    const Outcome loaded = run("--load %F/1.mdb --text %F/2.csv --xml %F/2.xml %T/b");
    EXPECT_EQ(loaded.errors, "");
    EXPECT_TRUE(holds(loaded.output, folder.typed("tree/b"))) << loaded.output;
    EXPECT_FALSE(holds(loaded.output, "Finished in"));
    EXPECT_EQ(folder.read("1.csv"), folder.read("2.csv"));
    const auto body = [&](const char* file) {
        return folder.read(file).substr(folder.read(file).find("-->"));
    };
    EXPECT_EQ(body("1.xml"), body("2.xml"));
    EXPECT_EQ(run("--load %F/1.mdb %T/nothing").status, 1);
    // The working database of the last run is kept if it is the file to load.
    const Outcome own = run("--load %F/app/main.dat --text %F/3.csv");
    EXPECT_EQ(own.status, 0);
    EXPECT_EQ(own.errors, "") << "no other program uses it";
    EXPECT_EQ(folder.read("1.csv"), folder.read("3.csv"));
    const Outcome summary = run("--quiet --summary --text %F/4.csv %T");
    EXPECT_EQ(summary.errors, "");
    EXPECT_FALSE(holds(folder.read("4.csv"), "\"File\""));
}

TEST_F(Console, writesOneReportToItsOutput) {
    const Outcome outcome = run("--text - --xml %F/x.xml %T");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(run("--quiet --text %F/x.csv %T").errors, "");
    EXPECT_EQ(outcome.output, folder.read("x.csv")) << "and nothing else";
    EXPECT_FALSE(fs::exists("-"));
}

TEST_F(Console, looksAtItsOutputsBeforeItScans) {
    folder.write("exists.html", "precious");
    const Outcome outcome = run("--quiet --html %F/exists.html --text %F/no/where.csv %F/missing");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(holds(outcome.errors, "exists.html: Overwrite")) << outcome.errors;
    EXPECT_TRUE(holds(outcome.errors, "where.csv")) << outcome.errors;
    EXPECT_FALSE(holds(outcome.errors, "missing")) << "there is nothing left to scan for";
}

TEST_F(Console, loadsWhateverTheFilesAreCalled) {
    EXPECT_EQ(run("--quiet --database %F/it's.mdb %T").errors, "");
    folder.write("o'brien/settings.ini", "");
    const Outcome loaded = testSystem::run(
        "spannory-scan", {"--app-folder", folder.typed("o'brien"), "--load", folder.typed("it's.mdb")});
    EXPECT_EQ(loaded.status, 0) << loaded.errors;
    EXPECT_TRUE(holds(loaded.output, "\n8 items.\n")) << loaded.output;
}

TEST_F(Console, survivesGarbageInItsSettings) {
    folder.write("app/settings.ini",
                 "[APPLICATION_SETTINGS]\r\ngetOwnerInfo=perhaps\r\n[[[\r\n\xFF=\xFE\r\n");
    const Outcome outcome = run("%T");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_TRUE(holds(outcome.errors, "getOwnerInfo")) << outcome.errors;
    EXPECT_TRUE(holds(outcome.output, "8 items."));
}

TEST_F(Console, leavesAFileThatIsNotItsOwnWhereItsDatabaseShouldBe) {
    folder.write("thesis.txt", "precious");
    const std::string section = "[APPLICATION_SETTINGS]\r\ndatabasePath=";
    const std::string tooLong = folder.typed("thesis.txt" + std::string(250, 'x'));
    for (const auto& [value, named] : {std::pair(folder.typed("thesis.txt"), "thesis.txt"),
                                       std::pair(tooLong, "databasePath is longer than 254 characters")}) {
        folder.write("app/settings.ini", section + value + "\r\n");
        const Outcome outcome = run("%T");
        EXPECT_EQ(outcome.status, 0);
        EXPECT_TRUE(holds(outcome.errors, named) && holds(outcome.errors, folder.typed("app/main.dat")))
            << outcome.errors;
        EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << outcome.errors;
        EXPECT_TRUE(holds(outcome.output, "8 items."));
    }
    folder.write("app/main.dat", "precious, too");
    const Outcome outcome = run("%T");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(holds(outcome.errors, "main.dat is not a database of this program")) << outcome.errors;
    EXPECT_EQ(folder.read("app/main.dat"), "precious, too");
    EXPECT_EQ(folder.read("thesis.txt"), "precious");
}

// An apostrophe used to end texts in statements; characters with a meaning in URIs, patterns or shells must
// not have any here either.
TEST_F(Console, worksInFoldersOfAnyName) {
    for (const std::string& name :
         {std::string("o'brien's"), std::string("50% #1 & ;co, [x] {y} $HOME ~ `z` =1!"),
          std::string("\u00FCn\u0444\u4E2D \U0001F600")}) {
        SCOPED_TRACE(name);
        const auto inHome = [&](const std::string& file) { return name + "/" + file; };
        folder.write(inHome("tree/it's/one.TXT"), "12345");
        folder.write(inHome("app/settings.ini"), "[APPLICATION_SETTINGS]\r\ndatabasePath=" +
                                                     folder.typed(inHome("its 'own'.dat")) + "\r\n");
        const auto runIn = [&](const std::string& application, std::vector<std::string> arguments) {
            arguments.insert(arguments.begin(), {"--app-folder", folder.typed(application)});
            return testSystem::run("spannory-scan", arguments);
        };
        const auto file = [&](const char* of) { return folder.typed(inHome(of)); };
        EXPECT_EQ(runIn(inHome("app"),
                        {file("tree"), "--database", file("it's.mdb"), "--text", file("1.csv"), "--xml",
                         file("1.xml"), "--html", file("1.html"), "--excel", file("1.xlsx")})
                      .errors,
                  "");
        EXPECT_TRUE(holds(folder.read(inHome("1.csv")), "one.TXT"));
        EXPECT_EQ(folder.read(inHome("its 'own'.dat")).size(), folder.read(inHome("it's.mdb")).size());
        const Outcome again =
            runIn("app", {"--load", file("it's.mdb"), "--text", file("2.csv"), file("tree")});
        EXPECT_EQ(again.errors, "");
        EXPECT_EQ(folder.read(inHome("1.csv")), folder.read(inHome("2.csv")));
    }
}

TEST_F(Console, takesArgumentsOfAnyLanguage) {
    folder.write("\u00FCn\u0444\u4E2D/\U0001F600.txt", "x");
    const Outcome outcome = run("%F/\u00FCn\u0444\u4E2D --text %F/\u00E9.csv");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_TRUE(holds(outcome.output, "\u00FCn\u0444\u4E2D")) << outcome.output;
    EXPECT_TRUE(holds(folder.read("\u00E9.csv"), "\U0001F600.txt"));
}

TEST_F(Console, needsAnApplicationFolder) {
    folder.write("app", "a file where the folder should be");
    const Outcome outcome = run("%T");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(holds(outcome.errors, folder.typed("app"))) << outcome.errors;
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << outcome.errors;
}

TEST_F(Console, isNotFooledByWhatADatabaseHolds) {
    runSqliteScript(
        folder.typed("hostile.dat"),
        "create table details (drive, fullPath, parentFolder, size, isFolder, owner);"
        "create table nodes (nodeKey);"
        "insert into details values ('/\\', char(27) || '[31mred', '/\\x' || char(155) || '\\', 7,"
        " 0, char(10) || 'me'), ('/\\', 'q', '/\\say \"x\"\\', 5, 0, x'00ff'),"
        " ('/\\', 'd\\', '/\\', 12, 1, '');");
    const Outcome outcome = run("--load %F/hostile.dat --xml %F/x.xml --text %F/x.csv --html %F/x.html");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_TRUE(holds(outcome.output, "say \"x\"")) << outcome.output;
    EXPECT_EQ((outcome.output + outcome.errors).find_first_of("\x1b\x9b"), std::string::npos)
        << outcome.output;
}

// Both would be statements if the quote ended a text: one never ends, one is nested too deep for the stack.
TEST_F(Console, takesPathsForNothingElse) {
    const std::pair<const char*, std::string> paths[] = {
        {"endless.dat", "/\\\" or exists (with recursive t(x) as (select 1 union all select x+1 from t)"
                        " select x from t where x<0) or \""},
        {"deep.dat", "/\\\" or " + std::string(30'000, '(')},
    };
    for (const auto& [name, path] : paths) {
        const std::string row = "insert into details values ('/\\', 'f', '" + path + "', 'f', 1, 0);";
        runSqliteScript(folder.typed(name),
                        "create table details (drive, fullPath, parentFolder, fileName, size, isFolder);"
                        "create table nodes (nodeKey);" +
                            row);
        const Outcome outcome = run(std::string("--load %F/") + name + " --html %F/x.html --force");
        EXPECT_EQ(outcome.errors, "");
        EXPECT_TRUE(holds(outcome.output, "1 items."));
    }
}

} // namespace
