#include "app/clsConcat.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Text = std::string;

// The text shows how far the buffer had grown.
TEST(Concat, growsAsItsRulesSay) {
    struct Case {
        std::vector<std::string> pieces;
        std::string built;
    };
    const std::vector<Case> cases = {
        {{}, ""},
        {{"", "äöü€😊", "", "b"}, "äöü€😊b"},
        {{Text(15001, 'a'), Text(15001, 'b')}, Text(15001, 'a') + Text(15000, 'b')},
        {{Text(20000, 'a'), Text(20000, 'b'), "c"},
         Text(20000, 'a') + Text(15000, 'b') + Text(5000, '\0') + "c"},
        {{Text(40000, 'a'), Text(40000, 'b'), Text(100, 'c')},
         Text(40000, 'a') + Text(15000, 'b') + Text(15000, '\0')},
    };
    for (const auto& c : cases) {
        clsConcat builder;
        for (const std::string& piece : c.pieces) {
            builder.SConcat(piece);
        }
        EXPECT_TRUE(builder.GetString() == c.built) << c.built.size();
    }
}

TEST(Concat, seedAndReInit) {
    clsConcat builder;
    builder.SetString("abc");
    EXPECT_EQ(builder.GetString(), "");
    builder.SConcat("x");
    EXPECT_EQ(builder.GetString(), "x") << "written over the seed";
    builder.SetString("abc");
    EXPECT_EQ(builder.GetString(), "a") << "the count stays";
    builder.ReInit();
    EXPECT_EQ(builder.GetString(), "");
}

} // namespace
