#include "views/treemapReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <map>

#include "db/values.h"
#include "support/scanFixture.h"
#include "views/treemapGrowth.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

constexpr double area = 1e6;

class TreemapReading : public testing::Test, public ScanFixture {
protected:
    void record(const std::string& path, const std::string& size) const {
        const bool isFolder = path.ends_with('\\');
        const std::size_t end = path.rfind('\\', path.size() - (isFolder ? 2 : 1)) + 1;
        const std::size_t dot = path.rfind('.');
        working.database().Execute(
            "insert into details (parentFolder,fileName,isFolder,extension,size) values (" +
            modGlobal::quoted(path.substr(0, end)) + "," + modGlobal::quoted(path.substr(end)) + "," +
            (isFolder ? "1" : "0") + "," +
            modGlobal::quoted(isFolder || dot == std::string::npos ? "" : path.substr(dot + 1)) + "," + size +
            ")");
    }
    // The tree's items as path=size, those gathered as folder|type:number=size; each stays in its folder's
    // order.
    [[nodiscard]] static std::vector<std::string> items(const TreemapTree& read) {
        std::vector<std::string> result;
        for (std::uint32_t i = 1; i < read.nodes().size(); ++i) {
            const TreemapNode& node = read.nodes()[i];
            std::string path = read.path(i);
            if (node.kind == TreemapNode::Kind::gathered) {
                path += "|" + read.types()[node.type].extension + ":" + std::to_string(node.items);
            }
            result.push_back(path + "=" + valueText(node.size));
        }
        return result;
    }
    [[nodiscard]] TreemapTree tree(const std::string& folder, double pixels = area,
                                   modFigures::ScanState state = modFigures::ScanState::ended) const {
        TreemapReader reader(folder, pixels, state);
        while (
            !reader.readUntil(working.database(), std::chrono::steady_clock::now() + std::chrono::hours(1))) {
        }
        return reader.take();
    }
};

TEST_F(TreemapReading, readsWhatCanBeToldApart) {
    record("C:\\a\\big.iso", "600");
    record("C:\\a\\in\\x.txt", "300");
    record("C:\\a\\in\\", "300");
    record("C:\\a\\", "900");
    record("C:\\ab\\other.txt", "50");
    record("C:\\own.txt", "90");
    record("C:\\empty\\", "0");
    EXPECT_THAT(items(tree("C:\\a\\")),
                ElementsAre("C:\\a\\big.iso=600", "C:\\a\\in\\=300", "C:\\a\\in\\x.txt=300"));
    EXPECT_THAT(items(tree("C:\\")), ElementsAre("C:\\a\\=900", "C:\\own.txt=90", "C:\\a\\big.iso=600",
                                                 "C:\\a\\in\\=300", "C:\\a\\in\\x.txt=300"));
    EXPECT_EQ(tree("C:\\").nodes().front().size, 990) << "a drive has no row";
    EXPECT_TRUE(tree("C:\\no\\").isEmpty());
    EXPECT_TRUE(tree("C:\\empty\\").isEmpty());

    const TreemapTree small = tree("C:\\", 400);
    EXPECT_THAT(items(small), Contains("C:\\a\\big.iso=600"));
    EXPECT_THAT(items(tree("C:\\", 105)), ElementsAre("C:\\a\\=900", "C:\\|:1=90"))
        << "too small to be looked into";
    const std::vector<std::uint32_t> types = small.largestTypes(1);
    ASSERT_EQ(types.size(), 1U);
    EXPECT_EQ(small.types()[types[0]].extension, "iso");
}

