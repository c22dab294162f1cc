#include "views/comparison.h"
#include "base/formatSize.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>

#include "db/earlierScan.h"
#include "export/databaseFile.h"
#include "platform/locale.h"
#include "platform/paths.h"
#include "support/errorNumberOf.h"
#include "support/scanFixture.h"
#include "support/sqliteScript.h"
#include "support/testSystem.h"
#include "views/folderFigures.h"

namespace fs = std::filesystem;

namespace {

using modChanges::State;

struct Item {
    std::string path; // as it is spelt
    std::uint64_t size = 0;
    std::int64_t modified = 0;
};

// By the path behind the start; a folder's ends in "\".
using Items = std::map<std::string, Item>;

std::string nativeName(std::string_view internalName) {
    std::string result;
    platform::appendNativeName(result, internalName);
    return result;
}

// Lists what is in a folder, without the program's walk. Returns the size of all files.
std::uint64_t list(const fs::path& folder, const std::string& behind, Items& items) {
    std::uint64_t total = 0;
    for (const testSystem::Entry& entry : testSystem::entriesOf(folder)) {
        const std::string path = behind + entry.name + (entry.isFolder ? "\\" : "");
        const std::uint64_t size =
            entry.isFolder ? list(folder / testSystem::pathOf(nativeName(entry.name)), path, items)
                           : entry.size;
        items[platform::namesIgnoreCase() ? platform::lowerCase(path) : path] = {path, size, entry.modified};
        total += size;
    }
    return total;
}

std::string stateOf(const Item* before, const Item* now, bool holdsDifferences) {
    if (before == nullptr || now == nullptr) {
        return before == nullptr ? "new" : "gone";
    }
    if (before->size != now->size) {
        return now->size > before->size ? "grown" : "shrunk";
    }
    return before->modified != now->modified || holdsDifferences ? "touched" : "same";
}

// "a\b|grown|10|20|10|0", by path, and for a folder the number of differences in it. In the order of paths, a
// folder comes before what is in it; so what is read backwards is known before it is needed.
std::vector<std::string> expected(const Items& before, const Items& now, bool keepsSame) {
    std::map<std::string, Item, std::greater<>> all(now.begin(), now.end());
    all.insert(before.begin(), before.end());
    std::map<std::string, int> differences;
    std::vector<std::string> result;
    for (const auto& each : all) {
        const std::string& path = each.first;
        const auto find = [&](const Items& items) {
            const auto found = items.find(path);
            return found == items.end() ? nullptr : &found->second;
        };
        const Item* const was = find(before);
        const Item* const is = find(now);
        const int inside = differences[path];
        const std::string state = stateOf(was, is, inside > 0);
        const std::size_t end = path.find_last_of('\\', path.size() - 2);
        differences[end == std::string::npos ? "" : path.substr(0, end + 1)] +=
            inside + (state == "same" ? 0 : 1);
        if (keepsSame || state != "same") {
            const auto sizeOf = [](const Item* item) {
                return item == nullptr ? std::string("~") : std::to_string(item->size);
            };
            const std::int64_t change = (is == nullptr ? 0 : static_cast<std::int64_t>(is->size)) -
                                        (was == nullptr ? 0 : static_cast<std::int64_t>(was->size));
            result.push_back((is == nullptr ? was : is)->path + "|" + state + "|" + sizeOf(was) + "|" +
                             sizeOf(is) + "|" + std::to_string(change) + "|" + std::to_string(inside));
        }
    }
    std::sort(result.begin(), result.end());
    return result;
}

class Comparison : public testing::Test, protected ScanFixture {
protected:
    static constexpr const char* savedName = "before.mdb";

