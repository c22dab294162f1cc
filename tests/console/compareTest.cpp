#include <filesystem>

#include "console/consoleFixture.h"
#include "support/sqliteScript.h"

namespace fs = std::filesystem;

namespace {

// Not every system has names with quotes and the like.
const bool takesAnyName = fs::path::preferred_separator == '/';
const std::string oddName = takesAnyName ? "new, \"quoted\" & <b>.txt" : "new, plain & b.txt";

class ConsoleCompare : public Console {
protected:
    ConsoleCompare() {
        EXPECT_EQ(run("--quiet --database %F/before.mdb %T").status, 0);
        folder.write("tree/a/one.TXT", std::string(1024, 'x'));
        folder.write("tree/b/" + oddName, std::string(3072, 'x'));
        fs::remove(folder / "tree/direct.txt");
        folder.write("tree/=1+1", "1");
    }
    // The lines of a printed table that begin with this word, with single blanks.
    static std::string lineOf(const std::string& output, const std::string& word) {
        std::istringstream lines(output);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line);
            std::string result;
            for (std::string next; words >> next;) {
                result += (result.empty() ? "" : " ") + next;
            }
            if (result.starts_with(word + " ")) {
                return result;
            }
        }
        return {};
    }
};

TEST_F(ConsoleCompare, printsWhatHasChanged) {
    const Outcome outcome = run("--compare %F/before.mdb --no-owners %T");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(lineOf(outcome.output, "b"), "b 2.0 Kb 5.0 Kb +3.0 Kb grown");
    EXPECT_EQ(lineOf(outcome.output, "a"), "a 4.0 Kb 3.0 Kb -1.0 Kb shrunk");
    EXPECT_EQ(lineOf(outcome.output, "|Files|"), "|Files| 5 bytes 1 bytes -4 bytes shrunk");
    EXPECT_EQ(lineOf(outcome.output, "txt"), "txt 4.0 Kb 6.0 Kb +2.0 Kb 3 3");
    EXPECT_EQ(lineOf(outcome.output, "gone"), "gone 5 bytes -5 bytes direct.txt");
    EXPECT_EQ(lineOf(outcome.output, "shrunk"),
              "shrunk 2.0 Kb 1.0 Kb -1.0 Kb a" + std::string(1, fs::path::preferred_separator) + "one.TXT");
    EXPECT_EQ(lineOf(outcome.output, "Total:"), "Total: 6.0 Kb before, 8.0 Kb now, change +2.0 Kb");
    EXPECT_EQ(lineOf(outcome.output, "Files:"), "Files: 2 new, 1 gone, 1 shrunk, 2 same");
    EXPECT_FALSE(holds(outcome.output, "three")) << "it is the same";
    EXPECT_TRUE(holds(run("--compare %F/before.mdb --all %T").output, "three"));

    const Outcome loaded = run("--load %F/before.mdb --compare %F/before.mdb --changed-only");
    EXPECT_EQ(loaded.status, 0);
    EXPECT_TRUE(holds(loaded.output, "Nothing has changed. ")) << loaded.output;
    EXPECT_TRUE(holds(loaded.output, "Files: 4 same\nFolders: 4 same\n")) << loaded.output;
    EXPECT_FALSE(holds(loaded.output, "Extension"));
}

TEST_F(ConsoleCompare, takesAnotherFolderAndOnlyWhatIsBelow) {
    const Outcome outcome = run("--compare %F/before.mdb --compare-folder %T/a %T/b");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(lineOf(outcome.output, "Files:"), "Files: 2 new, 2 gone");
    EXPECT_EQ(lineOf(run("--compare %F/before.mdb %T/b").output, "Files:"), "Files: 1 new, 1 same");
    const Outcome two = run("--compare %F/before.mdb %T/a %T/b --quiet --text %F/two.csv");
    EXPECT_EQ(two.status, 0) << two.errors;
    EXPECT_TRUE(holds(folder.read("two.csv"), "one.TXT"));
    EXPECT_TRUE(holds(folder.read("two.csv"), "new, "));
}

