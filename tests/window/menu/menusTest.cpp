#include <gmock/gmock.h>

#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <array>
#include <optional>
#include <stdexcept>
#include <tuple>

#include "base/clsSettings.h"
#include "base/errorLog.h"
#include "platform/runtimeError.h"
#include "support/recordingInterface.h"
#include "widgets/systemIcons.h"
#include "window/commands/menuCommands.h"
#include "window/dialogs/frmAbout.h"
#include "window/menu/menuIcons.h"
#include "window/menu/menuToolbar.h"
#include "window/menu/menus.h"
#include "window/menu/popMenu.h"
#include "window/menu/rebar.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

// The menus in a window, with commands that record their calls.
class Menus : public testing::Test {
protected:
    Menus() { modMenuIcons::addMenuImages(imlMenu); }

    void create(bool owners = true) {
        settings.setGetOwnerInfo(owners);
        modMenus::createMenus(cP, cPLvw, cPItem, window, imlMenu, settings);
        modMenus::setRebar(window, cRebar, tbrMenu, cP);
        commands.emplace(cP, settings, people, carriers);
        QObject::connect(&cP, &PopMenu::click, &cP, [this](int index) { commands->cP_Click(index); });
    }

    [[nodiscard]] int indexOf(const char* key) const {
        for (int index = 1; index <= cP.count(); ++index) {
            if (cP.itemKey(index) == QString::fromUtf8(key)) {
                return index;
            }
        }
        throw std::out_of_range(key);
    }

    [[nodiscard]] std::function<void()> noting(const char* text) {
        return [this, text] { calls.emplace_back(text); };
    }

    [[nodiscard]] MenuTargets targets() {
        return {.exportReport =
                    [this](modExport::ReportFormat format) {
                        calls.emplace_back(modExport::fileExtension(format));
                    },
                .exportOverview = noting("overview"),
                .exportDatabase = noting("database"),
                .exportChart = [this](bool entire) { calls.emplace_back(entire ? "entire" : "visible"); },
                .loadDatabase = noting("load"),
                .compareScan = noting("compare"),
                .closeComparison = noting("close comparison"),
                .history = noting("history"),
                .loadFromServer = noting("server"),
                .settings = noting("settings"),
                .exitApp = noting("exit"),
                .refreshScreen = noting("refresh"),
                .cancelScan = noting("cancel"),
                .barStyle = noting("bar"),
                .pieStyle = noting("pie"),
                .treemap = noting("treemap"),
                .chartOfChanges = noting("changes"),
                .updateGraph = noting("graph"),
                .exactFigures = noting("exact"),
                .sizeOnDisk = noting("disk"),
                .unreadableFolders = noting("unreadable"),
                .goUp = noting("up"),
                .goBack = noting("back"),
                .goForward = noting("forward"),
                .treeSizes = noting("sizes"),
                .filterList = noting("filter"),
                .runOnItem =
                    [this](std::string_view key) {
                        const bool isItems = key.starts_with("Item");
                        if (isItems) {
                            calls.emplace_back(key);
                        }
                        return isItems;
                    },
                .showAbout = noting("about"),
                .showHelp = noting("help")};
    }

    QMainWindow window;
    ImageList imlMenu;
    clsSettings settings;
    RecordingInterface people;
    std::vector<std::string> calls;
    PopMenu cP;
    PopMenu cPLvw;
    PopMenu cPItem;
    Rebar cRebar;
    MenuToolbar tbrMenu;
    MenuTargets carriers = targets(); // tests change them before the menus are created
    std::optional<MenuCommands> commands;
};

TEST_F(Menus, everyItemIsInAMenuAndHasACommand) {
    create();
    for (int index = 1; index <= cP.count(); ++index) {
        QAction& item = cP.action(index);
        const int parent = cP.parentIndex(index);
        const QWidget& menu = parent == PopMenu::topLevel ? static_cast<QWidget&>(tbrMenu)
                                                          : static_cast<QWidget&>(*cP.action(parent).menu());
        EXPECT_TRUE(menu.actions().contains(&item)) << item.text().toStdString();
        if (!item.isSeparator() && item.menu() == nullptr) {
            item.trigger();
            EXPECT_THAT(people.messages, testing::IsEmpty());
        }
    }
}

TEST_F(Menus, disablingWhatNeedsTheRowsLeavesTheRest) {
    create();
    modMenus::setRowCommandsEnabled(cP, false);
    QStringList enabled;
    for (int index = 1; index <= cP.count(); ++index) {
        if (cP.isEnabled(index) && !cP.itemKey(index).isEmpty() && !cP.action(index).isSeparator()) {
            enabled += cP.itemKey(index);
        }
    }
    EXPECT_EQ(enabled.join(u' '),
              QStringLiteral(
                  "CloseComparison History ExitApp Refresh CancelScan ViewBarChart ViewPieChart ShowOwners "
                  "UnreadableFolders "
                  "GoUp GoBack GoForward TreeSizes ViewTreemap FilterList SizeOnDisk ViewChanges Item "
                  "ItemOpen ItemShow "
                  "ItemCopyPath ItemProperties "
                  "ItemScanAgain ItemTrash ItemExclude HelpContents HelpAbout"));
}

