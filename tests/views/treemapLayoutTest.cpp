#include "views/treemapLayout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <set>

#include "support/treemapMaker.h"

namespace {

using Kind = TreemapNode::Kind;
using Direction = TreemapLayout::Direction;

constexpr TreemapRect room{0, 0, 800, 600};
constexpr TreemapLook look;

// That every folder's tiles are inside it, do not share a place, and have areas in proportion; and that their
// sizes and numbers are those of what the tree has there.
void expectSound(const TreemapLayout& layout) {
    const std::vector<TreemapTile>& tiles = layout.tiles();
    const std::vector<TreemapNode>& nodes = layout.tree()->nodes();
    for (const TreemapTile& folder : tiles) {
        if (folder.count == 0) {
            continue;
        }
        const TreemapNode& node = nodes[folder.node];
        double size = 0;
        double area = 0;
        std::uint64_t items = 0;
        for (std::uint32_t i = folder.first; i < folder.first + folder.count; ++i) {
            const TreemapTile& tile = tiles[i];
            size += tile.size;
            area += tile.area.area();
            items += tile.items;
            EXPECT_GE(tile.area.left, folder.inside.left - 1e-6);
            EXPECT_GE(tile.area.top, folder.inside.top - 1e-6);
            EXPECT_LE(tile.area.right(), folder.inside.right() + 1e-6);
            EXPECT_LE(tile.area.bottom(), folder.inside.bottom() + 1e-6);
        }
        double nodesSize = 0;
        std::uint64_t nodesItems = 0;
        for (std::uint32_t i = node.first; i < node.first + node.count; ++i) {
            nodesSize += nodes[i].size;
            nodesItems += nodes[i].items;
        }
        EXPECT_NEAR(size / nodesSize, 1, 1e-9) << "nothing is lost";
        EXPECT_EQ(items, nodesItems);
        EXPECT_NEAR(area / folder.inside.area(), 1, 1e-9) << "all is covered, so nothing overlaps";
        for (std::uint32_t i = folder.first; i < folder.first + folder.count; ++i) {
            EXPECT_NEAR(tiles[i].area.area() / area, tiles[i].size / size, 1e-9);
        }
    }
}

std::string name(int number) {
    return "f" + std::to_string(number);
}

TEST(TreemapLayout, placesWhatIsInFolders) {
    TreemapMaker maker;
    const std::uint32_t a = maker.add(0, {TreemapMaker::folder("a", 600), maker.file("big.iso", 300, "iso"),
                                          TreemapMaker::folder("b", 90), maker.file("x.txt", 10)});
    maker.add(a, {TreemapMaker::folder("deep", 400), maker.file("y.txt", 200)});
    maker.add(a + 2, {maker.file("z.txt", 90)});
    const TreemapLayout layout(maker.take(), room, look);
    expectSound(layout);
    ASSERT_EQ(layout.tiles().size(), 8U);
    for (const char* path :
         {"C:\\", "C:\\a\\", "C:\\big.iso", "C:\\a\\deep\\", "C:\\a\\y.txt", "C:\\b\\z.txt"}) {
        const std::uint32_t tile = layout.find(path);
        ASSERT_NE(tile, TreemapTile::none) << path;
        EXPECT_EQ(layout.pathOf(tile), path);
        const TreemapTile& found = layout.tiles()[tile];
        EXPECT_EQ(layout.at(found.area.left + 0.25, found.area.top + 0.25), tile)
            << "frames are their folders'";
    }
    for (const char* path : {"C:\\no", "C:\\a", "C:\\big.iso\\", "C:\\a\\deep\\x", "D:\\a\\", ""}) {
        EXPECT_EQ(layout.find(path), TreemapTile::none) << path;
    }
    EXPECT_EQ(layout.folderOf(layout.find("C:\\a\\deep\\")), "C:\\a\\deep\\");
    EXPECT_EQ(layout.folderOf(layout.find("C:\\a\\y.txt")), "C:\\a\\");
    EXPECT_EQ(layout.at(-1, 5), TreemapTile::none);
    EXPECT_EQ(layout.at(800, 5), TreemapTile::none);
}

TEST(TreemapLayout, gathersWhatIsTooSmallByItsType) {
    TreemapMaker maker;
    std::vector<TreemapNode> children{maker.file("big", 1e6, "iso"), TreemapMaker::folder("small folder", 3)};
    for (int i = 0; i < 3000; ++i) {
        children.push_back(maker.file(name(i), 2, i % 3 == 0 ? "c" : "h"));
    }
    children.push_back(maker.file("single", 0.01, "single"));
    maker.add(0, children);
    const TreemapLayout layout(maker.take(), room, look);
    expectSound(layout);
    ASSERT_EQ(layout.tiles().size(), 5U) << "the folder, the big file, h, c and the rest";
    const std::uint32_t h = layout.find("C:\\|h");
    ASSERT_NE(h, TreemapTile::none);
    EXPECT_EQ(layout.tiles()[h].items, 2000U);
    EXPECT_EQ(layout.folderOf(h), "C:\\");
    EXPECT_EQ(layout.tiles()[layout.find("C:\\|")].items, 2U) << "too little of a type, and folders";

    const TreemapLayout smaller(layout.tree(), {0, 0, 60, 60}, look);
    expectSound(smaller);
    EXPECT_LT(smaller.tiles().size(), 5U);
}

TEST(TreemapLayout, neighboursAreBeyondTheEdges) {
    TreemapMaker maker;
    const std::uint32_t a = maker.add(0, {TreemapMaker::folder("a", 500), TreemapMaker::folder("b", 499)});
    maker.add(a, {maker.file("1", 250), maker.file("2", 250)});
    maker.add(a + 1, {maker.file("3", 250), maker.file("4", 249)});
    const TreemapLayout layout(maker.take(), room, look); // two columns of two
    const auto beside = [&](const char* path, Direction direction) {
        const std::uint32_t tile = layout.neighbour(layout.find(path), direction);
        return tile == TreemapTile::none ? "" : layout.pathOf(tile);
    };
    EXPECT_EQ(beside("C:\\a\\1", Direction::down), "C:\\a\\2");
    EXPECT_EQ(beside("C:\\a\\2", Direction::up), "C:\\a\\1");
    EXPECT_EQ(beside("C:\\a\\1", Direction::right), "C:\\b\\3") << "frames are passed over";
    EXPECT_EQ(beside("C:\\b\\4", Direction::left), "C:\\a\\2");
    EXPECT_EQ(beside("C:\\a\\1", Direction::left), "");
    EXPECT_EQ(beside("C:\\a\\1", Direction::up), "");
    EXPECT_EQ(beside("C:\\a\\", Direction::right).substr(0, 5), "C:\\b\\");
    EXPECT_EQ(beside("C:\\", Direction::down), "");
}

// Where the straight way runs along a folder's title, too.
TEST(TreemapLayout, neighboursAreFoundBesideTitles) {
    TreemapMaker maker;
    std::vector<TreemapNode> children{TreemapMaker::folder("a", 8000)};
    for (int i = 0; i < 100; ++i) {
        children.push_back(maker.file(name(i), 20));
    }
    maker.add(0, std::move(children));
    maker.add(1, {TreemapMaker::folder("b", 8000)});
    maker.add(102, {maker.file("1", 4000), maker.file("2", 4000)});
    const TreemapLayout layout(maker.take(), room, look);
    const TreemapRect& folder = layout.tiles()[layout.find("C:\\a\\")].area;
    int beside = 0;
    for (std::uint32_t i = 0; i < layout.tiles().size(); ++i) {
        const TreemapRect& area = layout.tiles()[i].area;
        if (area.left == folder.right()) {
            ++beside;
            const std::uint32_t found = layout.neighbour(i, Direction::left);
            ASSERT_NE(found, TreemapTile::none);
            EXPECT_EQ(layout.folderOf(found), "C:\\a\\b\\") << area.top;
        }
    }
    EXPECT_GT(beside, 10);
}

TEST(TreemapLayout, bearsExtremes) {
    TreemapMaker giant;
    giant.add(0, {giant.file("giant", 0x1p96), giant.file("one", 1), giant.file("least", 5e-324)});
    expectSound(TreemapLayout(giant.take(), room, look));

    TreemapMaker equal(1e12);
    std::vector<TreemapNode> children;
    for (int i = 0; i < 1'000'000; ++i) {
        children.push_back(equal.file(name(i), 1, "x"));
    }
    equal.add(0, std::move(children));
    const TreemapLayout gathered(equal.take(), room, look);
    ASSERT_EQ(gathered.tiles().size(), 2U);
    EXPECT_EQ(gathered.tiles()[1].items, 1'000'000U);

    constexpr int levels = 5000;
    TreemapMaker deep;
    std::uint32_t parent = 0;
    for (int i = 0; i < levels; ++i) {
        parent = deep.add(parent, {TreemapMaker::folder("d", 7)});
    }
    deep.add(parent, {deep.file("end", 7)});
    const TreemapLayout chain(deep.take(), room, look);
    expectSound(chain);
    EXPECT_GT(chain.tiles().size(), 20U);
    const std::uint32_t middle = chain.at(400, 450);
    EXPECT_NE(middle, TreemapTile::none);

    EXPECT_TRUE(TreemapLayout(nullptr, room, look).tiles().empty());
    EXPECT_TRUE(TreemapLayout(TreemapMaker().take(), room, look).tiles().empty());
    for (const TreemapRect& none :
         {TreemapRect{0, 0, 0, 0}, TreemapRect{0, 0, -5, -5}, TreemapRect{0, 0, NAN, 9}}) {
        EXPECT_TRUE(TreemapLayout(chain.tree(), none, look).tiles().empty());
    }
}

} // namespace
