#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <map>
#include <random>
#include <set>

#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "support/scanFixture.h"
#include "support/testSystem.h"
#include "tree/folderSelection.h"
#include "tree/nodeKeys.h"
#include "tree/treeOperations.h"

// Whatever the user does, in any order, the rows are correct: random sequences of actions, with a check of
// all rows after each.

namespace fs = std::filesystem;

namespace {

constexpr int stepsPerSequence = 30;

struct NoViews final : FolderViews {
    void updateGraph() override {}
    void refreshActiveView() override {}
    void followRows() override {}
    void clearFilesList() override {}
};

// A small folder tree with random changes.
class Disk {
public:
    Disk(const fs::path& top, std::mt19937& random) : top_(top), random_(random) {
        const std::vector<std::string> hostile = testSystem::hostileNames();
        names_ = {"a", "b", "c", "C#", "x[1]", "o'brien", "50%", std::string(90, 'n'), std::string(95, 'o')};
        names_.push_back(hostile[0]);
        names_.push_back(hostile[static_cast<std::size_t>(below(static_cast<int>(hostile.size())))]);
        const fs::path deep = top / names_[7] / names_[8] / names_[7]; // longer than 255 characters
        testSystem::makeFolders(deep / "in");
        testSystem::writeFile(deep / "file", "1234");
        testSystem::writeFile(deep / "in" / "file", "12345");
        for (int i = 0; i < 30; ++i) {
            change();
        }
    }

    [[nodiscard]] int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }

    // A random existing folder, at or below the top, as a list of names.
    [[nodiscard]] std::string anyFolder(const std::string& topKey) {
        std::vector<std::string> keys;
        collect(top_, topKey, keys);
        return keys[static_cast<std::size_t>(below(static_cast<int>(keys.size())))];
    }

    // Adds, removes or replaces a file or folder.
    void change() {
        fs::path place = top_;
        for (int depth = below(4); depth > 0; --depth) {
            place /= testSystem::pathOf(anyName());
        }
        const fs::path entry = place / testSystem::pathOf(anyName());
        testSystem::removeAll(entry);
        testSystem::makeFolders(top_);
        const int choice = below(5);
        if (choice == 0 || !makeFolders(place)) {
            return;
        }
        if (choice == 1) {
            testSystem::makeFolders(entry);
        } else if (choice == 2 && below(3) == 0) {
            testSystem::makeLink(top_, entry);
        } else {
            testSystem::writeFile(entry, std::string(static_cast<std::size_t>(below(100)), 'x'));
        }
    }

private:
    [[nodiscard]] const std::string& anyName() {
        return names_[static_cast<std::size_t>(below(static_cast<int>(names_.size())))];
    }

    // False if a file or link is in the way.
    static bool makeFolders(const fs::path& folder) {
        std::error_code error;
        for (fs::path path = folder; !path.empty() && path != path.parent_path(); path = path.parent_path()) {
            const fs::file_status status = fs::symlink_status(path, error);
            if (fs::exists(status) && !fs::is_directory(status)) {
                return false;
            }
        }
        testSystem::makeFolders(folder);
        return true;
    }

    static void collect(const fs::path& folder, const std::string& key, std::vector<std::string>& keys) {
        keys.push_back(key);
        for (const testSystem::Entry& entry : testSystem::entriesOf(folder)) {
            if (entry.isFolder) {
                std::string name;
                platform::appendNativeName(name, entry.name);
                collect(folder / testSystem::pathOf(name), key + entry.name + "\\", keys);
            }
        }
    }

    fs::path top_;
    std::mt19937& random_;
    std::vector<std::string> names_;
};

// A row without the values that differ from scan to scan.
struct Row {
    std::string parent, name, facts;
    double size = 0;
    double sizeOnDisk = 0;
    double files = 0, folders = 0; // below it
    bool isFolder = false, isComplete = false;

    [[nodiscard]] std::string text() const {
        return parent + name + "|" + facts + "|" + valueText(size) + "|" + valueText(sizeOnDisk) + "|" +
               valueText(files) + "|" + valueText(folders) + (isComplete ? "|complete" : "");
    }
};

