#include "collect/collectedScan.h"

#include <gmock/gmock.h>

#include "collect/rowForm.h"
#include "support/loopback.h"
#include "support/scanFixture.h"

namespace {

using Exchange = LoopbackServer::Exchange;

// The rows of a scan as a server sends them. Those of `details` begin with the scan's columns, which it
// leaves out of what it is asked for.
std::string serverRows(Database& database) {
    const auto rows = database.OpenRecordset("select " + modRowForm::columnList() + " from details");
    modRowForm::Encoder encoder(*rows, {}, '/');
    std::string all;
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        std::string row;
        encoder.append(row);
        constexpr std::size_t emptyTexts = 2;
        all.append(row.substr(emptyTexts + sizeof(std::uint64_t) + sizeof(std::uint32_t)));
    }
    return all;
}

class BroughtBack : public ScanFixture, public testing::Test {
protected:
    void SetUp() override {
        tree.write("a/b.txt", "12345");
        tree.write("a/odd\\\xC3\xA9 name", "1");
        scan();
        bytes = serverRows(working.database());
        before = content();
    }

    std::string content() {
        return testing::PrintToString(rows("select * from details order by idx")) +
               testing::PrintToString(rows("select * from scans"));
    }

    void handle(Exchange& exchange) const {
        const bool asksForRows = exchange.statement().find("RowBinary") != std::string::npos;
        exchange.answer(asksForRows ? bytes : list);
    }

    void load(std::uint64_t count) {
        modCollected::Found found;
        found.host = "nas1";
        found.scan = "1";
        found.rows = count;
        found.records = modRowForm::encodedScans(modScans::all(working.database()));
        modCollected::load(working, modCollected::fetch(working, client, found, userInterface),
                           userInterface);
    }

    std::string bytes;
    std::string before;
    std::string list;
    LoopbackServer server{[this](Exchange& exchange) { handle(exchange); }};
    HttpClient client{parseServerUrl(server.url()), "", {}, {.connectSeconds = 5, .silenceSeconds = 5}};
};

TEST_F(BroughtBack, isWhatWasSent) {
    const auto count = static_cast<std::uint64_t>(std::stoi(cell("select count(*) from details")));
    load(count);
    EXPECT_EQ(content(), before);
    EXPECT_TRUE(working.holdsLoadedRows());
}

TEST_F(BroughtBack, leavesWhatIsThereWhenTheServerSendsSomethingElse) {
    const std::string right = bytes;
    const auto count = static_cast<std::uint64_t>(std::stoi(cell("select count(*) from details")));
    const struct {
        std::string what;
        std::string bytes;
        std::uint64_t rows;
    } cases[] = {
        {"a row less", right, count + 1},
        {"a row more", right, count - 1},
        {"none", "", count},
        {"broken off", right.substr(0, right.size() - 1), count},
        {"an error behind the rows", right + "Code: 241, Memory limit", count},
        {"one text of endless length", std::string(64, '\xFF'), count},
        {"the same row numbers twice", right + right, 2 * count},
    };
    for (const auto& each : cases) {
        bytes = each.bytes;
        EXPECT_THROW(load(each.rows), RuntimeError) << each.what;
        EXPECT_EQ(content(), before) << each.what;
        EXPECT_FALSE(working.holdsLoadedRows()) << each.what;
    }
}

TEST_F(BroughtBack, isChosenByHostAndPath) {
    const std::string outer = "nas1\tid2\t7\t/srv/\t/\t1800000000\t3\t4096\t2\t\n";
    const std::string inner = "nas1\tid1\t8\t/srv/a\\tb/\t/\t1700000000\t2\t10\t1\t\n";
    list = inner + outer;
    const modCollected::Found found = modCollected::find(client, {"nas1", "", "/srv/a\tb/c/"});
    EXPECT_EQ(found.scan, "id1");
    EXPECT_EQ(found.path, "/srv/a\tb/");
    EXPECT_EQ(found.attempt, 8U);
    EXPECT_EQ(modCollected::list(client, 10).size(), 2U);
    try {
        static_cast<void>(modCollected::find(client, {"nas1", "", ""}));
        FAIL() << "either could be meant";
    } catch (const ServerError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("/srv/")) << "names them";
    }
    for (const char* strange : {"", "nas1\n", "<html>"}) {
        list = strange;
        EXPECT_THROW(static_cast<void>(modCollected::find(client, {"nas1", "", "/srv/"})), ServerError)
            << strange;
    }
}

} // namespace
