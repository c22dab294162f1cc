#include "collect/httpClient.h"

#include <curl/curl.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <exception>

#include "collect/gzip.h"
#include "platform/clock.h"
#include "platform/terminal.h"
#include "platform/text.h"

namespace {

constexpr std::size_t mostErrorBytes = 4096;
constexpr std::int64_t millisecondsPerSecond = 1000;

constexpr long success = 200;
constexpr long firstRedirect = 300;
constexpr long firstRefusal = 400;
constexpr long firstFailure = 500;

// The numbers of errors that do not go away by themselves: of statements, names, users and rights.
constexpr std::array lasting{16,  36,  46,  47,  50,  53,  60,  62,  81,  115,
                             164, 170, 192, 193, 194, 195, 291, 452, 497, 516};

bool isLasting(int serverCode) {
    return std::find(lasting.begin(), lasting.end(), serverCode) != lasting.end();
}

// Of "Code: 60, e.displayText() = ..." or "Code: 60. DB::Exception: ..."; 0 if it does not begin so.
int codeOf(std::string_view answer) {
    constexpr std::string_view start = "Code: ";
    int code = 0;
    if (answer.starts_with(start)) {
        std::from_chars(answer.data() + start.size(), answer.data() + answer.size(), code);
    }
    return code;
}

void startLibrary() {
    platform::ignoreBrokenPipes(); // a server that goes away
    static const CURLcode started = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (started != CURLE_OK) {
        throw RuntimeError(errorNumber::outOfMemory);
    }
}

class Headers {
public:
    Headers() = default;
    ~Headers() { curl_slist_free_all(list_); }
    Headers(const Headers&) = delete;
    Headers& operator=(const Headers&) = delete;

    void add(const std::string& line) {
        curl_slist* const longer = curl_slist_append(list_, line.c_str());
        if (longer == nullptr) {
            throw RuntimeError(errorNumber::outOfMemory);
        }
        list_ = longer;
    }
    [[nodiscard]] curl_slist* get() const noexcept { return list_; }

private:
    curl_slist* list_ = nullptr;
};

} // namespace

std::string oneSafeLine(std::string_view text, std::size_t mostCharacters) {
    constexpr char32_t pictures = 0x2400;
    constexpr char32_t pictureOfDelete = 0x2421;
    constexpr char32_t replacement = 0xFFFD;
    text = text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
    std::string result;
    std::size_t characters = 0;
    bool afterBlank = true;
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t start = position;
        char32_t c = platform::decodeCodePoint(text, position);
        const bool isBlank = c == ' ' || c == '\n' || c == '\r' || c == '\t';
        if (isBlank && afterBlank) {
            continue;
        }
        if (++characters > mostCharacters) {
            result.append("…");
            break;
        }
        afterBlank = isBlank;
        const bool isC1 = c >= 0x80 && c < 0xA0;
        const bool turnsText = c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x2028 && c <= 0x202E) ||
                               (c >= 0x2066 && c <= 0x2069);
        if (isBlank) {
            result.push_back(' ');
        } else if (c < 0x20 || c == 0x7F) {
            platform::appendCodePoint(result, c == 0x7F ? pictureOfDelete : pictures + c);
        } else if (c == platform::invalidCodePoint || isC1 || turnsText) {
            platform::appendCodePoint(result, replacement);
        } else {
            result.append(text.substr(start, position - start));
        }
    }
    while (result.ends_with(' ')) {
        result.pop_back();
    }
    return result;
}

// What goes on between a call of the library and its callbacks.
struct HttpClient::Transfer {
    const Source* source = nullptr; // null if there is a statement alone
    const Target* target = nullptr; // null if no answer is expected
    const std::function<bool()>* goesOn = nullptr;
    CURL* curl = nullptr;
    std::int64_t silenceMilliseconds = 0;

