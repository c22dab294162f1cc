#include "window/recentPlaces.h"

#include <gmock/gmock.h>

#include <QMenu>
#include <QRegularExpression>
#include <QTest>
#include <utility>

#include "platform/locale.h"
#include "platform/paths.h"
#include "support/testSystem.h"
#include "window/windowFixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using Kind = RecentPlaces::Kind;

TEST(RecentPlaces, holdsEachOnceAndTheNewestFirst) {
    RecentPlaces places;
    const struct {
        const char* added;
        std::vector<std::string> held;
    } cases[] = {
        {"/\\a\\", {"/\\a\\"}},
        {"/\\b\\", {"/\\b\\", "/\\a\\"}},
        {"/\\a\\", {"/\\a\\", "/\\b\\"}},
        {"/\\A\\", platform::namesIgnoreCase() ? std::vector<std::string>{"/\\A\\", "/\\b\\"}
                                               : std::vector<std::string>{"/\\A\\", "/\\a\\", "/\\b\\"}},
    };
    for (const auto& each : cases) {
        places.add(Kind::folder, each.added);
        EXPECT_EQ(places.of(Kind::folder), each.held);
    }
    EXPECT_THAT(places.of(Kind::savedScan), IsEmpty());
    for (int i = 0; i < 20; ++i) {
        places.add(Kind::savedScan, "/\\" + std::to_string(i) + ".mdb");
    }
    EXPECT_THAT(places.of(Kind::savedScan), SizeIs(RecentPlaces::most));
    EXPECT_EQ(places.of(Kind::savedScan).back(), "/\\12.mdb");
    places.add(Kind::savedScan, places.of(Kind::savedScan).back()); // not a copy of it
    EXPECT_EQ(places.of(Kind::savedScan).front(), "/\\12.mdb");
    places.remove(Kind::savedScan, "/\\12.mdb");
    places.remove(Kind::folder, "/\\19.mdb\\");
    EXPECT_EQ(places.of(Kind::savedScan).front(), "/\\19.mdb");
    places.clear();
    EXPECT_TRUE(places.isEmpty());
}