TEST_F(ConsoleCompare, writesReportsOfWhatHasChanged) {
    EXPECT_EQ(run("--quiet --no-owners --compare %F/before.mdb --text %F/r.csv --html %F/r.html --xml "
                  "%F/r.xml --excel %F/r.xlsx %T")
                  .errors,
              "");
    const std::string text = folder.read("r.csv");
    EXPECT_TRUE(text.starts_with(
        "Path,Type,State,Before (Bytes),Now (Bytes),Change (Bytes),Change,Owner,Modified\r\n"))
        << text;
    const std::string b = folder.typed("tree/b");
    EXPECT_TRUE(holds(text, folder.typed("tree/a/one.TXT") + ",File,shrunk,2048,1024,-1024,-1.0 Kb,"))
        << text;
    EXPECT_TRUE(holds(text, "tree/direct.txt,File,gone,5,,-5,-5 bytes,") ||
                fs::path::preferred_separator != '/');
    const std::string inText = takesAnyName ? "\"\"quoted\"\" & <b>" : "plain & b";
    const std::string inHtml = takesAnyName ? "&quot;quoted&quot; &amp; &lt;b&gt;" : "plain &amp; b";
    const std::string inXml = takesAnyName ? "\"quoted\" &amp; &lt;b&gt;" : "plain &amp; b";
    EXPECT_TRUE(holds(text, "new, " + inText + ".txt\",File,new,,3072,3072,+3.0 Kb,")) << text;
    EXPECT_TRUE(holds(folder.read("r.html"), "new, " + inHtml + ".txt</td>"));
    EXPECT_TRUE(
        holds(folder.read("r.xml"),
              "new, " + inXml + ".txt</path><type>File</type><state>new</state><nowBytes>3072</nowBytes>"));
    EXPECT_FALSE(holds(text, "three"));

    EXPECT_EQ(run("--quiet --force --summary --all --compare %F/before.mdb --text %F/r.csv --database "
                  "%F/now.mdb %T")
                  .status,
              0);
    const std::string folders = folder.read("r.csv");
    EXPECT_FALSE(holds(folders, ",File,"));
    EXPECT_TRUE(holds(folders, ",Folder,same,2048,2048,0,0 bytes,")) << folders;

    // What has not changed makes reports without rows.
    const Outcome same = run("--quiet --force --load %F/now.mdb --compare %F/now.mdb --text %F/r.csv --html "
                             "%F/r.html --xml %F/r.xml --excel %F/r.xlsx");
    EXPECT_EQ(same.status, 0);
    EXPECT_EQ(same.errors, "");
    EXPECT_EQ(folder.read("r.csv").find('\n'), folder.read("r.csv").size() - 1);
    EXPECT_FALSE(holds(folder.read("r.xml"), "<row>"));
}

TEST_F(ConsoleCompare, saysWhyItComparesNothing) {
    runSqliteScript(
        folder.typed("cancelled.mdb"),
        "attach '" + folder.typed("before.mdb") +
            "' as b;"
            "create table details as select * from b.details; create table nodes (nodeKey);"
            "create table scans (path text, cancelled smallint);"
            "insert into scans select parentFolder || fileName, 1 from details where fileName='tree\\'");
    folder.write("garbage", std::string(3000, 'x'));
    const struct {
        const char* arguments;
        int status;
        const char* errors;
    } cases[] = {
        {"--compare %F/missing %T", 1, "There is no such file"},
        {"--compare %F/garbage %T --html %F/none.html", 1, "Unrecognized database format"},
        {"--compare %F/before.mdb --compare-folder %F/nowhere %T", 1, "nowhere not found in "},
        {"--compare %F/before.mdb --quiet --html %F/none.html %F/app", 1, "Folder not found in "},
        {"--compare %F/cancelled.mdb %T", 0,
         "Compared although the two scans differ: the saved scan was cancelled."},
        {"--compare-folder x %T", 2, "--compare"},
        {"--all %T", 2, "--compare"},
        {"--compare %F/before.mdb --all --changed-only %T", 2, "excludes"},
        {"--compare %F/before.mdb --find x %T", 2, "find"},
        {"--compare %F/before.mdb --on-disk %T", 2, "which tell sizes"},
        {"--history %F/before.mdb --on-disk %T", 2, "which tell sizes"},
        {"--compare %F/before.mdb --compare-folder x %T/a %T/b", 2, "single PATH"},
    };
    for (const auto& [arguments, status, errors] : cases) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, status) << arguments << outcome.errors;
        EXPECT_TRUE(holds(outcome.errors, errors)) << arguments << "\n" << outcome.errors;
    }
    EXPECT_FALSE(fs::exists(folder / "none.html"));
    for (const auto& entry : fs::directory_iterator(folder / "app")) {
        EXPECT_NE(entry.path().extension(), ".tmp") << "left behind";
    }
    // The working database of the last run is kept if it is what to compare with.
    EXPECT_EQ(run("%T").status, 0);
    const Outcome own = run("--compare %F/app/main.dat %T");
    EXPECT_EQ(own.status, 0) << own.errors;
    EXPECT_TRUE(holds(own.output, "Nothing has changed. "));
}

} // namespace
