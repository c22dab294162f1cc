#include "platform/registry.h"

#include <gtest/gtest.h>

#include "support/temporaryFolder.h"

namespace {

TEST(Registry, standInFileHoldsWhatItsLinesCan) {
    using enum platform::RegistryRoot;
    const TemporaryFolder folder;
    const platform::Registry registry(folder.internal() + "\\");
    const std::string section = "[HKEY_LOCAL_MACHINE\\Software\\X]\n";
    folder.write("registry.ini", section + "empty=\n");
    EXPECT_EQ(registry.readText(localMachine, "Software\\X", "empty"), std::nullopt);
    EXPECT_FALSE(registry.writeText(localMachine, "Software\\X", "name", "a\nb"));
    EXPECT_FALSE(registry.writeText(localMachine, "Software\\X", "@", "other"));
    EXPECT_TRUE(registry.writeText(localMachine, "Software\\X", "", "default"));
    EXPECT_EQ(folder.read("registry.ini"), section + "empty=\n@=\"default\"\n");
    EXPECT_FALSE(platform::Registry("").writeText(localMachine, "Software\\X", "name", "x")) << "no folder";
}

} // namespace