TEST_F(Menus, itemsGiveTheirOwnCommands) {
    create();
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"ExportHTML", {".html"}},
        {"ExportMDB", {"database"}},
        {"ExportText", {".csv"}},
        {"ExportXML", {".xml"}},
        {"ExportExcel", {".xlsx"}},
        {"ExportOverview", {"overview"}},
        {"ExportChartEntire", {"entire"}},
        {"LoadMDB", {"load"}},
        {"ExportChartVisible", {"visible"}},
        {"CompareScan", {"compare"}},
        {"CloseComparison", {"close comparison"}},
        {"History", {"history"}},
        {"LoadServer", {"server"}},
        {"Settings", {"settings"}},
        {"ExitApp", {"exit"}},
        {"Refresh", {"refresh"}},
        {"CancelScan", {"cancel"}},
        {"HelpContents", {"help"}},
        {"ViewBarChart", {"bar", "graph"}},
        {"ViewPieChart", {"pie", "graph"}},
        {"ViewTreemap", {"treemap", "graph"}},
        {"ViewChanges", {"changes", "graph"}},
        {"ExactFigures", {"exact"}},
        {"UnreadableFolders", {"unreadable"}},
        {"GoUp", {"up"}},
        {"GoBack", {"back"}},
        {"GoForward", {"forward"}},
        {"TreeSizes", {"sizes"}},
        {"FilterList", {"filter"}},
        {"SizeOnDisk", {"disk"}},
        {"HelpAbout", {"about"}},
    };
    for (const auto& [key, expected] : cases) {
        calls.clear();
        cP.action(indexOf(key)).trigger();
        EXPECT_EQ(calls, expected) << key;
    }
}

TEST_F(Menus, itemsWithoutACommandSayTheirNumberTwice) {
    create();
    commands->cP_Click(2);
    commands->cP_Click(indexOf("Spacer0"));
    EXPECT_THAT(people.messages, ElementsAre("Unassigned item click [cp_Click(2)] Export", "2 Clicked.",
                                             "Unassigned item click [cp_Click(12)] Spacer0", "12 Clicked."));
}

// Two items of File have a fixed caption without one, and its exports share one.
TEST_F(Menus, itemsHaveMnemonicsOfTheirOwnInEachMenu) {
    create();
    const auto check = [](const QList<QAction*>& items) {
        QString taken;
        for (const QAction* item : items) {
            const qsizetype mark = item->text().indexOf(u'&');
            const std::string text = item->text().toStdString();
            if (item->isSeparator() || item->objectName() == QStringLiteral("LoadMDB") ||
                item->objectName() == QStringLiteral("ExitApp") ||
                item->objectName() == QStringLiteral("ExportChart")) {
                continue;
            }
            ASSERT_GE(mark, 0) << text;
            EXPECT_FALSE(taken.contains(item->text().at(mark + 1), Qt::CaseInsensitive)) << text;
            taken += item->text().at(mark + 1);
        }
    };
    check(tbrMenu.actions());
    check(cPLvw.popUpMenu().actions());
    check(cPItem.popUpMenu().actions());
    for (int index = 1; index <= cP.count(); ++index) {
        if (const QMenu* menu = cP.action(index).menu(); menu != nullptr) {
            check(menu->actions());
        }
    }
}

TEST_F(Menus, shortcutsStandBesideCaptionsThatStayAsTheyAre) {
    create();
    const struct {
        PopMenu& menu;
        const char* key;
        const char* caption;
        const char* shown;
    } cases[] = {
        {cP, "LoadMDB", "Load from Access Database...", "Load from Access Database...\tCtrl+O"},
        {cP, "ExitApp", "Exit", "Exit\tCtrl+Q"},
        {cP, "Refresh", "&Refresh [F5]\t", "&Refresh [F5]\t"},
        {cP, "CancelScan", "&Cancel Scan \t", "&Cancel Scan \tEsc"},
        {cP, "ViewBarChart", "&Bar Chart\t", "&Bar Chart\tCtrl+1"},
        {cP, "ViewPieChart", "&Pie Chart\t", "&Pie Chart\tCtrl+2"},
        {cP, "ShowOwners", "&File Owners (Slower Scan) \t", "&File Owners (Slower Scan) \t"},
        {cP, "GoUp", "Up One &Level", "Up One &Level\tAlt+Up"},
        {cP, "HelpContents", "&Contents", "&Contents\tF1"},
        {cP, "HelpAbout", "&About", "&About"},
        {cPLvw, "ExportExcel", "&Export Entire List to Excel", "&Export Entire List to Excel"},
        {cPLvw, "ExportText", "&Copy Entire List to Clipboard", "&Copy Entire List to Clipboard\tCtrl+C"},
        {cPItem, "ItemTrash", "&Move to Trash...", "&Move to Trash...\tDel"},
    };
    for (const auto& each : cases) {
        const int index = each.menu.indexOf(QString::fromUtf8(each.key));
        EXPECT_EQ(each.menu.caption(index).toStdString(), each.caption);
        EXPECT_EQ(each.menu.action(index).text().toStdString(), each.shown);
    }
}

