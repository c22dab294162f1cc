#include "base/sha256.h"

#include <gtest/gtest.h>

namespace {

// Around the lengths at which the padding takes another block.
TEST(Sha256, givesThePublishedDigests) {
    const std::pair<std::string, const char*> cases[] = {
        {"", "47DEQpj8HBSa+/TImW+5JCeuQeRkm5NMpJWZG3hSuFU="},
        {"abc", "ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0="},
        {std::string(55, 'a'), "n0OQ+NMMLdkuyfCVtl4rmumwqSWlJY4kHJ8ekQ9zQxg="},
        {std::string(56, 'a'), "s1Q5pKxvCUi21vnjxq8PX1kM4g8b3nCQ73lwaG7Gc4o="},
        {std::string(64, 'a'), "/+BU/nrgy23GXDr5th1SCfQ5hR20PQulmXM33xVGaOs="},
        {std::string(1'000'000, 'a'), "zcduXJkU+5KBocfihNc+Z/GAmkiklyAOBG05zMcRLNA="},
    };
    for (const auto& [bytes, digest] : cases) {
        EXPECT_EQ(modHash::sha256Base64(bytes), digest) << bytes.size();
    }
}

} // namespace
