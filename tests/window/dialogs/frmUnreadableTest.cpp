#include "window/dialogs/frmUnreadable.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QScrollBar>
#include <QTest>
#include <string>
#include <vector>

#include "scan/figureGaps.h"
#include "support/expected.h"

using testing::ElementsAre;

namespace {

using Kind = FigureGaps::Kind;

class UnreadableFolders : public testing::Test {
protected:
    UnreadableFolders() {
        QObject::connect(&form, &frmUnreadable::folderChosen, &form,
                         [this](const std::string& key) { chosen.push_back(key); });
    }

    static std::string key(const std::string& names) { return testSystem::root() + names; }
    void add(const std::string& names, Kind kind = Kind::unreadable, const char* reason = "denied") {
        gaps.add(key(names), kind, reason);
    }
    void open() {
        form.fill(gaps);
        form.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    }
    void addAndOpen() {
        add("b\\");
        add("a\\sub\\", Kind::unreadable, "not connected");
        add("a\\", Kind::otherVolume, "another volume");
        add("c\\");
        gaps.addFile(key("a\\"), "file", "not found");
        open();
    }
    [[nodiscard]] std::vector<std::string> paths() const {
        std::vector<std::string> result;
        for (int row = 0; row < list.rows().rowCount(); ++row) {
            result.push_back(list.rows().text(row, 0));
        }
        return result;
    }
    [[nodiscard]] std::string selected() const {
        return list.selectedRow() < 0 ? std::string() : list.rows().text(list.selectedRow(), 0);
    }
    void clickHeader(int column) {
        QTest::mouseClick(list.header()->viewport(), Qt::LeftButton, {},
                          {list.header()->sectionViewportPosition(column) + 20, 5});
    }
    static std::string clipboardText() { return QGuiApplication::clipboard()->text().toStdString(); }

    FigureGaps gaps;
    frmUnreadable form{nullptr};
    ListView& list = *form.findChild<ListView*>(QStringLiteral("lvwUnreadable"));
    QPushButton& cmdCopy = *form.findChild<QPushButton*>(QStringLiteral("cmdCopy"));
    QPushButton& cmdClose = *form.findChild<QPushButton*>(QStringLiteral("cmdClose"));
    std::vector<std::string> chosen;
};

TEST_F(UnreadableFolders, areCountedByKind) {
    struct Case {
        int unreadable;
        int files;
        int others;
        const char* text;
    };
    const Case cases[] = {
        {0, 0, 0, "All folders could be read."},
        {1, 0, 0, "1 folder could not be read."},
        {0, 1, 0, "1 file could not be read."},
        {0, 0, 1, "All folders could be read. 1 other volume is not included."},
        {12, 3, 2, "12 folders and 3 files could not be read. 2 other volumes are not included."},
    };
    for (const Case& each : cases) {
        gaps.clear();
        for (int i = 0; i < each.unreadable; ++i) {
            add("a" + std::to_string(i) + "\\");
        }
        for (int i = 0; i < each.files; ++i) {
            gaps.addFile(key("a\\"), "c" + std::to_string(i), "denied");
        }
        for (int i = 0; i < each.others; ++i) {
            add("b" + std::to_string(i) + "\\", Kind::otherVolume);
        }
        form.fill(gaps);
        EXPECT_EQ(form.findChild<QLabel*>(QStringLiteral("lblUnreadable"))->text().toStdString(), each.text);
        EXPECT_EQ(list.rows().rowCount(), each.unreadable + each.files + each.others);
    }
}

TEST_F(UnreadableFolders, areListedByKindAndPathUntilAHeaderIsClicked) {
    addAndOpen();
    EXPECT_THAT(paths(), ElementsAre(shown("a\\sub"), shown("b"), shown("c"), shown("a\\file"), shown("a")));
    clickHeader(0);
    EXPECT_THAT(paths(), ElementsAre(shown("a"), shown("a\\file"), shown("a\\sub"), shown("b"), shown("c")));
    clickHeader(1);
    EXPECT_THAT(paths(), ElementsAre(shown("a"), shown("b"), shown("c"), shown("a\\sub"), shown("a\\file")));
    clickHeader(1);
    EXPECT_EQ(paths().front(), shown("a\\file"));
    add("aa\\", Kind::unreadable, "zealously guarded");
    add("", Kind::unreadable, "a");
    form.fill(gaps);
    EXPECT_EQ(paths().front(), shown("aa")) << "still sorted by the reason, in descending order";
    EXPECT_EQ(paths().back(), shown("")) << "a root keeps its separator";
}

TEST_F(UnreadableFolders, areChosenByKeyAndMouse) {
    addAndOpen();
    EXPECT_EQ(QApplication::focusWidget(), &list);
    EXPECT_FALSE(cmdCopy.isDefault() || cmdClose.isDefault()) << "Enter is the list's";
    QTest::keyClick(&list, Qt::Key_Return);
    QTest::keyClick(&list, Qt::Key_End);
    QTest::keyClick(&list, Qt::Key_Enter, Qt::KeypadModifier);
    const QPoint second = list.visualRect(list.rows().index(1, 1)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, second);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, second);
    list.selectRow(list.rows().find(key("a\\file")));
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_THAT(chosen, ElementsAre(key("a\\sub\\"), key("a\\"), key("b\\"), key("a\\")))
        << "for a file, the folder that it is in";
    EXPECT_TRUE(form.isVisible());
}

