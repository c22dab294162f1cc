#include "collect/httpClient.h"

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <thread>

#include "platform/clock.h"
#include "support/loopback.h"

namespace {

using Exchange = LoopbackServer::Exchange;
using Kind = ServerError::Kind;

constexpr HttpClient::Limits quick{.connectSeconds = 5, .silenceSeconds = 1};

std::string lastOf(const std::vector<std::string>& texts) {
    return texts.empty() ? "" : texts.back();
}

// The error of asking and, after that, of sending.
template <class Work>
ServerError errorOf(const Work& work) {
    try {
        work();
    } catch (const ServerError& error) {
        return error;
    }
    ADD_FAILURE() << "no error";
    return {Kind::cancelled, 0, ""};
}

void expectSafe(const std::string& text) {
    EXPECT_LT(text.size(), 1000U);
    EXPECT_EQ(text.find("secret"), std::string::npos) << text;
    for (const char c : text) {
        EXPECT_FALSE(static_cast<unsigned char>(c) < 0x20 || c == 0x7F) << text;
    }
}

} // namespace

TEST(HttpClient, tellsWhatIsWrongInOneSafeLine) {
    struct Case {
        std::string name;
        std::function<void(Exchange&)> answer;
        Kind kind;
        std::string part; // of the description
    };
    const std::string hostile =
        "Code: 60, e.displayText() =\r\n\x1B[2J\x07 \xE2\x80\xAE evil \xFF\x7F" + std::string(100000, 'x');
    const auto raw = [](const std::string& text) {
        return [text](Exchange& exchange) {
            static_cast<void>(exchange.body());
            exchange.send(text);
        };
    };
    const auto answer = [](const std::string& body, const std::string& status,
                           const std::string& headers = "") {
        return [=](Exchange& exchange) {
            static_cast<void>(exchange.body());
            exchange.answer(body, status, headers);
        };
    };
    const Case cases[]{
        {"no such table", answer(hostile, "500 Internal Server Error"), Kind::refused, "␛[2J␇ � evil �␡xx"},
        {"disk full", answer("Code: 243, e.displayText() = no space", "500 x"), Kind::unreachable,
         "no space"},
        {"new form", answer("Code: 516. DB::Exception: no", "403 Forbidden"), Kind::refused, "no"},
        {"unavailable", answer("", "503 x"), Kind::unreachable, "status 503"},
        {"too many", answer("wait", "429 x"), Kind::unreachable, "wait"},
        {"denied", answer("go away", "401 x"), Kind::refused, "go away"},
        {"redirect", answer("", "302 Found", "Location: /elsewhere\r\n"), Kind::strange, "another place"},
        {"redirect to a file", answer("", "301 x", "Location: file:///etc/passwd\r\n"), Kind::strange,
         "place"},
        {"page", answer("<b>Hi", "200 OK", "Content-Type: text/html\r\n"), Kind::strange, "ClickHouse"},
        {"other success", answer("", "202 Accepted"), Kind::strange, "ClickHouse"},
        {"no HTTP", raw("SSH-2.0-OpenSSH\r\n\r\nwhat"), Kind::strange, "127.0.0.1"},
        {"nothing", raw(""), Kind::unreachable, "127.0.0.1"},
        {"half a head", raw("HTTP/1.1 200 O"), Kind::unreachable, "127.0.0.1"},
        {"half a body", raw("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf"), Kind::unreachable, "127"},
        {"half a chunk", raw("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n50\r\nhalf"),
         Kind::unreachable, "127"},
    };
    for (const Case& each : cases) {
        LoopbackServer server(each.answer);
        HttpClient client(parseServerUrl(server.url()), "secret", {}, quick);
        int pieces = 0;
        const ServerError errors[]{errorOf([&] { client.ask("SELECT 1", [](std::string_view) {}); }),
                                   errorOf([&] {
                                       client.send("INSERT INTO x FORMAT RowBinary", [&](std::string& bytes) {
                                           bytes.append("some rows");
                                           return ++pieces < 3;
                                       });
                                   })};
        for (const ServerError& error : errors) {
            EXPECT_TRUE(error.kind() == each.kind) << each.name << ": " << error.what();
            EXPECT_NE(std::string(error.what()).find(each.part), std::string::npos)
                << each.name << ": " << error.what();
            expectSafe(error.what());
        }
        for (const std::string& head : server.heads()) {
            EXPECT_TRUE(head.starts_with("POST /")) << head;
            EXPECT_EQ(head.find("elsewhere"), std::string::npos) << "a redirect was followed";
            EXPECT_EQ(head.substr(0, head.find('\r')).find("secret"), std::string::npos) << head;
            EXPECT_NE(head.find("X-ClickHouse-Key: secret"), std::string::npos) << head;
        }
    }
}