std::vector<Row> rowsOf(const ScanFixture& fixture) {
    std::vector<Row> result;
    const auto rows =
        fixture.working.database().OpenRecordset("select parentFolder, fileName, size, isFolder, "
                                                 "scanCompleteTime, sizeOnDisk, fileCount, folderCount, "
                                                 "fullPath, drive, folder, extension, "
                                                 "description, dateModified, owner from details");
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        Row& row = result.emplace_back();
        row.parent = rows->Fields(0).text();
        row.name = rows->Fields(1).text();
        row.size = rows->Fields(2).number();
        row.isFolder = rows->Fields(3).number() != 0;
        row.isComplete = !rows->Fields(4).isNull();
        row.sizeOnDisk = rows->Fields(5).number();
        row.files = rows->Fields(6).number();
        row.folders = rows->Fields(7).number();
        for (int i = 8; i < rows->FieldCount(); ++i) {
            row.facts.append(rows->Fields(i).text()).append("|");
        }
    }
    return result;
}

std::set<std::string> textsOf(const std::vector<Row>& rows) {
    std::set<std::string> texts;
    for (const Row& row : rows) {
        texts.insert(row.text());
    }
    return texts;
}

// A user at work.
class Sequence : public ScanFixture {
public:
    Sequence(unsigned seed, bool exact, bool changes)
        : random_(seed), changes_(changes), disk_(tree.path() / "top", random_) {
        const std::string drive = testSystem::driveAt(tree.path());
        root_ = drive.empty() ? key() : drive;
        settings.setExact(exact);
        tvw_.addNode({}, {"ROOT", {}, {}, {}});
        userInterface.onYield = [this] { interrupt(); };
        if (!changes) {
            fresh_ = textsOf(freshRows());
        }
    }

    // Does one more step and returns what is wrong; empty if nothing is.
    std::string step() {
        if (changes_ && disk_.below(3) == 0) {
            disk_.change();
        }
        const std::string folder = anyFolder();
        interruptions_ = disk_.below(3);
        yieldsLeft_ = disk_.below(12);
        const bool refreshes = disk_.below(3) == 0;
        trace_ += (refreshes ? "refresh " : "click ") + folder + "\n";
        select(folder);
        refreshes ? selection_.refreshScreen() : selection_.tvw_NodeClick(folder);
        return faults();
    }

    // The rows after everything has been refreshed, compared with those of a scan into an empty database.
    std::string finish() {
        interruptions_ = 0;
        select(root_);
        settings.exact() ? selection_.refreshScreen() : selection_.tvw_NodeClick(root_);
        const std::set<std::string> now = textsOf(rowsOf(*this));
        const std::set<std::string> fresh = changes_ ? textsOf(freshRows()) : fresh_;
        std::string result = faults();
        for (const auto& [lacking, others, what] :
             {std::tuple(&now, &fresh, "missing: "), {&fresh, &now, "extra: "}}) {
            for (const std::string& row : *others) {
                result += lacking->contains(row) ? "" : what + row + "\n";
            }
        }
        return result;
    }

    [[nodiscard]] const std::string& trace() const { return trace_; }

private:
    [[nodiscard]] std::vector<Row> freshRows() {
        ScanFixture other;
        other.settings.setExact(settings.exact());
        modProcessFiles::processMain(root_, {other.search, other.settings, other.userInterface});
        return rowsOf(other);
    }

    // A folder that exists or, where the disk changes, that the tree still shows.
    std::string anyFolder() {
        if (changes_ && disk_.below(8) == 0) {
            const auto nodes = tvw_.allNodes();
            const std::string& key =
                nodes[static_cast<std::size_t>(disk_.below(static_cast<int>(nodes.size())))].content.key;
            return modNodeKeys::isFolderKey(key) ? key : root_;
        }
        return disk_.below(8) == 0 ? root_ : disk_.anyFolder(root_ + "top\\");
    }

    void select(const std::string& folder) {
        if (!tvw_.findNode(folder)) {
            modGlobal::addTopNode(tvw_, images_, folder);
        }
        tvw_.selectNode(folder);
    }

    // The user can act once per folder.
    void interrupt() {
        if (!search.processing || interruptions_ == 0 || --yieldsLeft_ > 0) {
            return;
        }
        --interruptions_;
        yieldsLeft_ = disk_.below(12);
        const std::string folder = anyFolder();
        const int choice = disk_.below(3);
        trace_ += (choice == 0   ? "  cancel "
                   : choice == 1 ? "  click meanwhile "
                                 : "  refresh meanwhile ") +
                  folder + "\n";
        if (choice == 0) {
            search.CancelScan = true;
            return;
        }
        select(folder);
        choice == 1 ? selection_.tvw_NodeClick(folder) : selection_.refreshScreen();
    }

