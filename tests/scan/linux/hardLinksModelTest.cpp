#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <random>
#include <set>

#include "db/folderRows.h"
#include "platform/paths.h"
#include "support/scanFixture.h"

// Files with several names, in random sequences of scans, resets, cancels, removals and changes of the disk:
// when all rows are what is there, each file counts once.

namespace fs = std::filesystem;

namespace {

constexpr int stepsPerSequence = 40;

std::int64_t allocated(const fs::path& path) {
    struct stat status {};
    ::lstat(path.c_str(), &status);
    return static_cast<std::int64_t>(status.st_blocks) * 512;
}

class Sequence : public ScanFixture {
public:
    Sequence(unsigned seed, bool changes) : random_(seed), changes_(changes) {
        for (const char* folder : {"a", "a/in", "b", "b/in", "c"}) {
            fs::create_directories(tree / folder);
            folders_.emplace_back(folder);
        }
        for (int i = 0; i < 14; ++i) {
            change();
        }
        userInterface.onYield = [this] {
            if (search.processing && cancelAfter_ > 0 && --cancelAfter_ == 0) {
                trace_ += "  cancelled\n";
                search.CancelScan = true;
            }
        };
    }

    // What is wrong after one more step; empty if nothing is.
    std::string step() {
        if (changes_ && below(3) == 0) {
            change();
        }
        const std::string folder = below(4) == 0 ? std::string() : anyFolder();
        const int choice = below(changes_ ? 5 : 4);
        if (choice == 4) {
            trash();
            return faults();
        }
        if (choice == 0) {
            trace_ += "reset " + folder + "\n";
            search.resetScanCompleteTime(key(folder));
        } else if (choice == 1) {
            trace_ += "reset whole " + folder + "\n";
            search.resetWholeFolder(key(folder));
        }
        cancelAfter_ = below(3) == 0 ? 1 + below(9) : 0;
        trace_ += "scan " + folder + "\n";
        scan(folder);
        return faults();
    }

    [[nodiscard]] const std::string& trace() const { return trace_; }
    [[nodiscard]] int wholeStates() const { return wholeStates_; }

private:
    int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
    const std::string& anyFolder() {
        return folders_[static_cast<std::size_t>(below(static_cast<int>(folders_.size())))];
    }
    std::string anyName() { return anyFolder() + "/" + static_cast<char>('p' + below(5)); }

    // A file with a name outside of the tree, so that a scan sees from the beginning that there may be
    // others.
    void write(const std::string& name) {
        tree.write(name, std::string(static_cast<std::size_t>(1 + below(60'000)), 'x'));
        fs::create_hard_link(tree / name, outside_ / std::to_string(++files_));
    }

    // Removes, makes, moves or links a file.
    void change() {
        const std::string from = anyName();
        const std::string to = anyName();
        const int choice = below(5);
        std::error_code error;
        if (from == to) {
            return;
        }
        trace_ += "change " + std::to_string(choice) + " " + from + " " + to + "\n";
        if (choice == 0) {
            fs::remove(tree / from);
        } else if (choice == 2 && changes_) {
            fs::rename(tree / from, tree / to, error);
        } else {
            if (!fs::exists(tree / from)) {
                write(from);
            }
            if (choice > 2 && !fs::exists(tree / to)) {
                fs::create_hard_link(tree / from, tree / to);
            }
        }
    }

    void trash() {
        const std::string name = anyName();
        if (fs::remove(tree / name)) {
            trace_ += "trash " + name + "\n";
            std::string path = key(name);
            path.pop_back();
            search.removeEntry(path);
        }
    }

    std::string faults() {
        std::string result;
        std::map<std::string, double> contents;
        std::map<std::string, double> folders;
        std::set<std::string> recorded; // files, told apart by their sizes
        bool isStamped = true;
        const auto rows = working.database().OpenRecordset(
            "select parentFolder,fileName,sizeOnDisk,isFolder,scanCompleteTime,size from details");
        for (; !rows->EndOfFile(); rows->MoveNext()) {
            const std::string parent(rows->Fields(0).text());
            const std::string path = parent + std::string(rows->Fields(1).text());
            contents[parent] += rows->Fields(2).number();
            if (rows->Fields(3).number() != 0) {
                folders[path] = rows->Fields(2).number();
                isStamped = isStamped && !rows->Fields(4).isNull();
            } else {
                recorded.insert(platform::toNative(path) + "|" + std::string(rows->Fields(5).text()));
            }
        }
        for (const auto& [path, size] : folders) {
            if (size != contents[path] + static_cast<double>(allocated(platform::toNative(path)))) {
                result += "not its own size and its contents', " + std::to_string(size) + " instead of " +
                          std::to_string(contents[path] +
                                         static_cast<double>(allocated(platform::toNative(path)))) +
                          ": " + path + "\n";
            }
        }
        std::set<std::string> there;
        std::set<ino_t> seen;
        auto expected = static_cast<double>(allocated(tree.path()));
        for (const auto& entry : fs::recursive_directory_iterator(tree.path())) {
            struct stat status {};
            ::lstat(entry.path().c_str(), &status);
            if (!S_ISDIR(status.st_mode)) {
                there.insert(entry.path().string() + "|" + std::to_string(status.st_size));
            }
            if (seen.insert(status.st_ino).second) {
                expected += static_cast<double>(allocated(entry.path()));
            }
        }
        const auto own = folders.find(key());
        const bool isWhole =
            isStamped && folders.size() == folders_.size() + 1 && own != folders.end() && recorded == there;
        wholeStates_ += isWhole ? 1 : 0;
        if (isWhole && own->second != expected) {
            result += "all is recorded, but " + std::to_string(own->second) + " instead of " +
                      std::to_string(expected) + "\n";
        }
        return result;
    }

    std::mt19937 random_;
    bool changes_;
    TemporaryFolder outsideFolder_;
    fs::path outside_ = outsideFolder_.path();
    std::vector<std::string> folders_;
    int files_ = 0;
    int cancelAfter_ = 0;
    int wholeStates_ = 0;
    std::string trace_;
};

TEST(HardLinksModel, eachFileCountsOnce) {
    constexpr unsigned sequences = 40;
    for (const bool changes : {false, true}) {
        int wholeStates = 0;
        for (unsigned seed = 0; seed < sequences; ++seed) {
            Sequence sequence(seed, changes);
            std::string fault;
            for (int step = 0; step < stepsPerSequence && fault.empty(); ++step) {
                fault = sequence.step();
            }
            ASSERT_EQ(fault, "") << "seed " << seed << "\n" << sequence.trace();
            wholeStates += sequence.wholeStates();
        }
        EXPECT_GT(wholeStates, 200) << "else there was little to see";
    }
}

} // namespace