TEST_F(TreemapReading, gathersInOneFolderWithoutLosingAny) {
    working.database().BeginTrans();
    for (int i = 0; i < 5000; ++i) {
        record("C:\\" + std::to_string(i) + (i % 2 == 0 ? ".c" : ".h"), std::to_string(i % 10));
    }
    record("C:\\large.bin", "100000");
    working.database().CommitTrans();
    const TreemapTree read = tree("C:\\", 10'000);
    double sum = 0;
    std::map<std::string, std::uint32_t> gathered;
    for (std::size_t i = 1; i < read.nodes().size(); ++i) {
        sum += read.nodes()[i].size;
        gathered[read.types()[read.nodes()[i].type].extension] += read.nodes()[i].items;
    }
    EXPECT_EQ(sum, 122'500);
    EXPECT_EQ(read.nodes().front().size, sum);
    EXPECT_THAT(gathered,
                UnorderedElementsAre(std::pair("bin", 1U), std::pair("c", 2000U), std::pair("h", 2500U)))
        << "without those of size 0";

    TreemapReader reader("C:\\", 10'000, modFigures::ScanState::ended);
    int calls = 1;
    while (!reader.readUntil(working.database(), {})) {
        ++calls;
    }
    EXPECT_GT(calls, 10) << "it stops when it is told to";
    EXPECT_EQ(items(reader.take()), items(read)) << "and goes on where it was";
}

TEST_F(TreemapReading, bearsSizesOfLoadedRows) {
    record("C:\\nan", "null");
    record("C:\\negative", "-5");
    record("C:\\largest", "9223372036854775808");
    record("C:\\less\\x", "3");
    record("C:\\less\\", "-7");
    record("C:\\more\\x", "3");
    record("C:\\more\\", "9223372036854775808");
    record("C:\\\\", "4611686018427387904"); // a folder without a name, in itself
    const TreemapTree read = tree("C:\\");
    EXPECT_THAT(items(read), Contains("C:\\largest=9223372036854775808"));
    EXPECT_THAT(items(read), Contains("C:\\more\\x=3"));
    EXPECT_THAT(items(read), Not(Contains(testing::StartsWith("C:\\less"))));
    for (const TreemapNode& node : read.nodes()) {
        EXPECT_GT(node.size, 0);
        EXPECT_LT(node.size, std::numeric_limits<double>::infinity());
    }
}

TEST_F(TreemapReading, readsAThousandLevels) {
    std::string path = "C:\\";
    for (int i = 0; i < 1000; ++i) {
        path += "d\\";
        record(path, "8");
    }
    record(path + "end.txt", "8");
    const TreemapTree read = tree("C:\\");
    EXPECT_EQ(read.nodes().size(), 1002U);
    EXPECT_EQ(read.path(1001), path + "end.txt");
}

// Folders that a scan is in have no rows of their own yet.
TEST_F(TreemapReading, followsARunningScan) {
    record("C:\\done\\a.x", "7");
    record("C:\\done\\", "7");
    record("C:\\now\\b.x", "20");
    record("C:\\now\\inner\\c.x", "300");
    record("C:\\now\\inner\\", "300");
    record("C:\\now\\second\\deep\\d.x", "1000");
    const std::vector<std::string> running = items(tree("C:\\", area, modFigures::ScanState::running));
    EXPECT_THAT(running, UnorderedElementsAre("C:\\now\\=1320", "C:\\done\\=7", "C:\\now\\second\\=1000",
                                              "C:\\now\\inner\\=300", "C:\\now\\b.x=20", "C:\\done\\a.x=7",
                                              "C:\\now\\second\\deep\\=1000", "C:\\now\\inner\\c.x=300",
                                              "C:\\now\\second\\deep\\d.x=1000"));
    EXPECT_THAT(items(tree("C:\\")), UnorderedElementsAre("C:\\done\\=7", "C:\\done\\a.x=7"));
    EXPECT_THAT(items(tree("D:\\", area, modFigures::ScanState::running)), IsEmpty());
}

// Without indexes, each row is read once.
TEST_F(TreemapReading, growsFromTheRowsInTheirOrder) {
    const auto indexes = working.database().TakeIndexes("details");
    TreemapGrowth growth("C:\\", area);
    const auto grown = [&] {
        while (!growth.readUntil(working.database(), {})) {
        }
        return items(growth.tree());
    };
    EXPECT_THAT(grown(), IsEmpty());
    record("C:\\a\\x.c", "500");
    record("C:\\a\\y.c", "100");
    record("C:\\a\\in\\deep\\z.h", "60");
    record("D:\\elsewhere.c", "9");
    EXPECT_THAT(grown(), ElementsAre("C:\\a\\=660", "C:\\a\\|c:2=600", "C:\\a\\in\\=60",
                                     "C:\\a\\in\\deep\\=60", "C:\\a\\in\\deep\\|h:1=60"));
    for (int i = 0; i < 600; ++i) {
        record("C:\\a\\in\\" + std::to_string(i) + ".h", "1");
    }
    record("C:\\a\\in\\", "660");
    record("C:\\b.c", "5");
    EXPECT_THAT(grown(),
                ElementsAre("C:\\a\\=1260", "C:\\|c:1=5", "C:\\a\\in\\=660", "C:\\a\\|c:2=600",
                            "C:\\a\\in\\|h:600=600", "C:\\a\\in\\deep\\=60", "C:\\a\\in\\deep\\|h:1=60"));
    working.database().RestoreIndexes(indexes);
}

} // namespace
