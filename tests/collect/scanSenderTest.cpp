#include "collect/scanSender.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include <set>

#include "collect/patience.h"
#include "collect/rowBinary.h"
#include "collect/rowForm.h"
#include "collect/schema.h"
#include "collect/server.h"
#include "platform/clock.h"
#include "platform/environment.h"
#include "support/errorNumberOf.h"
#include "support/loopback.h"
#include "support/scanFixture.h"

namespace {

using Exchange = LoopbackServer::Exchange;

std::string unpacked(const std::string& bytes) {
    constexpr int asGzip = 16;
    z_stream stream{};
    inflateInit2(&stream, MAX_WBITS + asGzip);
    std::string result(1 << 22, '\0');
    std::string input = bytes;
    stream.next_in = reinterpret_cast<Bytef*>(input.data()); // NOLINT: as the call wants it
    stream.avail_in = static_cast<uInt>(input.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data()); // NOLINT: as the call wants it
    stream.avail_out = static_cast<uInt>(result.size());
    const bool isWhole = inflate(&stream, Z_FINISH) == Z_STREAM_END;
    result.resize(isWhole ? stream.total_out : 0);
    inflateEnd(&stream);
    return result;
}

class Settling {
public:
    explicit Settling(const LoopbackServer& server) : server_(server) { server.settle(); }
    ~Settling() { server_.settle(); }
    Settling(const Settling&) = delete;
    Settling& operator=(const Settling&) = delete;

private:
    const LoopbackServer& server_;
};

// What a ClickHouse server would do with the few statements of the sender.
class Collected : public ScanFixture, public testing::Test {
protected:
    struct Attempt {
        std::uint64_t number = 0;
        std::string scan;
        bool operator==(const Attempt&) const = default;
    };

    void handle(Exchange& exchange) {
        ++requests;
        const std::string statement = exchange.statement();
        if (statement.find("system.tables") != std::string::npos) {
            exchange.answer("1\n");
        } else if (statement.find("schemaVersion") != std::string::npos) {
            exchange.answer(version);
        } else if (statement.starts_with("INSERT INTO spannory.details")) {
            takeRows(exchange);
        } else if (statement.starts_with("INSERT INTO spannory.scans")) {
            takeScan(exchange);
        } else if (statement.find("spannory.scans") != std::string::npos) {
            exchange.answer(std::to_string(scans.size()) + "\n");
        } else {
            exchange.answer(std::to_string(rows - std::exchange(lost, 0)) + "\n");
        }
    }

    void takeRows(Exchange& exchange) {
        rows = 0;
        if (std::exchange(breakOffs, breakOffs - 1) > 0) {
            exchange.readSome(100);
            return;
        }
        const std::string all = unpacked(exchange.body());
        std::string_view bytes = all;
        modRowForm::Decoder decoder('/');
        modRowForm::Row row;
        while (!bytes.empty()) {
            modRowBinary::Reader reader(bytes);
            EXPECT_EQ(reader.text(), platform::hostName());
            const std::string scan(reader.text());
            attempts.push_back({reader.number<std::uint64_t>(), scan});
            static_cast<void>(reader.number<std::uint32_t>());
            bytes = reader.rest();
            ASSERT_TRUE(decoder.take(bytes, row));
            names.insert(std::get<std::string>(row[3]));
            ++rows;
        }
        exchange.answer("");
    }

    void takeScan(Exchange& exchange) {
        const std::string bytes = unpacked(exchange.body());
        modRowBinary::Reader reader(bytes);
        static_cast<void>(reader.text());
        const std::string scan(reader.text());
        scans.push_back({reader.number<std::uint64_t>(), scan});
        if (std::exchange(losesAnswer, false)) {
            return;
        }
        exchange.answer("");
    }

    modCollect::Outcome sendTree(std::int64_t patience = 0) {
        const Settling settling(server);
        modCollect::Outcome outcome{};
        modCollect::patiently(
            patience, [] { return true; },
            [&] { outcome = modCollect::send(client, working.database(), toSend(), [](std::int64_t) {}); });
        return outcome;
    }

    modCollect::ScanToSend toSend() {
        return modCollect::scanOf(modScans::all(working.database()), key(), foldersOnly);
    }

    std::vector<Attempt> attempts; // of each row
    std::vector<Attempt> scans;
    std::set<std::string> names;
    std::string version = "1\n";
    int rows = 0; // of the last attempt
    int lost = 0; // of them, when they are counted next
    int breakOffs = 0;
    bool losesAnswer = false;
    bool foldersOnly = false;
    std::atomic<int> requests = 0;
    LoopbackServer server{[this](Exchange& exchange) { handle(exchange); }};
    HttpClient client{parseServerUrl(server.url()), "", {}, {.connectSeconds = 5, .silenceSeconds = 5}};
};

} // namespace

