#include "base/clsConcat.h"

#include <gtest/gtest.h>

// A text of the size of a long list: many small pieces, far more than the buffer first has room for.
TEST(Concat, joinsWhatIsAppended) {
    clsConcat builder;
    for (const char* const part : {"äöü€😊", "x"}) { // the second time, the earlier text is gone
        builder.ReInit();
        std::string expected;
        for (int i = 0; i < 20'000; ++i) {
            const std::string piece = i % 3 == 0 ? "" : part + std::to_string(i);
            builder.SConcat(piece);
            expected += piece;
        }
        EXPECT_TRUE(builder.GetString() == expected) << part;
    }
}
