#include <gmock/gmock.h>

#include <QClipboard>
#include <QTextDocumentFragment>

#include "widgets/listView.h"
#include "window/commands/listMenu.h"
#include "window/windowFixture.h"

namespace {

// Names that the program stores in another form, and how the window shows them.
constexpr std::pair<std::string_view, std::string_view> names[]{
    {"Who?", "Who?"},
    {"a\"b", "a\"b"},
    {"a\\b", "a\\b"},
    {"<b>x", "<b>x"},
    {"two\nlines", "two␊lines"},
    {"bad\xFF", "bad\uFFFD"},
};

std::string tipOf(const QModelIndex& index) {
    const QString tip = index.data(Qt::ToolTipRole).toString();
    return (Qt::mightBeRichText(tip) ? QTextDocumentFragment::fromHtml(tip).toPlainText() : tip)
        .toStdString();
}

TEST_F(MainWindow, showsNamesAsTheyAreOnTheDisk) {
    std::size_t size = 1000;
    for (const auto& [name, shown] : names) {
        tree.write(std::string(name) + "/file." + std::string(name), std::string(size += 1000, 'x'));
    }
    open().openPath(tree.typed());
    const auto& model = dynamic_cast<const TreeModel&>(*control<FolderTree>("tvw").model());
    auto& list = control<ListView>("lvwF");
    auto& chart = control<FolderChart>("tc");
    for (const auto& [name, shown] : names) { // the smallest bar comes first
        const QModelIndex node = model.indexOf(key(name));
        EXPECT_EQ(node.data().toString().toStdString(), shown);
        EXPECT_EQ(tipOf(node), tree.typed(shown) + "/");
        QTest::keyClick(&chart, &name == &names[0].first ? Qt::Key_End : Qt::Key_Up);
        EXPECT_THAT(chart.accessibleDescription().toStdString(),
                    testing::StartsWith(std::string(shown) + ", "));
    }
    tabs().setCurrentIndex(1);
    control<PopMenu>("cPLvw").action(ListMenu::copyItem).trigger();
    const QString copied = QGuiApplication::clipboard()->text();
    for (const auto& [name, shown] : names) {
        const int row = list.rows().find(key(name));
        ASSERT_GE(row, 0) << shown;
        EXPECT_EQ(list.rows().index(row, 0).data().toString().toStdString(), shown);
        EXPECT_EQ(tipOf(list.rows().index(row, 0)), tree.typed(shown) + "/");
        EXPECT_TRUE(copied.contains(QString::fromUtf8(name.data(), std::ssize(name)))) << shown;
    }
    click(key(names[0].first));
    tabs().setCurrentIndex(2);
    EXPECT_THAT(rows("lvwT"), testing::ElementsAre("who?|2.0 Kb|1"));
}

TEST_F(MainWindow, goesToTheFolderOnShowByItsPathWhateverItsName) {
    for (const std::string odd : {"odd \xFF name", "line\nbreak", "a\\b\""}) {
        close();
        tree.write(odd + "/file", "x");
        open().openPath(tree.typed(odd));
        const std::string shown = selected();
        click("ROOT");
        QTest::keyClick(&pathBox(), Qt::Key_Return);
        EXPECT_EQ(selected(), shown);
        EXPECT_THAT(dialogs.messages, testing::IsEmpty());
    }
}

} // namespace
