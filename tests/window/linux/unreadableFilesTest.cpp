#include <gmock/gmock.h>

#include <QLabel>

#include "support/linux/unprivileged.h"
#include "widgets/listView.h"
#include "window/windowFixture.h"

namespace fs = std::filesystem;

namespace {

TEST_F(MainWindow, listsFilesThatCouldNotBeReadUntilTheyAre) {
    tree.write("names/file", "x");
    application.write("settings.ini", "[APPLICATION_SETTINGS]\r\nexact=0\r\n");
    open();
    fs::permissions(tree / "names", fs::perms::owner_read | fs::perms::others_read);
    {
        const Unprivileged user;
        if (!user.is()) {
            GTEST_SKIP() << "the superuser cannot become another user here";
        }
        window->openPath(tree.typed());
    }
    fs::permissions(tree / "names", fs::perms::owner_all);
    EXPECT_EQ(control<QLabel>("lblMessage").text().toStdString(), "1 file could not be read.");
    control<QAbstractButton>("cmdMessage1").click();
    EXPECT_THAT(rows("lvwUnreadable"), testing::ElementsAre(tree.typed("names/file") + "|Permission denied"));
    QTest::keyClick(&control<ListView>("lvwUnreadable"), Qt::Key_Return);
    EXPECT_EQ(selected(), key("names"));
    pressF5();
    EXPECT_THAT(rows("lvwUnreadable"), testing::IsEmpty());
    EXPECT_FALSE(control<QFrame>("messageBar").isVisible());
}

} // namespace
