#include "window/folderNavigation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTest>

#include "support/testSystem.h"
#include "tree/nodeKeys.h"
#include "window/windowFixture.h"

namespace {

using testing::IsEmpty;

class NavigationInWindow : public MainWindow {
protected:
    void show(const char* name) { window->openPath(tree.typed(name)); }
    // Which of back, forward and up lead anywhere, as the buttons and as the menu say.
    std::string ways() {
        std::string result;
        for (const std::string name : {"Back", "Forward", "Up"}) {
            const bool isEnabled = control<QToolButton>(("cmd" + name).c_str()).isEnabled();
            EXPECT_EQ(control<QAction>(("Go" + name).c_str()).isEnabled(), isEnabled);
            result += isEnabled ? name[0] : '-';
        }
        return result;
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(window->focusWidget(), key, modifiers);
    }
};

TEST_F(NavigationInWindow, goesTheSameWayByEveryMeans) {
    openActive();
    auto& list = control<FolderTree>("tvw");
    const struct {
        const char* name;
        std::function<void()> back;
        std::function<void()> forward;
        std::function<void()> up;
    } means[] = {
        {"buttons", [&] { control<QToolButton>("cmdBack").click(); },
         [&] { control<QToolButton>("cmdForward").click(); }, [&] { control<QToolButton>("cmdUp").click(); }},
        {"menu", [&] { command("GoBack"); }, [&] { command("GoForward"); }, [&] { command("GoUp"); }},
        {"keys", [&] { press(Qt::Key_Left, Qt::AltModifier); },
         [&] { press(Qt::Key_Right, Qt::AltModifier); }, [&] { press(Qt::Key_Up, Qt::AltModifier); }},
        {"mouse and Backspace",
         [&] { QTest::mouseClick(list.viewport(), Qt::BackButton, {}, QPoint(30, 10)); },
         [&] { QTest::mouseClick(list.viewport(), Qt::ForwardButton, {}, QPoint(30, 10)); },
         [&] { press(Qt::Key_Backspace); }},
    };
    for (const auto& each : means) {
        SCOPED_TRACE(each.name);
        list.setFocus();
        show("b");
        show("a/deep");
        each.back();
        EXPECT_EQ(selected(), key("b"));
        each.forward();
        EXPECT_EQ(selected(), key("a/deep"));
        EXPECT_EQ(ways(), "B-U");
        each.up();
        EXPECT_EQ(selected(), key("a"));
        each.back();
        EXPECT_EQ(selected(), key("a/deep"));
        EXPECT_EQ(ways(), "BFU");
        show("b");
        EXPECT_EQ(ways(), "B-U") << "another folder cuts off what was ahead";
    }
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

TEST_F(NavigationInWindow, leadsNowhereAtFirstAndAfterALoad) {
    openActive();
    EXPECT_EQ(ways(), "---");
    press(Qt::Key_Backspace);
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_THAT(bars(), IsEmpty());
    show("a");
    show("a");
    EXPECT_EQ(ways(), "--U");
    show("b");
    dialogs.file = application.typed("saved.mdb");
    command("ExportMDB");
    command("LoadMDB");
    EXPECT_EQ(ways(), "--U") << "up from the folder that is selected in the saved tree";
    EXPECT_EQ(selected(), key("b"));
}

TEST_F(NavigationInWindow, skipsFoldersThatAreGoneAndEndsAtTheRoot) {
    openActive();
    for (const char* name : {"b", "a", "a/deep"}) {
        show(name);
    }
    testSystem::removeAll(tree / "a");
    window->openPath(tree.typed());
    control<QToolButton>("cmdBack").click();
    EXPECT_EQ(selected(), key("b"));
    EXPECT_EQ(ways(), "-FU");
    std::string folder = key("b");
    for (int steps = 0; !folder.empty(); ++steps) {
        ASSERT_LT(steps, 20);
        const std::string above = modNodeKeys::above(folder);
        EXPECT_LT(above.size(), folder.size());
        folder = above;
    }
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

TEST_F(NavigationInWindow, backspaceDeletesWhereTextIsTyped) {
    openActive();
    show("a");
    pathBox().setFocus();
    pathBox().setText(QStringLiteral("/x"));
    press(Qt::Key_Backspace);
    EXPECT_EQ(pathBox().text(), QStringLiteral("/"));
    press(Qt::Key_Backspace);
    press(Qt::Key_Backspace);
    EXPECT_EQ(pathBox().text(), QString());
    EXPECT_EQ(selected(), key("a"));
}

TEST_F(NavigationInWindow, duringAScanCancelsItAsAClickDoes) {
    openActive();
    show("b");
    duringScan([&] { control<QToolButton>("cmdBack").click(); });
    show("a");
    EXPECT_EQ(selected(), key("b"));
    EXPECT_EQ(ways(), "-FU");
    control<QToolButton>("cmdForward").click();
    EXPECT_EQ(selected(), key("a"));
    EXPECT_EQ(ways(), "B-U");
}

} // namespace