    void scanAnew(std::string_view name = {}) {
        working.startAnew();
        clsSearch fresh(working, settings);
        static_cast<void>(modProcessFiles::processMain(key(name), {fresh, settings, userInterface}));
        fresh.makeIndexes();
    }
    void scanAndSave(std::string_view name = {}) {
        scanAnew(name);
        ASSERT_FALSE(modExport::copyDatabase(working, application.typed(savedName), userInterface));
    }
    [[nodiscard]] Items listed(const std::string& name = {}) const {
        Items items;
        list(name.empty() ? tree.path() : tree / name, "", items);
        return items;
    }
    void open() {
        earlier.reset();
        earlier = std::make_unique<EarlierScan>(working, application.typed(savedName), userInterface,
                                                std::function<bool()>());
        modChanges::makeTable(earlier->database());
    }
    // Of the last one `open`ed.
    modChanges::Result compare(const std::string& folder, const std::string& before, bool keepsSame,
                               const std::function<bool()>& goesOn = {}) {
        return modChanges::compare({working.database(), earlier->database(), userInterface, goesOn},
                                   {folder, before, 1, keepsSame});
    }
    // The rows below the folder in the form of `expected`.
    [[nodiscard]] std::vector<std::string> changes(const std::string& folder) const {
        std::vector<std::string> result;
        modChanges::Reader reader(earlier->database(), "", modChanges::Reader::Order::byPath);
        for (; !reader.atEnd(); reader.next()) {
            const modChanges::Change& row = reader.row();
            if (row.path() == folder) {
                continue;
            }
            const auto sizeOf = [](const std::optional<double>& size) {
                return size ? std::to_string(static_cast<std::int64_t>(*size)) : "~";
            };
            result.push_back(row.path().substr(folder.size()) + "|" +
                             std::string(modChanges::stateText(row.state)) + "|" + sizeOf(row.before) + "|" +
                             sizeOf(row.now) + "|" + std::to_string(static_cast<std::int64_t>(row.change())) +
                             "|" + std::to_string(row.differences));
        }
        std::sort(result.begin(), result.end());
        return result;
    }
    // How many rows there are, and how many folders of which are not the sum of what is in them.
    [[nodiscard]] std::pair<std::int64_t, int> rowsAndWrongSums() const {
        Database& database = earlier->database();
        std::map<std::string, double> sums;
        std::map<std::string, double> folders;
        modChanges::Reader reader(database, "", modChanges::Reader::Order::largestFirst);
        const std::int64_t count = reader.count();
        for (; !reader.atEnd(); reader.next()) {
            const modChanges::Change& row = reader.row();
            sums[row.folder] += row.change();
            if (row.isFolder) {
                folders[row.path()] = row.change();
            }
        }
        const auto wrong = std::count_if(folders.begin(), folders.end(), [&](const auto& folder) {
            return sums[folder.first] != folder.second;
        });
        return {count, static_cast<int>(wrong)};
    }
    static std::vector<std::string> texts(const std::vector<modChanges::Change>& changes) {
        std::vector<std::string> result;
        for (const modChanges::Change& each : changes) {
            result.push_back(std::string(each.nameAlone()) + " " +
                             std::string(modChanges::stateText(each.state)) + " " +
                             modLvw::formatChange(each.change()));
        }
        return result;
    }
    void touch(const std::string& name) const {
        const fs::path file = tree / name;
        fs::last_write_time(file, fs::last_write_time(file) - std::chrono::hours(50));
    }
    void makeOriginal() {
        for (const char* name : {"same/file",
                                 "same/deep/file.txt",
                                 "grows/file.txt",
                                 "grows/other",
                                 "shrinks/a/b/file",
                                 "touched/file",
                                 "balance/more",
                                 "balance/less",
                                 "gone/with/all.txt",
                                 "becomes folder",
                                 "becomes file/inner",
                                 "becomes link/inner",
                                 "linked/first",
                                 "Case/Letters.TXT",
                                 "renamed.old",
                                 "sp ace/quote's",
                                 "a/x",
                                 "a!/x",
                                 "a-b/x",
                                 "direct",
                                 "percent%like_/x"}) {
            tree.write(name, std::string(100, 'x'));
        }
        fs::create_directories(tree / "empty");
        fs::create_directories(tree / "emptied later");
        tree.write("emptied later/file", "x");
        for (const std::string& name : testSystem::hostileNames()) {
            tree.write("hostile/" + name, "1");
            tree.write("hostile folders/" + name + "/" + name, "1");
        }
        testSystem::makeFolders(longFolder());
        testSystem::writeFile(longFolder() / "one", "1");
        testSystem::writeFile(longFolder() / "two", "22");
    }
    [[nodiscard]] fs::path longFolder(const std::string& start = "long") const {
        fs::path result = tree / start;
        for (int i = 0; i < 5; ++i) {
            result /= std::string(120, 'n');
        }
        return result;
    }
    void change(const std::string& in = {}) {
        const auto write = [&](const std::string& name, const std::string& content) {
            tree.write(in + name, content);
        };
        const auto at = [&](const std::string& name) { return tree / (in + name); };
        write("grows/file.txt", std::string(5000, 'x'));
        write("grows/new file.cpp", "new");
        write("shrinks/a/b/file", "x");
        touch(in + "touched/file");
        write("balance/more", std::string(150, 'x'));
        write("balance/less", std::string(50, 'x'));
        fs::remove_all(at("gone"));
        fs::remove(at("becomes folder"));
        write("becomes folder/inner", "x");
        fs::remove_all(at("becomes file"));
        write("becomes file", "x");
        fs::remove_all(at("becomes link"));
        testSystem::makeLink(at("same"), at("becomes link"));
        fs::create_hard_link(at("linked/first"), at("linked/second"));
        fs::rename(at("Case"), at("kase"));
        fs::rename(at("kase"), at("case"));
        fs::rename(at("renamed.old"), at("renamed.new"));
        fs::remove(at("emptied later/file"));
        write("a!/x", "longer than before, by some" + std::string(90, 'x'));
        write("created/here/file.cpp", "1");
        fs::create_directories(at("created empty"));
        write("percent%like_/x", "");
        const auto names = testSystem::hostileNames();
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (i % 3 == 0) {
                fs::remove(at("hostile") / testSystem::pathOf(names[i]));
            } else if (i % 3 == 1) {
                write("hostile folders/" + names[i] + "/" + names[i], "12345");
            }
        }
        testSystem::writeFile(longFolder(in + "long") / "two", "4444");
        testSystem::writeFile(longFolder(in + "long") / "three", "333");
    }

