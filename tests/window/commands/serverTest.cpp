#include <gmock/gmock.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "collect/rowForm.h"
#include "support/loopback.h"
#include "window/windowFixture.h"

namespace {

using testing::HasSubstr;

// A server with one scan, which has no rows unless a test says so.
class LoadFromServer : public MainWindow {
protected:
    void handle(LoopbackServer::Exchange& exchange) const {
        const std::string statement = exchange.statement();
        const auto asksFor = [&](const char* text) { return statement.find(text) != std::string::npos; };
        if (asksFor("system.tables") || asksFor("schemaVersion")) {
            exchange.answer("1\n");
        } else if (asksFor("RowBinary")) {
            exchange.answer(rows);
        } else if (isBroken) {
            exchange.answer("<html>\x1b[2J", "500 Error");
        } else {
            exchange.answer("nas1\tid1\t7\t/srv/\t/\t1800000000\t0\t12345\t1\t" + noScans() + "\n");
        }
    }

    static std::string noScans() {
        std::string text;
        for (const char c : modRowForm::encodedScans({})) {
            text += c == '\0' ? std::string("\\0") : std::string(1, c);
        }
        return text;
    }

    // What is done in the box once the server has answered.
    void use(const std::function<void(frmServer& box)>& then) {
        dialogs.useServer = [this, then](frmServer& box) {
            const auto& list = *box.findChild<ListView*>(QStringLiteral("lvwServer"));
            box.findChild<QLineEdit*>(QStringLiteral("txtServer"))
                ->setText(QString::fromStdString(server.url()));
            box.findChild<QPushButton*>(QStringLiteral("cmdShowScans"))->click();
            remark = box.findChild<QLabel*>(QStringLiteral("lblServer"))->text().toStdString();
            listed = list.rows().rowCount();
            then(box);
        };
        command("LoadServer");
    }
    static void chooseFirst(frmServer& box) {
        box.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    }

    std::string rows;
    bool isBroken = false;
    std::string remark;
    int listed = -1;
    LoopbackServer server{[this](LoopbackServer::Exchange& exchange) { handle(exchange); }};
};

TEST_F(LoadFromServer, showsWhatIsThereAndLoadsOne) {
    openOnTree();
    use(&chooseFirst);
    EXPECT_EQ(remark, "1 scan.");
    EXPECT_EQ(listed, 1);
    EXPECT_TRUE(dialogs.messages.empty()) << dialogs.messages.front();
    EXPECT_TRUE(window->database().holdsLoadedRows());
    EXPECT_THAT(control<QLabel>("lblSavedScan").text().toStdString(), HasSubstr("Scan of nas1 on http://"));
}

TEST_F(LoadFromServer, leavesWhatIsShownAloneOtherwise) {
    openOnTree();
    use([](frmServer& box) { box.reject(); });
    EXPECT_FALSE(window->database().holdsLoadedRows());

    rows = "no rows"; // where none are expected
    use(&chooseFirst);
    EXPECT_FALSE(window->database().holdsLoadedRows());
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_EQ(dialogs.messages.front(), "The scan could not be loaded from the server.");

    isBroken = true;
    use([](frmServer& /*box*/) {});
    EXPECT_EQ(listed, 0);
    EXPECT_THAT(remark, HasSubstr("refuses: <html>"));
    EXPECT_THAT(remark, testing::Not(HasSubstr("\x1b")));
}

} // namespace
