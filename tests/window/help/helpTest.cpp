#include <gmock/gmock.h>

#include <QAction>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTest>
#include <QTextBrowser>
#include <QTreeWidget>

#include "platform/environment.h"
#include "platform/paths.h"
#include "window/help/frmHelp.h"
#include "window/help/helpContents.h"

namespace {

// The help pages beside the program in the build tree.
QString pagesFolder() {
    return QString::fromStdString(platform::toNative(platform::executableFolder() + "help\\"));
}

QString textOf(const QString& name) {
    QFile file(QDir(pagesFolder()).filePath(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return QString::fromUtf8(file.readAll());
}

TEST(HelpPages, contentsAndLinksLeadToPagesThatExist) {
    const QDir folder(pagesFolder());
    QStringList pages;
    for (const auto& entry : modHelp::readContents(textOf(QStringLiteral("spannory.hhc")))) {
        EXPECT_TRUE(folder.exists(entry.page)) << entry.page.toStdString();
        pages += entry.page;
    }
    pages.sort();
    EXPECT_EQ(pages, folder.entryList({QStringLiteral("*.html")}, QDir::Files, QDir::Name));

    static const QRegularExpression link(QStringLiteral("(?:href|src)=\"([^\"#]+)"));
    for (const QString& page : pages) {
        for (const auto& match : link.globalMatch(textOf(page))) {
            EXPECT_TRUE(folder.exists(match.captured(1)))
                << page.toStdString() << match.captured(1).toStdString();
        }
    }
}

TEST(HelpContents, nestsAndSkipsWhatItCannotRead) {
    const auto entries = modHelp::readContents(QStringLiteral(
        "<ul><li><OBJECT><PARAM name=\"Name\" value=\"A\"><param name=\"Local\" value=\"a.html\"></OBJECT>"
        "<object><param name=\"Name\" value=\"no page\"></object><param name=\"Other\" value=\"x\">"
        "<UL><object><param name=\"Name\" value=\"B\"><param name=\"Local\" value=\"b.html\"></object></UL>"
        "<object><param name=\"Name\" value=\"C\"><param name=\"Local\" value=\"c.html\"></object></ul>"));
    std::vector<std::string> seen;
    for (const auto& entry : entries) {
        seen.push_back(std::to_string(entry.level) + entry.title.toStdString() + entry.page.toStdString());
    }
    EXPECT_THAT(seen, testing::ElementsAre("0Aa.html", "1Bb.html", "0Cc.html"));
}

class HelpWindow : public testing::Test {
protected:
    void SetUp() override {
        help.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&help));
    }

    // The page shown, after checking that the contents and the title agree with it.
    [[nodiscard]] std::string shown() const {
        const std::string page = text->source().fileName().toStdString();
        const std::string title = text->documentTitle().toStdString();
        EXPECT_EQ(help.windowTitle().toStdString(), title + " - Spannory Help");
        EXPECT_EQ(contents->currentItem()->data(0, Qt::UserRole).toString().toStdString(), page);
        return page;
    }

    frmHelp help{pagesFolder()};
    QTextBrowser* text = help.findChild<QTextBrowser*>(QStringLiteral("txtPage"));
    QTreeWidget* contents = help.findChild<QTreeWidget*>(QStringLiteral("tvwContents"));
};

TEST_F(HelpWindow, movesByContentsLinksAndKeys) {
    EXPECT_EQ(shown(), "welcome.html");
    contents->setCurrentItem(contents->topLevelItem(1));
    EXPECT_EQ(shown(), "scanning.html");
    text->setSource(QUrl(QStringLiteral("trouble.html"))); // as a click on a link does
    EXPECT_EQ(shown(), "trouble.html");
    const std::pair<Qt::Key, const char*> moves[] = {{Qt::Key_Left, "scanning.html"},
                                                     {Qt::Key_Left, "welcome.html"},
                                                     {Qt::Key_Right, "scanning.html"},
                                                     {Qt::Key_Home, "welcome.html"}};
    for (const auto& [key, page] : moves) {
        QTest::keyClick(&help, key, Qt::AltModifier);
        EXPECT_EQ(shown(), page);
    }
}

TEST_F(HelpWindow, findsOnThePageAndBeginsAnewAtItsEnd) {
    help.showPage(QStringLiteral("scanning.html"));
    QTest::keyClick(&help, Qt::Key_F, Qt::ControlModifier);
    auto* const box = help.findChild<QLineEdit*>(QStringLiteral("txtFind"));
    ASSERT_TRUE(box->hasFocus());
    QTest::keyClicks(box, QStringLiteral("Each folder is scanned once"));
    QTest::keyClick(box, Qt::Key_Return);
    const int place = text->textCursor().selectionStart();
    EXPECT_EQ(text->textCursor().selectedText(), box->text());
    QTest::keyClick(&help, Qt::Key_F3);
    EXPECT_EQ(text->textCursor().selectionStart(), place);
    QTest::keyClick(&help, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(text->textCursor().selectionStart(), place);
}

TEST_F(HelpWindow, closesByKeyboard) {
    for (const auto& [key, modifier] :
         {std::pair{Qt::Key_Escape, Qt::NoModifier}, {Qt::Key_W, Qt::ControlModifier}}) {
        help.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&help));
        QTest::keyClick(&help, key, modifier);
        EXPECT_FALSE(help.isVisible());
    }
}

TEST(HelpWindowWithoutPages, saysSoOnItsPage) {
    const frmHelp help(QStringLiteral("/nowhere/<at all>"));
    const auto* text = help.findChild<QTextBrowser*>(QStringLiteral("txtPage"));
    EXPECT_TRUE(text->toPlainText().contains(QStringLiteral("/nowhere/<at all>/welcome.html")));
}

} // namespace