    [[nodiscard]] std::string faults() {
        std::string result;
        const std::vector<Row> rows = rowsOf(*this);
        std::set<std::string> paths;
        struct Content {
            double size = 0, sizeOnDisk = 0, files = 0, folders = 0;
        };
        std::map<std::string, Content> contents;
        std::set<std::string> withUnfinished; // folders with an incomplete one in them
        for (const Row& row : rows) {
            result += paths.insert(row.parent + row.name).second ? "" : "twice: " + row.text() + "\n";
            Content& content = contents[row.parent];
            content.size += row.size;
            content.sizeOnDisk += row.sizeOnDisk;
            content.files += row.isFolder ? row.files : 1;
            content.folders += row.isFolder ? row.folders + 1 : 0;
            if (row.isFolder && !row.isComplete) {
                withUnfinished.insert(row.parent);
            }
        }
        for (const Row& row : rows) {
            const std::string path = row.parent + row.name;
            const Content& content = contents[path];
            if (row.isFolder &&
                (row.size != content.size || row.files != content.files || row.folders != content.folders)) {
                result += "not the sum of its contents, " + valueText(content.size) + "|" +
                          valueText(content.files) + "|" + valueText(content.folders) + ": " + row.text() +
                          "\n";
            }
            const auto facts = row.isFolder ? platform::folderFacts(path) : std::nullopt;
            const auto own = static_cast<double>(facts ? facts->sizeOnDisk : 0);
            if (facts && row.sizeOnDisk != content.sizeOnDisk + own) {
                result += "not its own size on the disk and its contents', " + valueText(own) + " + " +
                          valueText(content.sizeOnDisk) + ": " + row.text() + "\n";
            }
            if (row.isFolder && row.isComplete && withUnfinished.contains(path)) {
                result += "not complete at all: " + row.text() + "\n";
            }
            if (!changes_ && (!row.isFolder || row.isComplete) && !fresh_.contains(row.text())) {
                result += "not what is there: " + row.text() + "\n";
            }
        }
        for (const std::string& message : userInterface.messages) {
            result += "told: " + message + "\n";
        }
        return result;
    }

    std::mt19937 random_;
    bool changes_;
    Disk disk_;
    std::string root_;
    FolderTree tvw_;
    ImageList images_;
    NoViews views_;
    // The tree's own drive is not mounted.
    FolderSelection selection_{{tvw_, images_, search, settings, working, userInterface, views_,
                                [](std::string_view folder) { return std::string(folder); }}};
    std::set<std::string> fresh_;
    int interruptions_ = 0;
    int yieldsLeft_ = 0;
    std::string trace_;
};

// Runs this many fixed sequences or, if the environment sets a number of minutes, other ones for so long.
void runSequences(int count, bool exact, bool changes) {
    const char* const asked = std::getenv("SPANNORY_SOAK_MINUTES"); // NOLINT: one thread
    const auto end = std::chrono::steady_clock::now() +
                     std::chrono::seconds(asked == nullptr ? 0 : static_cast<int>(std::atof(asked) * 20));
    const unsigned firstSeed = asked == nullptr ? 0 : std::random_device()();
    long steps = 0;
    int done = 0;
    for (; done < count || std::chrono::steady_clock::now() < end; ++done) {
        const unsigned seed = firstSeed + static_cast<unsigned>(done);
        Sequence sequence(seed, exact, changes);
        std::string fault;
        for (int step = 0; step < stepsPerSequence && fault.empty(); ++step, ++steps) {
            fault = sequence.step();
        }
        if (fault.empty() && (exact || !changes)) {
            fault = sequence.finish();
        }
        ASSERT_EQ(fault, "") << "seed " << seed << "\n" << sequence.trace();
    }
    if (asked != nullptr) {
        std::cout << done << " sequences, " << steps << " steps\n";
    }
}

TEST(FiguresModel, rowsOfATreeThatStandsStill) {
    runSequences(90, false, false);
}

TEST(FiguresModel, rowsOfATreeThatChanges) {
    runSequences(55, false, true);
}

TEST(FiguresModel, rowsOfATreeThatChangesInExactMode) {
    runSequences(55, true, true);
}

} // namespace