    std::unique_ptr<EarlierScan> earlier;
};

TEST_F(Comparison, findsWhatHasChangedInATree) {
    makeOriginal();
    scanAndSave();
    const Items before = listed();
    change();
    scanAnew();
    const Items now = listed();
    for (const bool keepsSame : {false, true}) {
        open();
        const modChanges::Result result = compare(key(), key(), keepsSame);
        EXPECT_TRUE(result.complete);
        EXPECT_FALSE(result.foldersOnly);
        EXPECT_EQ(changes(key()), expected(before, now, keepsSame));
        EXPECT_EQ(rowsAndWrongSums().second, 0);

        const auto totalOf = [](const Items& items) {
            double total = 0;
            for (const auto& [path, item] : items) {
                total += path.ends_with('\\') ? 0 : static_cast<double>(item.size);
            }
            return total;
        };
        EXPECT_EQ(result.folder.before, totalOf(before));
        EXPECT_EQ(result.folder.now, totalOf(now));
        EXPECT_EQ(result.folder.path(), key());
        for (const auto* groups : {&result.types, &result.owners}) {
            modChanges::Group sum;
            for (const modChanges::Group& group : *groups) {
                sum.before += group.before;
                sum.now += group.now;
                sum.filesBefore += group.filesBefore;
                sum.filesNow += group.filesNow;
            }
            EXPECT_EQ(sum.before, result.folder.before);
            EXPECT_EQ(sum.now, result.folder.now);
            std::int64_t files = 0;
            for (const std::int64_t count : result.files) {
                files += count;
            }
            EXPECT_EQ(sum.filesNow, files - result.files.at(static_cast<std::size_t>(State::gone)));
            EXPECT_EQ(sum.filesBefore, files - result.files.at(static_cast<std::size_t>(State::appeared)));
        }
    }
}

TEST_F(Comparison, groupsAreThoseOfBothScans) {
    makeOriginal();
    scanAndSave();
    const auto before = modFigures::fileTypes(working.database(), key());
    change();
    scanAnew();
    const auto now = modFigures::fileTypes(working.database(), key());
    open();
    const modChanges::Result result = compare(key(), key(), false);
    const auto sizeOf = [](const auto& groups, const std::string& name) {
        double size = 0;
        for (const auto& group : groups) {
            size += group.name == name ? group.size : 0;
        }
        return size;
    };
    EXPECT_GT(result.types.size(), 3U);
    for (const modChanges::Group& group : result.types) {
        EXPECT_EQ(group.before, sizeOf(before, group.name)) << group.name;
        EXPECT_EQ(group.now, sizeOf(now, group.name)) << group.name;
    }
    EXPECT_EQ(result.types.front().name, "txt") << "the largest change comes first";
}

