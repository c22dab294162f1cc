#include <gmock/gmock.h>

#include <QAction>
#include <QContextMenuEvent>
#include <QShortcut>
#include <QTabBar>
#include <QTest>
#include <QTextBrowser>
#include <map>

#include "window/dialogs/frmProperties.h"
#include "window/help/frmHelp.h"
#include "window/windowFixture.h"

namespace {

using testing::SizeIs;

class KeysInWindow : public MainWindow {
protected:
    // The page of the help window below this parent, which is then closed; empty if none is on show.
    static std::string helpPage(const QWidget* parent = nullptr) {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (qobject_cast<frmHelp*>(top) != nullptr && top->isVisible() && top->parent() == parent) {
                top->close();
                return top->findChild<QTextBrowser*>()->source().fileName().toStdString();
            }
        }
        return {};
    }
    std::vector<const char*> places{"tvw", "txtPath", "cmdBack", "XTab", "tc", "cmdGo"};
};

TEST_F(KeysInWindow, thatAMenuShowsWorkWhereverTheFocusIs) {
    openActive();
    window->openPath(tree.typed());
    for (const char* place : places) {
        SCOPED_TRACE(place);
        auto& focus = control<QWidget>(place);
        focus.setFocus();
        const std::size_t requests = dialogs.requests.size();
        QTest::keyClick(&focus, Qt::Key_O, Qt::ControlModifier);
        EXPECT_EQ(dialogs.requests.size(), requests + 1);
        QTest::keyClick(&focus, Qt::Key_2, Qt::ControlModifier);
        EXPECT_EQ(control<FolderChart>("tc").chartStyle(), ChartStyle::pie);
        EXPECT_TRUE(control<QAction>("ViewPieChart").isChecked());
        QTest::keyClick(&focus, Qt::Key_1, Qt::ControlModifier);
        EXPECT_EQ(control<FolderChart>("tc").chartStyle(), ChartStyle::bar);
        bool isCancelled = false;
        duringScan([&] {
            QTest::keyClick(&focus, Qt::Key_Escape);
            isCancelled = window->search().CancelScan;
        });
        pressF5(place);
        EXPECT_TRUE(isCancelled);
    }
    bool isOffered = true;
    duringScan([&] {
        const std::size_t requests = dialogs.requests.size();
        QTest::keyClick(window->focusWidget(), Qt::Key_O, Qt::ControlModifier);
        isOffered = dialogs.requests.size() > requests;
    });
    pressF5();
    EXPECT_FALSE(isOffered) << "no scan is loaded while another runs";
    QTest::keyClick(window->focusWidget(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(window->isVisible());
}

// Qt runs neither of two that have the same keys.
TEST_F(KeysInWindow, areGivenOnce) {
    openActive();
    std::map<std::string, int> given;
    for (const QShortcut* key : window->findChildren<QShortcut*>()) {
        if (key->context() != Qt::WidgetShortcut) {
            ++given[key->key().toString().toStdString()];
        }
    }
    for (const QAction* action : window->findChildren<QAction*>()) {
        for (const QKeySequence& keys : action->shortcuts()) {
            ++given[keys.toString().toStdString()];
        }
    }
    for (const auto& [keys, count] : given) {
        EXPECT_EQ(count, 1) << keys;
    }
    EXPECT_EQ(given.count("Ctrl+O") + given.count("Ctrl+Q") + given.count("Esc"), 3U);
    EXPECT_EQ(given.count("F1") + given.count("Ctrl+C") + given.count("F5"), 0U)
        << "they are handled otherwise";
}

TEST_F(KeysInWindow, areForTheTabThatWasClicked) {
    openActive();
    window->openPath(tree.typed());
    const std::pair<int, const char*> cases[]{{1, "lvwF"}, {2, "lvwT"}, {4, "lvwFound"}, {0, "tc"}};
    for (const auto& [tab, view] : cases) {
        control<QWidget>("tvw").setFocus();
        QTabBar& bar = *tabs().tabBar();
        QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(tab).center());
        QTest::qWait(0);
        EXPECT_EQ(window->focusWidget(), &control<QWidget>(view));
    }
}

TEST_F(KeysInWindow, f1ShowsThePageForWhatHasTheFocus) {
    openActive();
    const struct {
        const char* focus;
        int tab;
        const char* page;
    } cases[] = {
        {"tvw", 0, "scanning.html"}, {"txtPath", 0, "scanning.html"}, {"tc", 0, "chart.html"},
        {"lvwF", 1, "files.html"},   {"lvwT", 2, "types.html"},       {"lvwU", 3, "owners.html"},
        {"XTab", 3, "owners.html"},  {"cmdBack", 1, "files.html"},
    };
    for (const auto& each : cases) {
        tabs().setCurrentIndex(each.tab);
        control<QWidget>(each.focus).setFocus();
        QTest::keyClick(&control<QWidget>(each.focus), Qt::Key_F1);
        EXPECT_EQ(helpPage(), each.page) << each.focus;
    }
    QTest::keyClick(&control<QWidget>("tvw"), Qt::Key_F1, Qt::ShiftModifier);
    EXPECT_EQ(helpPage(), "");
    command("UnreadableFolders");
    auto* const unreadable = window->findChild<QDialog*>(QStringLiteral("frmUnreadable"));
    QTest::keyClick(unreadable->focusWidget(), Qt::Key_F1);
    EXPECT_EQ(helpPage(), "trouble.html");
}

// A modal box keeps other windows from taking input, but for its own.
TEST_F(KeysInWindow, f1InAModalBoxOpensAHelpWindowOfItsOwn) {
    openActive();
    std::string page;
    bool isBlocked = true;
    dialogs.setExportOptions = [&](frmExport& box) {
        QTest::keyClick(box.focusWidget(), Qt::Key_F1);
        EXPECT_EQ(helpPage(), "");
        QTest::keyClick(box.focusWidget(), Qt::Key_F1);
        EXPECT_THAT(box.findChildren<frmHelp*>(), SizeIs(1));
        if (auto* const help = box.findChild<frmHelp*>()) {
            EXPECT_TRUE(QTest::qWaitForWindowActive(help));
            QTest::keyClick(help, Qt::Key_Escape);
            isBlocked = help->isVisible();
            help->show();
            page = helpPage(&box);
        }
        box.findChild<QPushButton*>(QStringLiteral("cmdCancel"))->click();
    };
    window->openPath(tree.typed());
    dialogs.file = application.typed("x.html");
    command("ExportHTML");
    EXPECT_EQ(page, "exports.html");
    EXPECT_FALSE(isBlocked);
    const frmProperties properties({{"Path", "x"}}, window.get());
    QTest::keyClick(properties.focusWidget(), Qt::Key_F1);
    EXPECT_EQ(helpPage(), "files.html");
}

// Where Tab leads to.
class TabOrder : public MainWindow {
protected:
    // The object names of all that takes the focus, from this control back to it.
    static std::string walk(QWidget& first, bool isForward = true) {
        first.setFocus();
        std::string names;
        QWidget* focus = &first;
        for (int steps = 0; steps < 40; ++steps) {
            names += (names.empty() ? "" : " ") + focus->objectName().toStdString();
            QTest::keyClick(focus, isForward ? Qt::Key_Tab : Qt::Key_Backtab);
            focus = first.window()->focusWidget();
            if (focus == nullptr || focus == &first) {
                return names;
            }
        }
        return names + " ...";
    }
    std::string walk(bool isForward = true) { return walk(control<FolderTree>("tvw"), isForward); }
};

TEST_F(TabOrder, leadsThroughTheWindowAsItIsRead) {
    openActive();
    const std::string message = "cmdMessage1 cmdMessage2 cmdCloseMessage ";
    EXPECT_EQ(walk(), "tvw " + message + "qt_tabwidget_tabbar tc txtPath cmdGo") << "no folder is shown";
    window->openPath(tree.typed("a"));
    window->openPath(tree.typed("b"));
    command("GoBack");
    int crumbs = 0;
    std::string header;
    for (const QWidget* crumb : window->findChildren<QWidget*>(QStringLiteral("cmdCrumb"))) {
        if (crumb->isVisible()) {
            header += "cmdCrumb ";
            ++crumbs;
        }
    }
    header += "cmdCrumbLast ";
    EXPECT_GE(crumbs, 1);
    const char* const views[] = {"tc", "lvwF", "lvwT", "lvwU"};
    for (int tab = 0; tab < 4; ++tab) {
        tabs().setCurrentIndex(tab);
        EXPECT_EQ(walk(), "tvw " + message + header + "qt_tabwidget_tabbar " + views[tab] +
                              " cmdForward cmdUp txtPath cmdGo");
    }
    command("GoForward");
    EXPECT_EQ(walk(false), "tvw cmdGo txtPath cmdUp cmdBack lvwU qt_tabwidget_tabbar cmdCrumbLast" +
                               QStringLiteral(" cmdCrumb").repeated(crumbs).toStdString() +
                               " cmdCloseMessage cmdMessage2 cmdMessage1");
    control<MessageBar>("messageBar").closeShown();
    window->openPath(tree.typed("a/deep"));
    window->resize(480, 400);
    QApplication::processEvents();
    EXPECT_THAT(walk(), testing::StartsWith("tvw cmdCrumb"));
    QTest::keyClick(&control<QLineEdit>("txtPath"), Qt::Key_L, Qt::ControlModifier);
    EXPECT_TRUE(pathBox().hasFocus());
}

TEST_F(TabOrder, leadsThroughTheBoxes) {
    openActive();
    command("UnreadableFolders");
    auto& unreadable = control<QDialog>("frmUnreadable");
    auto& list = *unreadable.findChild<QWidget*>(QStringLiteral("lvwUnreadable"));
    unreadable.activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &unreadable; }));
    EXPECT_EQ(unreadable.focusWidget(), &list);
    unreadable.findChild<QWidget*>(QStringLiteral("cmdCopy"))->setEnabled(true);
    EXPECT_EQ(walk(list), "lvwUnreadable cmdCopy cmdClose");
    QTest::keyClick(&list, Qt::Key_Escape);
    EXPECT_FALSE(unreadable.isVisible());
}

// Each has the key and its other form.
TEST_F(KeysInWindow, openTheContextMenuOfWhatIsSelected) {
    openActive();
    window->openPath(tree.typed());
    const std::pair<const char*, int> cases[] = {{"tvw", 0}, {"tc", 0}, {"lvwF", 1}, {"lvwT", 2}};
    for (const auto& [name, tab] : cases) {
        SCOPED_TRACE(name);
        tabs().setCurrentIndex(tab);
        auto& focus = control<QWidget>(name);
        focus.setFocus();
        if (tab == 0) {
            QTest::keyClick(&focus, Qt::Key_Up); // to a bar
            focus.window()->findChild<FolderTree*>()->selectNode(key());
        }
        for (const bool isMenuKey : {false, true}) {
            if (isMenuKey) {
                QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {}); // what the system makes of it
                QApplication::sendEvent(&focus, &event);
            } else {
                QTest::keyClick(&focus, Qt::Key_F10, Qt::ShiftModifier);
            }
            QWidget* const menu = QApplication::activePopupWidget();
            EXPECT_NE(menu, nullptr) << isMenuKey;
            if (menu != nullptr) {
                QTest::keyClick(menu, Qt::Key_Escape);
            }
        }
    }
}

} // namespace