TEST(RecentPlaces, areKeptAndReadWithoutWhatIsNoPath) {
    const TemporaryFolder folder;
    const QString file = QString::fromStdString(folder.typed("window.ini"));
    const std::string root = testSystem::root();
    const auto readBack = [&](const QVariant& folders) {
        {
            QSettings state(file, QSettings::IniFormat);
            state.setValue(QStringLiteral("recentFolders"), folders);
        }
        RecentPlaces places;
        places.restore(QSettings(file, QSettings::IniFormat));
        return places.of(Kind::folder);
    };
    const auto lines = [](const std::vector<std::string>& texts) {
        QByteArray joined;
        for (const std::string& text : texts) {
            joined += QByteArray::fromStdString(text) + '\n';
        }
        return joined;
    };
    EXPECT_THAT(
        readBack(lines({root + "a\\", "", "\x01", "\xFF\xFE", root + "\"b", root + "b\\", root + "a\\"})),
        ElementsAre(root + "a\\", root + "b\\"));
    EXPECT_THAT(readBack(QByteArray(1'000'000, 'x')), IsEmpty());
    EXPECT_THAT(readBack(lines(std::vector(100'000, root + "x\\"))), ElementsAre(root + "x\\"));
    EXPECT_THAT(readBack(QVariantList{1, 2}), IsEmpty());
    std::vector<std::string> many;
    for (int i = 0; i < 1000; ++i) {
        many.push_back(root + std::to_string(i) + "\\");
    }
    EXPECT_THAT(readBack(lines(many)), SizeIs(RecentPlaces::most));
    EXPECT_EQ(readBack(lines(many)).front(), many.front());

    RecentPlaces places;
    places.add(Kind::folder, root + "\xEF\xBC\x80\xEF\x80\x8A &;%,\\"); // with a line break's stand-in
    places.add(Kind::savedScan, root + "B\xC3\xB6se.mdb");
    {
        QSettings state(file, QSettings::IniFormat);
        places.save(state);
    }
    RecentPlaces again;
    again.restore(QSettings(file, QSettings::IniFormat));
    EXPECT_EQ(again.of(Kind::folder), places.of(Kind::folder));
    EXPECT_EQ(again.of(Kind::savedScan), places.of(Kind::savedScan));
}

class RecentInWindow : public MainWindow {
protected:
    QMenu& menu() { return *control<QAction>("OpenRecent").menu(); }
    // The texts of the submenu as it opens, with "-" for separators.
    std::vector<std::string> entries() {
        Q_EMIT menu().aboutToShow();
        std::vector<std::string> texts;
        for (const QAction* action : menu().actions()) {
            texts.push_back(action->isSeparator() ? "-" : action->text().toStdString());
        }
        return texts;
    }
    void choose(int number) {
        const auto count = entries().size();
        menu().actions().at(number)->trigger();
        QApplication::processEvents();
        EXPECT_GT(count, static_cast<std::size_t>(number));
    }
    std::string saved = application.typed("saved.mdb");
};

TEST_F(RecentInWindow, offersWhatWasOpenedByItsPathAndOpensItAgain) {
    openActive();
    EXPECT_THAT(entries(), ElementsAre("(none)"));
    EXPECT_FALSE(menu().actions().front()->isEnabled());
    window->openPath(tree.typed("b"));
    window->openPath(tree.typed("missing"));
    window->openPath(tree.typed("own.txt"));
    window->openPath(tree.typed());
    click(key("a")); // only this is not kept
    dialogs.file = saved;
    command("ExportMDB");
    ASSERT_THAT(entries(), SizeIs(6));
    EXPECT_EQ(entries(), (std::vector<std::string>{"&1  " + tree.typed(), "&2  " + tree.typed("b"), "-",
                                                   "&A  " + saved, "-", "C&lear"}));
    choose(1);
    EXPECT_EQ(selected(), key("b"));
    EXPECT_EQ(entries()[0], "&1  " + tree.typed("b"));
    window->openPath(tree.typed());
    tree.write("new.txt", "x");
    pressF5();
    dialogs.messages.clear();
    choose(3);
    EXPECT_THAT(control<QLabel>("lblSavedScan").text().toStdString(), HasSubstr("saved.mdb"));
    EXPECT_THAT(dialogs.messages, IsEmpty());
    window->close();
    close();

    open();
    EXPECT_THAT(entries(), SizeIs(6)) << "it is remembered";
    choose(5);
    EXPECT_THAT(entries(), ElementsAre("(none)"));
}

TEST_F(RecentInWindow, areWrittenWhenTheyChange) {
    openActive();
    const auto written = [this](const char* folder) {
        QSettings state(QString::fromStdString(application.typed("window.ini")), QSettings::IniFormat);
        RecentPlaces places;
        places.restore(state);
        return *folder == '\0' ? places.isEmpty() : places.of(Kind::folder).at(0) == key(folder);
    };
    for (const char* const folder : {"a", "b"}) {
        window->openPath(tree.typed(folder));
        QTest::qWait(0);
        EXPECT_TRUE(written(folder));
    }
    choose(static_cast<int>(entries().size()) - 1);
    QTest::qWait(0);
    EXPECT_TRUE(written(""));
}

TEST_F(RecentInWindow, forgetsWhatIsGoneAfterTheUsualMessage) {
    openActive();
    window->openPath(tree.typed("a"));
    window->openPath(tree.typed("b"));
    dialogs.file = saved;
    command("ExportMDB");
    testSystem::removeAll(tree / "b");
    testSystem::removeAll(application / "saved.mdb");
    for (const int gone : {3, 0}) {
        dialogs.messages.clear();
        choose(gone);
        EXPECT_THAT(dialogs.messages, ElementsAre(HasSubstr("Directory not found.")));
    }
    EXPECT_THAT(entries(), ElementsAre("&1  " + tree.typed("a"), "-", "C&lear"));
    application.write("saved.mdb", "no scan");
    dialogs.messages.clear();
    window->openPath(saved);
    EXPECT_THAT(dialogs.messages, SizeIs(1));
    EXPECT_THAT(entries(), SizeIs(3)) << "a refused file is not kept";
}

TEST_F(RecentInWindow, isGreyDuringAScan) {
    openActive();
    bool isEnabled = true;
    duringScan([&] { isEnabled = control<QAction>("OpenRecent").isEnabled(); });
    window->openPath(tree.typed());
    EXPECT_FALSE(isEnabled);
    EXPECT_TRUE(control<QAction>("OpenRecent").isEnabled());
}

TEST_F(RecentInWindow, showsAnyNameAsItIsAndWithAKeyOfItsOwn) {
    const std::string name = platform::displaySeparator == '\\' ? "a&b" : "a&b\t<b>\n";
    const std::string deep = std::string(100, 'l') + "/" + std::string(100, 'm');
    tree.write(name + "/x", "x");
    tree.write(deep + "/x", "x");
    openActive();
    for (int i = 0; i < 8; ++i) {
        tree.write(std::to_string(i) + "/x", "x");
        window->openPath(tree.typed(std::to_string(i)));
        dialogs.file = application.typed(std::to_string(i) + ".mdb");
        command("ExportMDB");
    }
    window->openPath(tree.typed(deep));
    window->openPath(tree.typed(name));
    const std::vector<std::string> shown = entries();
    ASSERT_THAT(shown, SizeIs(19));
    EXPECT_THAT(shown[0], HasSubstr("a&&b"));
    EXPECT_EQ(shown[0].find_first_of("\t\n"), std::string::npos);
    EXPECT_THAT(shown[1], HasSubstr("…"));
    EXPECT_LT(shown[1].size(), 120U);
    EXPECT_THAT(menu().actions().at(1)->toolTip().toStdString(), HasSubstr(std::string(100, 'm')));
    QString keys;
    static const QRegularExpression mark(QStringLiteral("^[^&]*&([^&])"));
    for (const QAction* action : menu().actions()) {
        if (!action->isSeparator()) {
            const QString own = mark.match(action->text()).captured(1);
            EXPECT_FALSE(own.isEmpty() || keys.contains(own, Qt::CaseInsensitive)) << own.toStdString();
            keys += own;
        }
    }
}

} // namespace
