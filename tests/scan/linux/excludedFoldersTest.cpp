#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <set>
#include <string>

#include "base/excludes.h"
#include "support/scanFixture.h"

namespace {

// Notes which of some folders are opened.
class Watch {
public:
    Watch() : descriptor_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}
    ~Watch() { ::close(descriptor_); }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    // The number of the folder; -1 if it cannot be watched.
    [[nodiscard]] int add(const std::filesystem::path& folder) const {
        return ::inotify_add_watch(descriptor_, folder.c_str(), IN_OPEN | IN_ONLYDIR);
    }
    // Those that were opened since the last call, or since they are watched.
    [[nodiscard]] std::set<int> opened() const {
        std::set<int> numbers;
        std::array<char, 16384> block{};
        for (ssize_t count = 0; (count = ::read(descriptor_, block.data(), block.size())) > 0;) {
            for (std::size_t at = 0; at < static_cast<std::size_t>(count);) {
                inotify_event event{};
                std::memcpy(&event, &block.at(at), sizeof event);
                numbers.insert(event.wd);
                at += sizeof event + event.len;
            }
        }
        return numbers;
    }

private:
    int descriptor_;
};

class ExcludedFolders : public testing::Test, protected ScanFixture {};

TEST_F(ExcludedFolders, areOpenedByNobody) {
    constexpr int folders = 50;
    const Watch watch;
    std::set<int> walked;
    for (int i = 0; i < folders; ++i) {
        for (const char* name : {"in", "out"}) {
            const std::string folder = std::to_string(i) + "/" + name;
            tree.write(folder + "/file", "x");
            const int number = watch.add(tree / folder);
            if (number < 0) {
                GTEST_SKIP() << "folders cannot be watched here";
            }
            if (std::string_view(name) == "in") {
                walked.insert(number);
            }
        }
    }
    static_cast<void>(watch.opened());
    Excludes excludes;
    excludes.add("[o]u*");
    settings.setExcludes(std::move(excludes));
    for (const std::int16_t readers : std::initializer_list<std::int16_t>{0, 4}) {
        settings.setReaders(readers);
        search.resetAll();
        EXPECT_EQ(scan().excluded, folders);
        EXPECT_EQ(watch.opened(), walked) << readers << " readers";
        search.resetScanCompleteTime(key());
        scan();
        EXPECT_TRUE(watch.opened().empty()) << "all is stamped";
        search.resetScanCompleteTime(key("7"));
        scan();
        EXPECT_EQ(watch.opened().size(), 1U) << "of 7";
    }
}

} // namespace