TEST_F(UnreadableFolders, closeWithEscapeOrTheButton) {
    addAndOpen();
    QTest::keyClick(&list, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
        open();
        cmdClose.setFocus();
        QTest::keyClick(&cmdClose, key);
        EXPECT_FALSE(form.isVisible()) << key;
    }
}

TEST_F(UnreadableFolders, areCopiedAsTheyAreListed) {
    open();
    QGuiApplication::clipboard()->setText(QStringLiteral("as before"));
    EXPECT_FALSE(cmdCopy.isEnabled()) << "there is nothing to copy";
    QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboardText(), "as before");

    add("b, c\\", Kind::unreadable, "denied\tby \"them\"");
    add("a\\");
    form.fill(gaps);
    clickHeader(0);
    clickHeader(0);
    const std::string expected =
        "Path\tReason\r\n" + shown("b, c") + "\t\"denied\tby \"\"them\"\"\"\r\n" + shown("a") + "\tdenied";
    QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboardText(), expected);
    QGuiApplication::clipboard()->clear();
    QTest::keyClick(&list, Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([] { return !clipboardText().empty(); })) << "an access key takes a moment";
    EXPECT_EQ(clipboardText(), expected);
}

TEST_F(UnreadableFolders, keepTheirPlacesWhenTheyAreFilledAgain) {
    for (int i = 100; i < 300; ++i) {
        add(std::to_string(i) + "\\");
    }
    open();
    EXPECT_EQ(selected(), shown("100")) << "so that the keys have a row to start from";
    list.selectRow(150);
    QScrollBar& bar = *list.verticalScrollBar();
    bar.setValue(bar.maximum() / 3);
    const int scrolled = bar.value();

    add("050\\");
    form.fill(gaps);
    EXPECT_EQ(selected(), shown("250"));
    EXPECT_EQ(bar.value(), scrolled);
    gaps.forget(key("250\\"));
    form.fill(gaps);
    EXPECT_EQ(selected(), shown("251")) << "the one at its place";
    QApplication::processEvents();
    EXPECT_EQ(bar.value(), scrolled);
    gaps.clear();
    form.fill(gaps);
    EXPECT_EQ(selected(), "");
    add("x\\");
    form.fill(gaps);
    EXPECT_EQ(selected(), shown("x"));
}

TEST_F(UnreadableFolders, showLongPathsInTheRoomThereIsAndInTips) {
    add("b\\" + std::string(40000, 'x') + "\\", Kind::unreadable, "The path is too long");
    add("a\\" + std::string(300, 'x') + "\\<b>\\");
    open();
    EXPECT_FALSE(form.isModal());
    EXPECT_TRUE(list.fillsItsRoom());
    form.resize(form.width() + 200, form.height());
    QApplication::processEvents();
    EXPECT_TRUE(list.fillsItsRoom());
    EXPECT_TRUE(
        list.rows().index(0, 0).data(Qt::ToolTipRole).toString().contains(QStringLiteral("&lt;b&gt;")));
}

} // namespace
