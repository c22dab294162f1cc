#include <gtest/gtest.h>
#include <windows.h>

#include "platform/files.h"
#include "support/temporaryFolder.h"

namespace {

TEST(Replacement, keepsWhatTheFileIsMarkedAs) {
    const TemporaryFolder folder;
    folder.write("report", "old");
    const std::wstring file = (folder / "report").wstring();
    ASSERT_NE(::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM), 0);
    platform::replaceFile(folder.typed("report"), "new");
    EXPECT_EQ(folder.read("report"), "new");
    EXPECT_EQ(::GetFileAttributesW(file.c_str()) & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM),
              DWORD{FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM});
}

} // namespace
