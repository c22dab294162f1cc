#include "window/openWindow.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QTest>

#include "window/windowFixture.h"

namespace fs = std::filesystem;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OpenedWindow : public MainWindow {
protected:
    std::unique_ptr<frmMain> opened() { return opened(tree.typed()); }
    std::unique_ptr<frmMain> opened(const std::string& path, bool readOnly = false) {
        dialogs.messages.clear();
        WindowOptions options;
        options.readOnly = readOnly;
        options.applicationFolder = application.typed();
        options.path = path;
        return openWindow(options, dialogs);
    }
};

TEST_F(OpenedWindow, scansThePathOfTheCommandLine) {
    makeTree();
    window = opened();
    ASSERT_TRUE(window);
    EXPECT_TRUE(window->isVisible());
    QApplication::processEvents();
    EXPECT_EQ(selected(), key());
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

TEST_F(OpenedWindow, staysReadOnlyIfTheCommandLineSaysSo) {
    makeTree();
    window = opened(tree.typed(), true);
    ASSERT_TRUE(window);
    window->settings().setReadOnly(false);
    EXPECT_TRUE(window->settings().readOnly());
    window->close();
    EXPECT_EQ(settingsFile().find("readOnly"), std::string::npos) << "it holds for this run only";
}

TEST_F(OpenedWindow, loadsTheSavedScanOfTheCommandLine) {
    openOnTree();
    dialogs.file = tree.typed("saved.mdb");
    command("ExportMDB");
    close();
    fs::create_symlink("saved.mdb", tree / "link");
    ASSERT_EQ(::mkfifo((tree / "pipe.mdb").c_str(), S_IRUSR | S_IWUSR), 0);
    const struct {
        std::string path;
        const char* items;
        const char* message;
    } cases[] = {
        {tree.typed("saved.mdb"), "8 items.", ""}, {tree.typed("link"), "8 items.", ""},
        {tree.typed("own.txt"), "", "own.txt"},    {tree.typed("pipe.mdb"), "", "Directory not found."},
        {"/dev/zero", "", "Directory not found."},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.path);
        window = opened(each.path);
        ASSERT_TRUE(window);
        QApplication::processEvents();
        EXPECT_EQ(panel(1), each.items);
        EXPECT_EQ(dialogs.messages.size(), *each.message == '\0' ? 0U : 1U);
        if (!dialogs.messages.empty()) {
            EXPECT_THAT(dialogs.messages[0], testing::HasSubstr(each.message));
        }
        close();
    }
}

TEST_F(OpenedWindow, usesNoApplicationFolderThatOthersCanWriteTo) {
    const std::string folder = application.typed() + "/";
    const fs::perms before = fs::status(application.path()).permissions();
    const fs::perms all = fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_write;
    fs::permissions(application.path(), fs::perms::all);
    EXPECT_FALSE(opened());
    EXPECT_THAT(dialogs.messages, ElementsAre(folder + " is not used, because everybody can write to it"));
    fs::permissions(application.path(), before);
    fs::permissions(application / "settings.ini", all);
    EXPECT_FALSE(opened());
    EXPECT_THAT(dialogs.messages,
                ElementsAre(folder + "settings.ini is not used, because everybody can write to it"));
    EXPECT_FALSE(fs::exists(application / "main.dat")) << "nothing was begun";
}

TEST_F(OpenedWindow, usesNoApplicationFolderOfSomeoneElse) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only the superuser can make files of others";
    }
    constexpr uid_t them = 65534;
    ASSERT_EQ(::chown((application / "settings.ini").c_str(), them, them), 0);
    EXPECT_FALSE(opened());
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_THAT(dialogs.messages[0], testing::HasSubstr("settings.ini is not used, because it belongs to "));
}

} // namespace