    std::unique_ptr<Gzip> gzip = nullptr;
    std::string bytes = {};  // of the source
    std::string packed = {}; // compressed, from `taken` on still to be sent
    std::size_t taken = 0;
    bool ended = false;
    std::int64_t sent = 0;

    std::string refusal = {}; // the start of an answer that is none
    std::exception_ptr thrown = nullptr;
    bool cancelled = false;
    bool silent = false;
    std::int64_t lastMoved = 0;
    curl_off_t moved = 0;

    std::size_t read(char* buffer, std::size_t room) {
        while (taken == packed.size() && !ended) {
            packed.clear();
            taken = 0;
            bytes.clear();
            ended = !(*source)(bytes);
            gzip->add(bytes, packed);
            if (ended) {
                gzip->finish(packed);
            }
        }
        const std::size_t count = std::min(room, packed.size() - taken);
        std::memcpy(buffer, packed.data() + taken, count);
        taken += count;
        sent += static_cast<std::int64_t>(count);
        return count;
    }

    void write(std::string_view part) {
        long status = 0;
        curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &status);
        if (status == success && target != nullptr) {
            (*target)(part);
        } else {
            refusal.append(part.substr(0, mostErrorBytes - std::min(mostErrorBytes, refusal.size())));
        }
    }

    bool mayGoOn(curl_off_t nowMoved) {
        if (nowMoved != moved || lastMoved == 0) {
            moved = nowMoved;
            lastMoved = platform::tickCount();
        }
        cancelled = *goesOn && !(*goesOn)();
        silent = platform::tickCount() - lastMoved > silenceMilliseconds;
        return !cancelled && !silent;
    }

    // An exception must not pass through the library.
    template <class Result, class Body>
    Result guarded(Result failed, Body body) {
        try {
            return body();
        } catch (...) {
            thrown = std::current_exception();
            return failed;
        }
    }

    static std::size_t readCallback(char* buffer, std::size_t size, std::size_t count, void* transfer) {
        auto& self = *static_cast<Transfer*>(transfer);
        return self.guarded(static_cast<std::size_t>(CURL_READFUNC_ABORT),
                            [&] { return self.read(buffer, size * count); });
    }
    static std::size_t writeCallback(const char* buffer, std::size_t size, std::size_t count,
                                     void* transfer) {
        auto& self = *static_cast<Transfer*>(transfer);
        const std::size_t failed = size * count + 1;
        return self.guarded(failed, [&] {
            self.write({buffer, size * count});
            return size * count;
        });
    }
    static int progressCallback(void* transfer, curl_off_t /*toCome*/, curl_off_t come, curl_off_t /*toGo*/,
                                curl_off_t gone) {
        auto& self = *static_cast<Transfer*>(transfer);
        return self.guarded(1, [&] { return self.mayGoOn(come + gone) ? 0 : 1; });
    }
};

