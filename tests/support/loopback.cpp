#include "support/loopback.h"

#include <algorithm>
#include <charconv>

namespace {

std::string decoded(std::string_view text) {
    constexpr int base = 16;
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        int code = static_cast<unsigned char>(text[i]);
        if (text[i] == '%') {
            std::from_chars(text.data() + i + 1, text.data() + std::min(i + 3, text.size()), code, base);
            i += 2;
        }
        result.push_back(static_cast<char>(code));
    }
    return result;
}

} // namespace

LoopbackServer::Exchange::Exchange(LoopbackSocket& socket) : socket_(socket) {
    constexpr std::string_view end = "\r\n\r\n";
    while (pending_.find(end) == std::string::npos && fill()) {
    }
    const std::size_t length = std::min(pending_.find(end), pending_.size() - end.size()) + end.size();
    head_ = take(length);
}

bool LoopbackServer::Exchange::fill() {
    constexpr std::size_t most = 65536;
    const std::string more = socket_.read(most);
    pending_ += more;
    return !more.empty();
}

std::string LoopbackServer::Exchange::take(std::size_t count) {
    while (pending_.size() < count && fill()) {
    }
    std::string result = pending_.substr(0, count);
    pending_.erase(0, result.size());
    return result;
}

std::string LoopbackServer::Exchange::line() {
    while (pending_.find("\r\n") == std::string::npos && fill()) {
    }
    std::string result = take(std::min(pending_.find("\r\n"), pending_.size()));
    take(2);
    return result;
}

std::string LoopbackServer::Exchange::chunks() {
    constexpr int base = 16;
    std::string result;
    while (true) {
        const std::string length = line();
        std::size_t count = 0;
        std::from_chars(length.data(), length.data() + length.size(), count, base);
        if (count == 0) {
            return result;
        }
        result += take(count);
        take(2);
    }
}

const std::string& LoopbackServer::Exchange::body() {
    if (!body_) {
        body_ = readBody();
    }
    return *body_;
}

std::string LoopbackServer::Exchange::readBody() {
    constexpr std::string_view name = "Content-Length: ";
    if (head_.find("Transfer-Encoding: chunked") != std::string::npos) {
        return chunks();
    }
    const std::size_t at = head_.find(name);
    std::size_t count = 0;
    if (at != std::string::npos) {
        std::from_chars(head_.data() + at + name.size(), head_.data() + head_.size(), count);
    }
    return take(count);
}

void LoopbackServer::Exchange::readSome(std::size_t bytes) {
    static_cast<void>(take(bytes));
}

std::string LoopbackServer::Exchange::statement() {
    constexpr std::string_view name = "query=";
    const std::string target = head_.substr(0, head_.find(" HTTP"));
    const std::size_t at = target.find(name);
    return at == std::string::npos ? body() : decoded(std::string_view(target).substr(at + name.size()));
}

void LoopbackServer::Exchange::answer(std::string_view body, std::string_view status,
                                      std::string_view headers) {
    std::string text = "HTTP/1.1 ";
    text.append(status).append("\r\nConnection: close\r\n").append(headers);
    text.append("Content-Length: ").append(std::to_string(body.size())).append("\r\n\r\n").append(body);
    send(text);
}

LoopbackServer::LoopbackServer(std::function<void(Exchange&)> handler)
    : listener_(LoopbackListener::open()), handler_(std::move(handler)), thread_([this] { run(); }) {}

LoopbackServer::~LoopbackServer() {
    ending_ = true;
    thread_.join();
}

void LoopbackServer::run() {
    while (!ending_) {
        const auto socket = listener_->accept();
        if (!socket) {
            continue;
        }
        Exchange exchange(*socket);
        const std::lock_guard lock(mutex_);
        heads_.push_back(exchange.head());
        handler_(exchange);
    }
}

std::string LoopbackServer::url(std::string_view database) const {
    return "http://127.0.0.1:" + std::to_string(port()) + "/" + std::string(database);
}

std::vector<std::string> LoopbackServer::heads() const {
    const std::lock_guard lock(mutex_);
    return heads_;
}
