#include "platform/properties.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "platform/win32/wide.h"
#include "support/temporaryFolder.h"

namespace platform {
namespace {

using Kind = Properties::Kind;

TEST(Properties, areThoseOfTheEntryItself) {
    const TemporaryFolder folder;
    struct Case {
        const char* name;
        DWORD attributes;
        Kind kind;
        const char* mode;
    };
    constexpr DWORD both = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN;
    for (const Case& expected : {Case{"plain", FILE_ATTRIBUTE_ARCHIVE, Kind::file, ""},
                                 Case{"ü", both, Kind::file, "read-only, hidden"},
                                 Case{"sub", FILE_ATTRIBUTE_NORMAL, Kind::folder, ""},
                                 Case{"sub\\", FILE_ATTRIBUTE_HIDDEN, Kind::folder, "hidden"}}) {
        SCOPED_TRACE(expected.name);
        const std::string path = folder.internal(expected.name);
        if (expected.kind == Kind::file) {
            folder.write(expected.name, std::string(5000, 'x'));
        } else {
            folder.write("sub/x", "");
        }
        ASSERT_NE(::SetFileAttributesW(widePath(path).c_str(), expected.attributes), 0);
        const auto properties = propertiesOf(path);
        ASSERT_TRUE(properties);
        EXPECT_EQ(properties->kind, expected.kind);
        EXPECT_EQ(properties->mode, expected.mode);
        EXPECT_EQ(properties->isFolder, expected.kind == Kind::folder);
        if (expected.kind == Kind::file) {
            EXPECT_EQ(properties->size, 5000);
            EXPECT_GE(properties->sizeOnDisk, 5000);
        }
    }
    EXPECT_FALSE(propertiesOf(folder.internal("none")));
}

} // namespace
} // namespace platform
