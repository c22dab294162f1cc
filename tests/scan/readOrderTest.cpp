#include "scan/readOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "support/temporaryFolder.h"

namespace {

using FolderPtr = ReadOrder::FolderPtr;

// Walks real folders with some readers, which take turns by chance, and notes what was read by whom.
class ReadOrderTest : public testing::Test {
protected:
    ReadOrderTest() {
        for (const char* folder : {"a/a/a", "a/a/b", "a/b", "b", "c/a/a/a", "c/b", "c/c/a", "c/c/b", "d"}) {
            std::filesystem::create_directories(tree_ / folder);
        }
    }

    [[nodiscard]] std::string root() const { return tree_.internal() + "\\"; }

    // "c\a\" for a folder of the tree.
    [[nodiscard]] std::string nameOf(const ReadOrder::Folder& folder) const {
        return folder.path().substr(root().size());
    }

    void read(const FolderPtr& folder, bool isStart = false) {
        folder->isRead = reader_.read(folder->path(), folder->entries, isStart);
        order_.findSubfolders(*folder);
        order_.finish(folder);
    }

    FolderPtr start(bool isNew = true) {
        FolderPtr folder = order_.start(root(), isNew);
        read(folder, true);
        return folder;
    }

    // Everything below the folder in the order of the walk.
    void walk(const FolderPtr& folder, std::vector<std::string>& walked,
              const std::function<void()>& meanwhile) {
        for (std::size_t index = 0; index < folder->entries.size(); ++index) {
            meanwhile();
            const FolderPtr subfolder = order_.take(*folder, index, true);
            while (ReadOrder::isBeingRead(*subfolder)) {
                meanwhile();
            }
            if (ReadOrder::isUnread(*subfolder)) {
                read(subfolder);
            }
            walked.push_back(nameOf(*subfolder));
            walk(subfolder, walked, meanwhile);
        }
        order_.leave(folder);
    }

    TemporaryFolder tree_;
    platform::FolderReader reader_;
    ReadOrder order_{[](std::string_view, std::string_view) { return true; }};
};

TEST_F(ReadOrderTest, offersFoldersAsTheWalkWillWantThem) {
    std::vector<std::string> expected;
    walk(start(), expected, [] {});
    ASSERT_EQ(expected.size(), 15U);
    const FolderPtr top = start();
    std::vector<std::string> chosen;
    while (const FolderPtr folder = order_.choose()) {
        chosen.push_back(nameOf(*folder));
        read(folder);
    }
    EXPECT_EQ(chosen, expected);
    EXPECT_GT(order_.waitingBytes(), 0U);
    order_.leave(top);
    EXPECT_EQ(order_.waitingBytes(), 0U) << "what nobody wants any more does not wait";
}

TEST_F(ReadOrderTest, givesTheWalkEachFolderOnceWhoeverReadsIt) {
    std::vector<std::string> expected;
    walk(start(), expected, [] {});
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed); // NOLINT: the same each time
        std::vector<FolderPtr> beingRead;
        const auto meanwhile = [&] {
            for (auto turns = random() % 6; turns > 0; --turns) {
                if (random() % 2 == 0) {
                    if (FolderPtr folder = order_.choose()) {
                        beingRead.push_back(std::move(folder));
                    }
                } else if (!beingRead.empty()) {
                    std::swap(beingRead[random() % beingRead.size()], beingRead.back());
                    const FolderPtr folder = std::move(beingRead.back());
                    beingRead.pop_back();
                    random() % 5 == 0 ? order_.giveBack(folder) : read(folder);
                }
            }
        };
        std::vector<std::string> walked;
        walk(start(), walked, meanwhile);
        ASSERT_EQ(walked, expected);
        EXPECT_EQ(order_.choose(), nullptr);
        EXPECT_EQ(order_.waitingBytes(), 0U);
        for (const FolderPtr& late : beingRead) {
            read(late);
        }
        EXPECT_EQ(order_.choose(), nullptr) << "what is read too late leads to nothing more";
        EXPECT_EQ(order_.waitingBytes(), 0U);
    }
}

TEST_F(ReadOrderTest, forgetsWhatWasReadOfAFolderThatIsGivenBack) {
    std::filesystem::remove_all(tree_ / "c");
    std::filesystem::remove_all(tree_ / "d");
    std::filesystem::remove_all(tree_ / "b");
    const FolderPtr top = start();
    const FolderPtr folder = order_.choose();
    folder->isRead = reader_.read(folder->path(), folder->entries);
    order_.findSubfolders(*folder);
    order_.giveBack(folder);
    std::filesystem::remove_all(tree_ / "a/b");
    ASSERT_EQ(order_.take(*top, 0, true), folder);
    ASSERT_TRUE(ReadOrder::isUnread(*folder));
    read(folder);
    const FolderPtr subfolder = order_.choose();
    ASSERT_NE(subfolder, nullptr);
    EXPECT_EQ(nameOf(*subfolder), "a\\a\\");
    EXPECT_EQ(order_.choose(), nullptr) << "the one that is gone";
}

TEST_F(ReadOrderTest, offersOfAFolderThatIsNotNewOnlyWhatWillBeWalked) {
    const FolderPtr top = start(false);
    EXPECT_EQ(order_.choose(), nullptr);
    order_.open(top, [](std::string_view name) {
        return name == "a"   ? ReadOrder::Plan::skip
               : name == "c" ? ReadOrder::Plan::walkAsNew
                             : ReadOrder::Plan::walk;
    });
    std::vector<std::string> chosen;
    while (const FolderPtr folder = order_.choose()) {
        chosen.push_back(nameOf(*folder));
        read(folder);
    }
    EXPECT_EQ(std::count_if(chosen.begin(), chosen.end(), [](const auto& n) { return n[0] == 'a'; }), 0);
    EXPECT_EQ(std::count_if(chosen.begin(), chosen.end(), [](const auto& n) { return n[0] == 'c'; }), 8);
    EXPECT_EQ(chosen.size(), 10U);
}

} // namespace
