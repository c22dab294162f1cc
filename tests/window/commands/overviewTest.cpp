#include <QCryptographicHash>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "window/windowFixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// The command that writes an overview page.
class Overview : public MainWindow {
protected:
    // Gives this answer to the file dialog.
    void save(const std::string& file) {
        dialogs.file = file;
        command("ExportOverview");
    }
};

TEST_F(Overview, isOfTheSelectedFolder) {
    openOnTree();
    const std::string output = application.typed("a.html");
    click(key("a"));
    save(output);
    const std::string page = application.read("a.html");
    EXPECT_THAT(page, HasSubstr(tree.typed("a") + "</bdi></h2>"));
    EXPECT_THAT(page, HasSubstr("big.bin</bdi>"));
    EXPECT_THAT(page, Not(HasSubstr("note.txt")));
    EXPECT_EQ(dialogs.requests.back().filter, "HTML Files (*.html)|*.html|All Files (*.*)|*.*");
    EXPECT_EQ(dialogs.opened.back(), output);
    EXPECT_THAT(panel(3), HasSubstr("a.html"));

    save("");
    EXPECT_THAT(dialogs.messages, IsEmpty()) << "cancelled";
    dialogs.answer = false;
    save(output);
    EXPECT_THAT(dialogs.questions, ElementsAre("Overwrite existing file?"));
    EXPECT_EQ(application.read("a.html"), page);
}

TEST_F(Overview, needsAScannedFolder) {
    makeTree();
    open();
    save(application.typed("none.html"));
    EXPECT_THAT(dialogs.messages, ElementsAre("Select a scanned folder first."));
    EXPECT_THAT(dialogs.requests, IsEmpty());
}

TEST_F(Overview, allowsItsOwnStyleAndScriptOnly) {
    openOnTree();
    save(application.typed("a.html"));
    const std::string page = application.read("a.html");
    const auto between = [&](const std::string& before, const std::string& after) {
        const std::size_t start = page.find(before) + before.size();
        return page.substr(start, page.find(after, start) - start);
    };
    const auto digest = [](const std::string& of) {
        return "'sha256-" +
               QCryptographicHash::hash(QByteArray::fromStdString(of), QCryptographicHash::Sha256)
                   .toBase64()
                   .toStdString() +
               "'";
    };
    EXPECT_EQ(between("Content-Security-Policy\" content=\"", "\""),
              "default-src 'none'; script-src " + digest(between("<script>", "</script>")) + "; style-src " +
                  digest(between("<style>", "</style>")) + "; base-uri 'none'; form-action 'none'");
}

} // namespace
