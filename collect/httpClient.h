#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "collect/serverUrl.h"
#include "platform/runtimeError.h"

// Why a server did not do what it was asked. The description is one short line, in which nothing can control
// a terminal, whatever the server has said; it names the server and holds no password.
class ServerError : public RuntimeError {
public:
    enum class Kind {
        unreachable, // not connected, silent for too long, broken off, or it says that it failed: may pass
        refused,     // it will not do this, now or later: wrong password, no such table, no such statement
        strange,     // not the answer of such a server
        cancelled,   // `goesOn` said so
    };

    ServerError(Kind kind, int number, const std::string& description, int serverCode = 0)
        : RuntimeError(number, description), kind_(kind), serverCode_(serverCode) {}

    [[nodiscard]] Kind kind() const noexcept { return kind_; }
    [[nodiscard]] bool mayPass() const noexcept { return kind_ == Kind::unreachable; }
    // The server's own number: 60 no such table, 81 no such database, ...; 0 if it gave none.
    [[nodiscard]] int serverCode() const noexcept { return serverCode_; }

private:
    Kind kind_;
    int serverCode_;
};

// What a stranger has said, as one line of at most so many characters: line breaks become blanks, control
// characters their pictures (U+2400 and so on), what turns the direction of text and invalid bytes U+FFFD.
[[nodiscard]] std::string oneSafeLine(std::string_view text, std::size_t mostCharacters = 200);

// Talks to one server by HTTP. Certificates are checked, redirects are not followed, no proxy is used, and
// the user and the password go in headers. Every function throws ServerError; what a callback throws passes
// through. An object is used by one thread at a time, in a process that platform::ignoreBrokenPipes.
class HttpClient {
public:
    struct Limits {
        int connectSeconds = 10;
        int silenceSeconds = 60; // while nothing comes or goes; there is no limit on the whole
    };
    // Settings of the statement and values of its parameters, for behind "?" in the URL; encoded here.
    using Parameters = std::vector<std::pair<std::string, std::string>>;
    // Appends some bytes of what is to be sent; false if nothing follows.
    using Source = std::function<bool(std::string& bytes)>;
    // Takes some bytes of the answer, cut anywhere.
    using Target = std::function<void(std::string_view bytes)>;

    // `goesOn` is asked at least once a second, and often while bytes come or go; may be empty.
    HttpClient(ServerUrl url, std::string password, std::function<bool()> goesOn, Limits limits);
    HttpClient(ServerUrl url, std::string password, std::function<bool()> goesOn)
        : HttpClient(std::move(url), std::move(password), std::move(goesOn), Limits()) {}
    ~HttpClient();
    HttpClient(const HttpClient&) = delete;
    HttpClient& operator=(const HttpClient&) = delete;

    [[nodiscard]] const ServerUrl& url() const noexcept { return url_; }

    // Runs a statement and hands its answer over as it arrives. A server that fails in the midst of an answer
    // breaks off, or appends its error as text: whoever reads rows must know how many there are.
    // With the parameter enable_http_compression=1 it comes compressed, and is unpacked here.
    void ask(std::string_view statement, const Target& target, const Parameters& parameters = {});

    // The same for a short answer; `strange` if it has more bytes.
    [[nodiscard]] std::string askText(std::string_view statement, const Parameters& parameters = {},
                                      std::size_t mostBytes = 65536);

    // Runs an INSERT with the rows that the source gives, compressed on the way (gzip). The statement ends in
    // "FORMAT ...". An error does not say which rows have arrived.
    void send(std::string_view statement, const Source& source, const Parameters& parameters = {});

    // The bytes of compressed rows that have gone out.
    [[nodiscard]] std::int64_t bytesSent() const noexcept { return bytesSent_; }

private:
    struct Transfer;
    class Handle;
    void run(Transfer& transfer, std::string_view body, const Parameters& parameters);
    [[noreturn]] void fail(const Transfer& transfer, int result) const;
    void requireSuccess(Transfer& transfer, int result) const;
    [[nodiscard]] ServerError refusal(const Transfer& transfer) const;

    ServerUrl url_;
    std::string password_;
    std::function<bool()> goesOn_;
    Limits limits_;
    std::unique_ptr<Handle> handle_;
    std::int64_t bytesSent_ = 0;
};
