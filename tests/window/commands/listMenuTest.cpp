#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <array>

#include "platform/paths.h"
#include "support/recordingInterface.h"
#include "support/zipPart.h"
#include "widgets/listView.h"
#include "window/commands/listMenu.h"
#include "window/commands/qtClipboard.h"
#include "window/windowFixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ListCommands : public MainWindow {
protected:
    ListCommands() { QGuiApplication::clipboard()->setText(QStringLiteral("as before")); }

    static std::string clipboardText() { return QGuiApplication::clipboard()->text().toStdString(); }
    void choose(int index) { control<PopMenu>("cPLvw").action(index).trigger(); }

    // The window's lists, exported to a file of the test without opening it.
    std::string exported() {
        ListMenu menu({control<FolderTree>("tvw"), *window->findChild<ViewTabs*>(), window->settings(),
                       window->database(), people, clipboard,
                       [this] { return application.internal("list.xlsx"); }});
        menu.cPLvw_Click(ListMenu::exportItem);
        return zipPart(application.read("list.xlsx"), "xl/worksheets/sheet1.xml");
    }

    RecordingInterface people;
    QtClipboard clipboard;
};

TEST_F(ListCommands, copyTheListOnShowAsItIsSorted) {
    open();
    tabs().setCurrentIndex(3);
    choose(ListMenu::exportItem);
    choose(ListMenu::copyItem);
    EXPECT_THAT(dialogs.messages, ElementsAre("The list is empty.", "The list is empty."));
    close();
    openOnTree();
    tabs().setCurrentIndex(0);
    choose(ListMenu::copyItem);
    EXPECT_EQ(clipboardText(), "as before") << "the chart is not a list";
    tabs().setCurrentIndex(2);
    choose(ListMenu::copyItem);
    EXPECT_EQ(clipboardText(), "Extension,Total Size,File Count\r\ntxt,260 bytes,3\r\nbin,2.9 Kb,1");
    clickHeader("lvwT", 0);
    choose(ListMenu::copyItem);
    EXPECT_EQ(clipboardText(), "Extension,Total Size,File Count\r\nbin,2.9 Kb,1\r\ntxt,260 bytes,3");

    tabs().setCurrentIndex(1);
    auto& list = control<ListView>("lvwF");
    list.setCurrentIndex(list.model()->index(1, 1)); // Qt's own copy would take this cell
    QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_THAT(clipboardText(), HasSubstr("Name,Size,Owner,Modified,Accessed\r\na,2.9 Kb,"));
    EXPECT_THAT(clipboardText(), HasSubstr("\r\nown.txt,50 bytes,"));
}

TEST_F(ListCommands, exportTheListOnShowUnderItsCaption) {
    openOnTree();
    exported();
    EXPECT_THAT(people.opened, IsEmpty()) << "the chart is not a list";
    constexpr std::array captions{"Details - ", "File Types - ", "Owners - "};
    constexpr std::array sums{"SUM(B4:B6)</f><v>3260<", "SUM(C4:C5)</f><v>4<", "SUM(C4)</f><v>4<"};
    for (int tab = 1; tab <= 3; ++tab) {
        tabs().setCurrentIndex(tab);
        const std::string sheet = exported();
        ASSERT_EQ(people.opened.size(), static_cast<std::size_t>(tab));
        const auto place = static_cast<std::size_t>(tab) - 1;
        EXPECT_THAT(sheet, HasSubstr("<t>" + std::string(captions.at(place)) + platform::displayPath(key()) +
                                     "</t>"));
        EXPECT_THAT(sheet, HasSubstr(sums.at(place)));
    }
    click("ROOT"); // the lists do not change
    EXPECT_THAT(exported(), HasSubstr("<t>Owners - ROOT</t>"));
    EXPECT_THAT(people.messages, IsEmpty());
}

TEST_F(ListCommands, areNotDisturbedByAScan) {
    makeTree();
    open();
    tabs().setCurrentIndex(1);
    std::ptrdiff_t shown = 0;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, window.get(), [&] {
        window->findChild<ViewTabs*>()->refreshActiveView();
        if (window->search().processing && shown == 0 && !rows("lvwF").empty()) {
            shown = std::ssize(rows("lvwF"));
            window->database().database().Execute("delete * from details"); // a refresh now shows nothing
            control<QTimer>("tmrChart").start(0);
            choose(ListMenu::copyItem);
        }
    });
    watch.start(0);
    window->openPath(tree.typed());
    ASSERT_GT(shown, 0);
    EXPECT_EQ(std::ranges::count(clipboardText(), '\n'), shown);
}

} // namespace
