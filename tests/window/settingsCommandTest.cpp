#include "window/settingsCommand.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>

#include "window/windowFixture.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class SettingsCommandTest : public MainWindow {
protected:
    // Clicks on the check boxes of these keys, and OK.
    void change(const std::vector<const char*>& flags) {
        dialogs.changeSettings = [flags](frmSettings& form) {
            for (const char* flag : flags) {
                form.findChild<QCheckBox*>(QString::fromUtf8(flag))->click();
            }
            form.accept();
        };
        command("Settings");
    }
    [[nodiscard]] bool isMarked(const char* key) const {
        return window->findChild<QAction*>(QString::fromUtf8(key))->isChecked();
    }
};

TEST_F(SettingsCommandTest, whatTakesEffectAtOnceDoes) {
    openOnTree();
    dialogs.answer = false;
    ASSERT_TRUE(isMarked("ShowOwners"));
    change({"getOwnerInfo", "readOnly", "fullFileSizes", "caseSensitiveExtensions"});
    EXPECT_FALSE(window->settings().getOwnerInfo());
    EXPECT_FALSE(isMarked("ShowOwners"));
    EXPECT_TRUE(window->settings().readOnly());
    EXPECT_TRUE(window->settings().fullFileSizes());
    EXPECT_TRUE(window->settings().caseSensitiveExt());
    EXPECT_THAT(dialogs.questions, IsEmpty());

    change({"exact"});
    EXPECT_TRUE(window->settings().exact());
    EXPECT_TRUE(isMarked("ExactFigures"));
    EXPECT_THAT(dialogs.questions, ElementsAre(HasSubstr("Scan again now?"))) << "as the menu does";
    EXPECT_THAT(settingsFile(), HasSubstr("exact=1"));
    change({"exact"});
    EXPECT_FALSE(isMarked("ExactFigures"));
    EXPECT_THAT(settingsFile(), HasSubstr("exact=0"));
}

TEST_F(SettingsCommandTest, listsAreSortedAnewAndHeadersAndDialogAgree) {
    openOnTree();
    tabs().setCurrentIndex(1);
    const auto names = [this] {
        std::vector<std::string> result;
        for (const std::string& row : rows("lvwF")) {
            result.push_back(row.substr(0, row.find('|')));
        }
        return result;
    };
    ASSERT_THAT(names(), ElementsAre("a", "b", "own.txt")) << "the largest first";
    clickHeader("lvwF", 1);
    ASSERT_THAT(names(), ElementsAre("own.txt", "b", "a"));
    dialogs.changeSettings = [](frmSettings& form) {
        auto* const column = form.findChild<QComboBox*>(QStringLiteral("DetailListSortColumn"));
        auto* const order = form.findChild<QComboBox*>(QStringLiteral("DetailListSortOrder"));
        EXPECT_EQ(column->currentText(), QStringLiteral("Size"));
        EXPECT_EQ(order->currentIndex(), 0) << "as the header was clicked";
        column->setCurrentText(QStringLiteral("Name"));
        order->setCurrentIndex(1);
        form.accept();
    };
    command("Settings");
    EXPECT_THAT(names(), ElementsAre("own.txt", "b", "a"));
    clickHeader("lvwF", 0);
    ASSERT_THAT(names(), ElementsAre("a", "b", "own.txt"));
    window->close();
    EXPECT_THAT(settingsFile(), HasSubstr("DetailListSortColumn=1\r\nDetailListSortOrder=0"));
}

// The window writes its own state when it closes.
TEST_F(SettingsCommandTest, dialogAndWindowDoNotUndoEachOther) {
    open();
    command("ShowOwners");
    dialogs.changeSettings = [](frmSettings& form) {
        EXPECT_FALSE(form.findChild<QCheckBox*>(QStringLiteral("getOwnerInfo"))->isChecked());
        form.accept();
    };
    command("Settings");
    EXPECT_THAT(settingsFile(), Not(HasSubstr("getOwnerInfo"))) << "it was not changed in the dialog";
    change({"getOwnerInfo"});
    EXPECT_TRUE(isMarked("ShowOwners"));
    EXPECT_THAT(settingsFile(), HasSubstr("getOwnerInfo=1"));
    command("ShowOwners");
    window->close();
    EXPECT_THAT(settingsFile(), HasSubstr("getOwnerInfo=0"));
}

TEST_F(SettingsCommandTest, itsKeyWorksExceptDuringAScan) {
    makeTree();
    open();
    int opened = 0;
    dialogs.changeSettings = [&](frmSettings&) { ++opened; };
    const auto press = [this] {
        window->activateWindow(); // without a desktop, nobody else does after a dialog
        ASSERT_TRUE(QTest::qWaitFor([this] { return window->isActiveWindow(); }));
        QTest::keyClick(window.get(), Qt::Key_Comma, Qt::ControlModifier);
    };
    press();
    EXPECT_EQ(opened, 1);
    bool scanned = false;
    duringScan([&] {
        scanned = true;
        press();
    });
    window->openPath(tree.typed());
    EXPECT_TRUE(scanned);
    EXPECT_EQ(opened, 1);
    press();
    EXPECT_EQ(opened, 2);
}

} // namespace