TEST_F(Comparison, listsWhatIsInAFolderLargestChangeFirst) {
    makeOriginal();
    scanAndSave();
    change();
    tree.write("direct", std::string(40000, 'x'));
    scanAnew();
    open();
    const auto result = compare(key(), key(), false);
    const auto top = texts(modChanges::childrenOf(earlier->database(), 1, key()));
    ASSERT_GE(top.size(), 10U);
    EXPECT_EQ(top[0], "|Files| grown +38.9 Kb");
    EXPECT_EQ(top[1], "grows grown +4.8 Kb");
    EXPECT_EQ(texts(modChanges::childrenOf(earlier->database(), 1, key("grows"))),
              std::vector<std::string>{"|Files| grown +4.8 Kb"});
    EXPECT_EQ(texts(modChanges::childrenOf(earlier->database(), 1, key("balance"))),
              std::vector<std::string>{"|Files| same 0 bytes"});
    EXPECT_TRUE(modChanges::childrenOf(earlier->database(), 1, key("same")).empty());
    EXPECT_TRUE(modChanges::childrenOf(earlier->database(), 2, key()).empty()) << "another comparison";
    EXPECT_EQ(texts(modChanges::largest(earlier->database(), 1, false, 2)),
              (std::vector<std::string>{"direct grown +39.0 Kb", "file.txt grown +4.8 Kb"}));
    double files = 0;
    for (const auto& child : modChanges::childrenOf(earlier->database(), 1, key())) {
        files += child.change();
    }
    EXPECT_EQ(files, result.folder.change());
}

TEST_F(Comparison, holdsACopyAgainstItsOriginal) {
    makeOriginal();
    for (const auto& entry : fs::directory_iterator(tree.path())) {
        if (const std::string name = testSystem::textOf(entry.path().filename()); name != "original") {
            fs::create_directories(tree / "original");
            fs::rename(entry.path(), tree / ("original/" + name));
        }
    }
    scanAndSave();
    const Items before = listed("original");
    fs::rename(tree / "original", tree / "the copy");
    change("the copy/");
    scanAnew("the copy");
    open();
    const auto result = compare(key("the copy"), key("original"), true);
    EXPECT_EQ(changes(key("the copy")), expected(before, listed("the copy"), true));
    EXPECT_EQ(rowsAndWrongSums().second, 0);
    EXPECT_EQ(result.folder.path(), key("the copy"));
}

TEST_F(Comparison, ofAScanWithItselfFindsNothing) {
    makeOriginal();
    if (testSystem::makeDeepFolders(tree.path()) == 0) {
        std::puts("Without deep folders.");
    }
    scanAndSave();
    const Items items = listed("same");
    open();
    const auto result = compare(key(), key(), false);
    EXPECT_FALSE(result.differs());
    EXPECT_EQ(result.folder.differences, 0);
    EXPECT_EQ(changes(key()), std::vector<std::string>());
    const auto same = static_cast<std::size_t>(State::same);
    EXPECT_EQ(std::to_string(result.files.at(same)), cell("select count(*) from details where isFolder=0"));
    // All but the compared one itself.
    EXPECT_EQ(std::to_string(result.folders.at(same) + 1),
              cell("select count(*) from details where isFolder=1"));

    open();
    EXPECT_EQ(compare(key("same"), key("same"), true).folder.before, 200);
    EXPECT_EQ(changes(key("same")), expected(items, items, true));
}