class HttpClient::Handle {
public:
    Handle() {
        startLibrary();
        curl_ = curl_easy_init();
        if (curl_ == nullptr) {
            throw RuntimeError(errorNumber::outOfMemory);
        }
    }
    ~Handle() { curl_easy_cleanup(curl_); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    [[nodiscard]] CURL* get() const noexcept { return curl_; }

    // A library without an option that keeps others safe must not be used without it.
    template <class Value>
    void set(CURLoption option, Value value) {
        if (curl_easy_setopt(curl_, option, value) != CURLE_OK) {
            throw RuntimeError(errorNumber::invalidCall, "The library for HTTP lacks what this needs.");
        }
    }

    [[nodiscard]] std::string encoded(std::string_view text) const {
        const std::unique_ptr<char, decltype(&curl_free)> result(
            curl_easy_escape(curl_, text.data(), static_cast<int>(text.size())), &curl_free);
        if (!result) {
            throw RuntimeError(errorNumber::outOfMemory);
        }
        return text.empty() ? std::string() : std::string(result.get());
    }

private:
    CURL* curl_ = nullptr;
};

HttpClient::HttpClient(ServerUrl url, std::string password, std::function<bool()> goesOn, Limits limits)
    : url_(std::move(url)), password_(std::move(password)), goesOn_(std::move(goesOn)), limits_(limits),
      handle_(std::make_unique<Handle>()) {
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
    if (std::any_of(password_.begin(), password_.end(), isControl)) {
        throw RuntimeError(errorNumber::invalidCall, "The password holds a control character.");
    }
}

HttpClient::~HttpClient() = default;

void HttpClient::ask(std::string_view statement, const Target& target, const Parameters& parameters) {
    Transfer transfer;
    transfer.target = &target;
    run(transfer, statement, parameters);
}

std::string HttpClient::askText(std::string_view statement, const Parameters& parameters,
                                std::size_t mostBytes) {
    std::string answer;
    ask(
        statement,
        [&](std::string_view part) {
            if (part.size() > mostBytes - answer.size()) {
                throw ServerError(ServerError::Kind::strange, errorNumber::overflow,
                                  url_.shown() + " answers more than was asked for");
            }
            answer.append(part);
        },
        parameters);
    return answer;
}

void HttpClient::send(std::string_view statement, const Source& source, const Parameters& parameters) {
    Transfer transfer;
    transfer.source = &source;
    transfer.gzip = std::make_unique<Gzip>();
    Parameters all = parameters;
    all.emplace_back("query", statement);
    run(transfer, {}, all);
}

void HttpClient::run(Transfer& transfer, std::string_view body, const Parameters& parameters) {
    constexpr long sendBuffer = 256L * 1024;
    curl_easy_reset(handle_->get());
    std::string address = url_.shown() + "/";
    for (const auto& [name, value] : parameters) {
        address.append(address.ends_with('/') ? "?" : "&").append(handle_->encoded(name));
        address.append("=").append(handle_->encoded(value));
    }
    Headers headers;
    headers.add("X-ClickHouse-User: " + url_.user);
    if (!password_.empty()) {
        headers.add("X-ClickHouse-Key: " + password_);
    }
    headers.add("Expect:"); // which would wait for an answer before rows are sent
    headers.add("Content-Type: application/octet-stream");
    transfer.goesOn = &goesOn_;
    transfer.curl = handle_->get();
    transfer.silenceMilliseconds = limits_.silenceSeconds * millisecondsPerSecond;
    handle_->set(CURLOPT_URL, address.c_str());
    handle_->set(CURLOPT_NOSIGNAL, 1L);
    handle_->set(CURLOPT_PROTOCOLS_STR, url_.isSecure ? "https" : "http");
    handle_->set(CURLOPT_FOLLOWLOCATION, 0L);
    handle_->set(CURLOPT_PROXY, "");
    handle_->set(CURLOPT_NETRC, static_cast<long>(CURL_NETRC_IGNORED));
    handle_->set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    handle_->set(CURLOPT_CONNECTTIMEOUT, static_cast<long>(limits_.connectSeconds));
    handle_->set(CURLOPT_POST, 1L);
    handle_->set(CURLOPT_WRITEFUNCTION, &Transfer::writeCallback);
    handle_->set(CURLOPT_WRITEDATA, static_cast<void*>(&transfer));
    handle_->set(CURLOPT_NOPROGRESS, 0L);
    handle_->set(CURLOPT_XFERINFOFUNCTION, &Transfer::progressCallback);
    handle_->set(CURLOPT_XFERINFODATA, static_cast<void*>(&transfer));
    curl_easy_setopt(transfer.curl, CURLOPT_ACCEPT_ENCODING, "gzip"); // if the library can
    if (transfer.source != nullptr) {
        headers.add("Transfer-Encoding: chunked");
        headers.add("Content-Encoding: gzip");
        handle_->set(CURLOPT_UPLOAD_BUFFERSIZE, sendBuffer);
        handle_->set(CURLOPT_READFUNCTION, &Transfer::readCallback);
        handle_->set(CURLOPT_READDATA, static_cast<void*>(&transfer));
        // Rows cannot be sent twice if a connection that was kept turns out to be gone.
        handle_->set(CURLOPT_FRESH_CONNECT, 1L);
    } else {
        handle_->set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
        handle_->set(CURLOPT_POSTFIELDS, body.data());
    }
    handle_->set(CURLOPT_HTTPHEADER, headers.get());
    const CURLcode result = curl_easy_perform(transfer.curl);
    bytesSent_ += transfer.sent;
    requireSuccess(transfer, result);
}

void HttpClient::requireSuccess(Transfer& transfer, int result) const {
    if (transfer.thrown) {
        std::rethrow_exception(transfer.thrown);
    }
    long status = 0;
    curl_easy_getinfo(transfer.curl, CURLINFO_RESPONSE_CODE, &status);
    // A server that has refused breaks off; what it said before counts.
    if (result != CURLE_OK && (status < firstRefusal || transfer.cancelled)) {
        fail(transfer, result);
    }
    const char* kind = nullptr;
    curl_easy_getinfo(transfer.curl, CURLINFO_CONTENT_TYPE, &kind);
    const bool isPage = kind != nullptr && std::string_view(kind).starts_with("text/html");
    if (status != success || isPage || !transfer.refusal.empty()) {
        throw refusal(transfer);
    }
}

void HttpClient::fail(const Transfer& transfer, int result) const {
    const std::string server = url_.shown();
    if (transfer.cancelled) {
        throw ServerError(ServerError::Kind::cancelled, errorNumber::inputOutput, "This was cancelled.");
    }
    if (transfer.silent) {
        throw ServerError(ServerError::Kind::unreachable, errorNumber::inputOutput,
                          server + " has said nothing for " + std::to_string(limits_.silenceSeconds) +
                              " seconds");
    }
    const bool isUntrusted = result == CURLE_PEER_FAILED_VERIFICATION || result == CURLE_SSL_CACERT_BADFILE ||
                             result == CURLE_SSL_ISSUER_ERROR;
    const bool isStrange = result == CURLE_UNSUPPORTED_PROTOCOL || result == CURLE_WEIRD_SERVER_REPLY ||
                           result == CURLE_BAD_CONTENT_ENCODING;
    throw ServerError(isUntrusted ? ServerError::Kind::refused
                      : isStrange ? ServerError::Kind::strange
                                  : ServerError::Kind::unreachable,
                      errorNumber::inputOutput,
                      server + ": " + oneSafeLine(curl_easy_strerror(static_cast<CURLcode>(result))));
}

ServerError HttpClient::refusal(const Transfer& transfer) const {
    using Kind = ServerError::Kind;
    constexpr long unauthorized = 401;
    constexpr long forbidden = 403;
    constexpr long timedOut = 408;
    constexpr long tooMany = 429;
    const std::string server = url_.shown();
    long status = 0;
    curl_easy_getinfo(transfer.curl, CURLINFO_RESPONSE_CODE, &status);
    if (status >= firstRedirect && status < firstRefusal) {
        return {Kind::strange, errorNumber::inputOutput,
                server + " leads to another place, which is not followed"};
    }
    if (status < firstRefusal) {
        return {Kind::strange, errorNumber::inputOutput,
                server + " does not answer as a ClickHouse server does: " + oneSafeLine(transfer.refusal)};
    }
    const int code = codeOf(transfer.refusal);
    const bool mayPass =
        status == timedOut || status == tooMany || (status >= firstFailure && !isLasting(code));
    const bool isDenied = status == unauthorized || status == forbidden;
    std::string said = oneSafeLine(transfer.refusal);
    said = said.empty() ? "status " + std::to_string(status) : said;
    return {mayPass ? Kind::unreachable : Kind::refused,
            isDenied ? errorNumber::permissionDenied : errorNumber::inputOutput, server + " refuses: " + said,
            code};
}