TEST(HttpClient, handsOverWhatTheServerSays) {
    LoopbackServer server([](Exchange& exchange) {
        const std::string body = exchange.body();
        exchange.answer(body == "SELECT 'ä'" ? std::string("a\0b", 3) + std::string(300000, 'c') : body);
    });
    HttpClient client(parseServerUrl(server.url()), "", {}, quick);
    std::string got;
    client.ask("SELECT 'ä'", [&](std::string_view part) { got += part; }, {{"max_x", "1 & ü"}});
    EXPECT_EQ(got, std::string("a\0b", 3) + std::string(300000, 'c'));
    EXPECT_TRUE(lastOf(server.heads()).starts_with("POST /?max_x=1%20%26%20%C3%BC HTTP"))
        << server.heads()[0];
    EXPECT_EQ(lastOf(server.heads()).find("X-ClickHouse-Key"), std::string::npos);
    EXPECT_EQ(errorOf([&] { static_cast<void>(client.askText("SELECT 'ä'")); }).kind(), Kind::strange);
    EXPECT_THROW(client.ask("SELECT 'ä'", [](std::string_view) { throw std::logic_error("mine"); }),
                 std::logic_error);
    EXPECT_EQ(client.askText("SELECT 2"), "SELECT 2") << "the client still works";
}

TEST(HttpClient, waitsForNobodyForEver) {
    std::atomic<bool> isReading = true;
    LoopbackServer server([&](Exchange& exchange) { // says nothing, and in the end reads nothing
        if (isReading) {
            static_cast<void>(exchange.body());
        }
        const std::int64_t end = platform::tickCount() + 2500;
        while (!server.isEnding() && platform::tickCount() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    });
    HttpClient client(parseServerUrl(server.url()), "", {}, quick);
    const auto begin = platform::tickCount();
    const ServerError silent = errorOf([&] { static_cast<void>(client.askText("SELECT 1")); });
    EXPECT_EQ(silent.kind(), Kind::unreachable);
    EXPECT_STREQ(
        silent.what(),
        ("http://127.0.0.1:" + std::to_string(server.port()) + " has said nothing for 1 seconds").c_str());
    isReading = false;
    EXPECT_EQ(errorOf([&] {
                  std::uint32_t noise = 1; // which does not shrink
                  client.send("INSERT", [&](std::string& bytes) {
                      for (int i = 0; i < 50000; ++i) {
                          noise = noise * 1664525 + 1013904223;
                          bytes.push_back(static_cast<char>(noise >> 24U));
                      }
                      return true;
                  });
              }).kind(),
              Kind::unreachable);
    bool goes = true;
    HttpClient cancelled(parseServerUrl(server.url()), "", [&] { return std::exchange(goes, false); });
    EXPECT_EQ(errorOf([&] { static_cast<void>(cancelled.askText("SELECT 1")); }).kind(), Kind::cancelled);
    EXPECT_LT(platform::tickCount() - begin, 15000);
}

TEST(HttpClient, findsNobodyWhereNobodyListens) {
    int port = 0;
    { port = LoopbackListener::open()->port(); }
    HttpClient client(parseServerUrl("http://127.0.0.1:" + std::to_string(port) + "/x"), "", {}, quick);
    EXPECT_EQ(errorOf([&] { static_cast<void>(client.askText("SELECT 1")); }).kind(), Kind::unreachable);
    EXPECT_THROW(HttpClient(parseServerUrl("http://x/x"), "a\r\nX-Evil: 1", {}), RuntimeError);
}

TEST(OneSafeLine, cutsBetweenCharacters) {
    EXPECT_EQ(oneSafeLine(" a\n\n b\t \xC2\x9Bü ", 6), "a b �ü");
    EXPECT_EQ(oneSafeLine("äöüß", 3), "äöü…");
    EXPECT_EQ(oneSafeLine(""), "");
}