// What a cancelled scan lacks is the rows of the folders that it was in; what a scan saved without its files
// lacks is these.
TEST_F(Comparison, takesScansWithMissingRows) {
    tree.write("a/b/c/file", "12345");
    tree.write("a/b/c/later", "12");
    tree.write("a/other/file", "123");
    tree.write("top", "1");
    scanAndSave();
    runSqliteScript(application.typed(savedName),
                    "delete from details where fileName in ('a\\', 'b\\', 'c\\', 'later', 'other\\') or "
                    "parentFolder like '%other%'");
    open();
    static_cast<void>(compare(key(), key(), false));
    EXPECT_EQ(changes(key()),
              (std::vector<std::string>{"a\\b\\c\\later|new|~|2|2|0", "a\\b\\c\\|grown|5|7|2|1",
                                        "a\\b\\|grown|5|7|2|2", "a\\other\\file|new|~|3|3|0",
                                        "a\\other\\|new|~|3|3|1", "a\\|grown|5|10|5|5"}));

    scanAndSave();
    runSqliteScript(application.typed(savedName), "delete from details where isFolder=0");
    tree.write("a/other/file", "12345");
    scanAnew();
    open();
    const auto result = compare(key(), key(), false);
    EXPECT_TRUE(result.foldersOnly);
    EXPECT_EQ(changes(key()), (std::vector<std::string>{"a\\other\\|grown|3|5|2|0", "a\\|grown|10|12|2|1"}));
    EXPECT_EQ(texts(modChanges::childrenOf(earlier->database(), 1, key("a/other"))),
              std::vector<std::string>{"|Files| grown +2 bytes"});
    EXPECT_EQ(rowsAndWrongSums().first, 3);
}

TEST_F(Comparison, canBeCancelled) {
    for (int i = 0; i < 3000; ++i) {
        tree.write("file" + std::to_string(i), "");
    }
    scanAndSave();
    open();
    int asked = 0;
    EXPECT_FALSE(compare(key(), key(), false, [&] { return ++asked < 2; }).complete);
    EXPECT_GT(userInterface.progressValue, 0);
    EXPECT_LT(userInterface.progressValue, 3000);
    EXPECT_FALSE(userInterface.progressVisible);
    const EarlierScan cancelled(working, application.typed(savedName), userInterface, [] { return false; });
    EXPECT_FALSE(cancelled.isComplete());
}

// Whatever the rows are, each is compared once, and as much is found in one direction as in the other.
TEST_F(Comparison, standsRowsThatNoScanRecords) {
    tree.write("file", "1");
    scanAnew();
    std::string slashes;
    for (int i = 0; i < 30'000; ++i) {
        slashes += "a\\";
    }
    const std::string at = "'" + key();
    const std::string row = "insert into details (parentFolder, fileName, isFolder, size) values (";
    const std::string script =
        "create table details (idx integer primary key, drive, parentFolder, fileName, isFolder, size);"
        "create table nodes (nodeKey);" +
        row + at + "', 'file', 0, 1);" + row + at + "', 'file', 0, 2);" + // twice
        row + at + "', 'file', 1, 3);" +                                  // a folder without "\"
        row + at + "', NULL, NULL, NULL);" + row + at + "\\\\\\', 'x', 0, 5);" + row + at +
        "no end', 'x', 0, 6);" + row + at + "file\\', 'below a file', 0, 7);" + row + at +
        "a\\b', x'00ff', 7, -5);" + row + at + slashes + "', 'deep', 0, 8);" + row + at + "b" + slashes +
        "', 'deep', 0, 8);" + row + at + "c" + slashes + slashes + slashes + "', 'too deep', 0, 100);" + row +
        "NULL, 'x', 0, 1);" + row + "'', '', 1, 9e18);";
    runSqliteScript(application.typed(savedName), script);
    open();
    const auto forth = compare(key(), key(), false);
    EXPECT_TRUE(forth.complete);
    const auto count = [&](const modChanges::Result& result, State state) {
        return result.files.at(static_cast<std::size_t>(state));
    };
    EXPECT_EQ(count(forth, State::gone), 8);
    EXPECT_EQ(count(forth, State::touched), 0) << "by a date that is unknown";
    EXPECT_EQ(count(forth, State::appeared), 0);
    EXPECT_LT(rowsAndWrongSums().first, 5000) << "folders that are only claimed";
    EXPECT_LT(fs::file_size(testSystem::pathOf(platform::toNative(earlier->database().Name()))), 64U << 20);

    ASSERT_FALSE(modExport::copyDatabase(working, application.typed("now.mdb"), userInterface));
    modExport::loadDatabase(working, application.typed(savedName), userInterface);
    earlier = std::make_unique<EarlierScan>(working, application.typed("now.mdb"), userInterface,
                                            std::function<bool()>());
    modChanges::makeTable(earlier->database());
    const auto back = compare(key(), key(), false);
    EXPECT_EQ(count(back, State::appeared), 8);
    EXPECT_EQ(count(back, State::gone), 0);
    EXPECT_EQ(back.folder.change(), -forth.folder.change());
}

} // namespace