class OwnersMenu : public Menus, public testing::WithParamInterface<bool> {};

TEST_P(OwnersMenu, checkMarkFollowsTheSettingAndEveryClick) {
    create(GetParam());
    const int index = indexOf("ShowOwners");
    for (const bool expected : {GetParam(), !GetParam(), GetParam()}) {
        EXPECT_EQ(settings.getOwnerInfo(), expected);
        EXPECT_EQ(cP.isChecked(index), expected);
        EXPECT_EQ(cP.action(index).isChecked(), expected);
        cP.action(index).trigger();
    }
}

INSTANTIATE_TEST_SUITE_P(Setting, OwnersMenu, testing::Bool());

TEST_F(Menus, exactlyOneChartStyleIsCheckedAndEveryClickRedraws) {
    create();
    const std::array<std::pair<int, const char*>, 3> looks{{{indexOf("ViewBarChart"), "bar"},
                                                            {indexOf("ViewPieChart"), "pie"},
                                                            {indexOf("ViewTreemap"), "treemap"}}};
    EXPECT_TRUE(cP.isChecked(looks[0].first));
    for (const std::size_t clicked : {0U, 1U, 1U, 2U, 0U, 2U, 2U, 1U, 0U}) {
        calls.clear();
        cP.action(looks.at(clicked).first).trigger();
        EXPECT_THAT(calls, ElementsAre(looks.at(clicked).second, "graph"));
        for (const auto& [index, name] : looks) {
            EXPECT_EQ(cP.action(index).isChecked(), index == looks.at(clicked).first) << name;
        }
    }
}

TEST_F(Menus, failingCommandIsLoggedAndTheMenuGoesOn) {
    carriers.refreshScreen = [] { throw RuntimeError(errorNumber::permissionDenied); };
    create();
    modGlobal::setErrorLog(&people);
    commands->cP_Click(indexOf("Refresh"));
    commands->cP_Click(cP.count() + 1);
    commands->cP_Click(indexOf("CancelScan"));
    modGlobal::setErrorLog();
    EXPECT_THAT(people.messages, ElementsAre(HasSubstr("70 "), HasSubstr("5 ")));
    EXPECT_THAT(people.messages, testing::Each(HasSubstr("[frmMain.cp_Click]")));
    EXPECT_THAT(calls, ElementsAre("cancel"));
}

// A scan runs inside the command that started it, and the same menu must be able to cancel it.
TEST_F(Menus, commandCanBeGivenWhileAnotherRuns) {
    carriers.refreshScreen = [this] {
        QTest::keyClick(&window, Qt::Key_V, Qt::AltModifier);
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_C);
        calls.emplace_back("refreshed");
    };
    create();
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_V, Qt::AltModifier);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_R);
    EXPECT_THAT(calls, ElementsAre("cancel", "refreshed"));
}

TEST_F(Menus, barOpensByKeysAndKeepsItsBandsHeight) {
    create();
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_EQ(cRebar.band(QStringLiteral("MenuBar"))->height(), tbrMenu.sizeHint().height());

    const std::tuple<Qt::Key, Qt::KeyboardModifier, QList<Qt::Key>, const char*> cases[] = {
        {Qt::Key_F10, Qt::NoModifier, {Qt::Key_Right, Qt::Key_Down, Qt::Key_Return}, "cancel"},
        {Qt::Key_F, Qt::AltModifier, {Qt::Key_Up, Qt::Key_Return}, "exit"},
        {Qt::Key_H, Qt::AltModifier, {Qt::Key_A}, "about"},
    };
    for (const auto& [key, modifier, inMenu, expected] : cases) {
        calls.clear();
        QTest::keyClick(&window, key, modifier);
        for (const Qt::Key next : inMenu) {
            ASSERT_NE(QApplication::activePopupWidget(), nullptr) << expected;
            QTest::keyClick(QApplication::activePopupWidget(), next);
        }
        EXPECT_THAT(calls, ElementsAre(expected));
    }
}

TEST(AboutBox, showsTheVersionAndClosesByOkAndEscape) {
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
        frmAbout about(nullptr);
        EXPECT_TRUE(about.findChild<QPushButton*>(QStringLiteral("cmdOK"))->isDefault());
        EXPECT_TRUE(QRegularExpression(QStringLiteral("^ Version [0-9]+\\.[0-9]+\\.[0-9]+$"))
                        .match(about.findChild<QLabel*>(QStringLiteral("lblVersion"))->text())
                        .hasMatch());
        about.open();
        QTest::keyClick(&about, key);
        EXPECT_FALSE(about.isVisible());
    }
}

} // namespace