TEST_F(Collected, scanIsSentOnceAndWhole) {
    tree.write("a/b.txt", "12345");
    tree.write("c", "");
    scan();
    EXPECT_EQ(sendTree(), modCollect::Outcome::sent);
    EXPECT_THAT(names, testing::IsSupersetOf({"b.txt", "a\\", "c"}));
    EXPECT_EQ(rows, 4) << "with the folder itself";
    ASSERT_EQ(scans.size(), 1U);
    EXPECT_THAT(attempts, testing::Each(scans[0]));
    EXPECT_EQ(scans[0].scan, modCollect::idOf(toSend()));
    EXPECT_EQ(sendTree(), modCollect::Outcome::wasThere);
    EXPECT_EQ(scans.size(), 1U);
    EXPECT_EQ(attempts.size(), 4U);

    const std::string before = scans[0].scan;
    search.resetScanCompleteTime(key());
    scan();
    EXPECT_NE(modCollect::idOf(toSend()), before) << "another scan, of the same second";
    scans.clear();
    foldersOnly = true;
    EXPECT_EQ(sendTree(), modCollect::Outcome::sent);
    EXPECT_EQ(rows, 2);
}

TEST_F(Collected, whatWasBrokenOffCountsNothing) {
    tree.write("a/b.txt", std::string(70000, 'x'));
    scan();
    breakOffs = 1;
    EXPECT_THROW(static_cast<void>(sendTree()), ServerError);
    lost = 1;
    EXPECT_THROW(static_cast<void>(sendTree()), ServerError);
    EXPECT_TRUE(scans.empty());
    losesAnswer = true;
    EXPECT_THROW(static_cast<void>(sendTree()), ServerError);
    EXPECT_EQ(sendTree(), modCollect::Outcome::wasThere);
    ASSERT_EQ(scans.size(), 1U);
    EXPECT_EQ(attempts.back(), scans[0]);
    EXPECT_NE(attempts.front(), scans[0]) << "rows of two attempts cannot be told apart";
}

TEST_F(Collected, patienceTriesAgain) {
    tree.write("a", "1");
    scan();
    breakOffs = 2;
    const std::int64_t begin = platform::tickCount();
    EXPECT_EQ(sendTree(20), modCollect::Outcome::sent);
    EXPECT_GE(platform::tickCount() - begin, 2900) << "pauses of one and two seconds";
    EXPECT_EQ(scans.size(), 1U);
    // What does not pass is not tried again.
    for (const char* strange : {"2\n", "-1\n", "one\n", "1", "", "1\n2\n"}) {
        version = strange;
        requests = 0;
        EXPECT_THROW(static_cast<void>(sendTree(20)), ServerError) << strange;
        EXPECT_EQ(requests, 2) << strange;
    }
}

TEST_F(Collected, idStaysWithTheScan) {
    tree.write("a/b", "1");
    scan("a");
    scan();
    const std::vector<modScans::Scan> all = modScans::all(working.database());
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(modCollect::scannedKeys(all), std::vector{key()});
    std::vector<modScans::Scan> turned(all.rbegin(), all.rend());
    EXPECT_EQ(modCollect::idOf(modCollect::scanOf(turned, key(), false)),
              modCollect::idOf(modCollect::scanOf(all, key(), true)));
    EXPECT_NE(modCollect::idOf(modCollect::scanOf(all, key("a"), false)),
              modCollect::idOf(modCollect::scanOf(all, key(), false)));
    // Of earlier versions.
    std::vector<modScans::Scan> old{all.back()};
    old[0].uniqueId.clear();
    const std::string id = modCollect::idOf(modCollect::scanOf(old, key(), false));
    old[0].finished = *old[0].finished + 1;
    EXPECT_NE(modCollect::idOf(modCollect::scanOf(old, key(), false)), id);
    old[0].cancelled = true;
    EXPECT_EQ(errorNumberOf([&] { static_cast<void>(modCollect::scanOf(old, key(), false)); }),
              errorNumber::invalidCall);
    EXPECT_EQ(errorNumberOf([&] { static_cast<void>(modCollect::scanOf({}, key(), false)); }),
              errorNumber::invalidCall);
}

TEST(Schema, literalsEndWhereTheyShould) {
    EXPECT_EQ(modSchema::literal(std::string_view("'; drop \\ \0\n\xFF", 13)), "'\\'; drop \\\\ \\0\n\xFF'");
}
