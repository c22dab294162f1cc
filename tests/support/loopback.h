#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

// Connections of this machine to itself; implemented in linux/ and win32/.
class LoopbackSocket {
public:
    virtual ~LoopbackSocket() = default;
    // Some bytes that have come; empty at the end, or after an error.
    virtual std::string read(std::size_t most) = 0;
    // False if nobody takes them.
    virtual bool write(std::string_view bytes) = 0;
};

class LoopbackListener {
public:
    virtual ~LoopbackListener() = default;
    [[nodiscard]] virtual int port() const = 0;
    // The next connection; null if there is none within a tenth of a second.
    virtual std::unique_ptr<LoopbackSocket> accept() = 0;

    [[nodiscard]] static std::unique_ptr<LoopbackListener> open();
};

// A small server of HTTP, which does to each request what the test wants, on a thread of its own. One request
// a connection, one after the other.
class LoopbackServer {
public:
    class Exchange {
    public:
        explicit Exchange(LoopbackSocket& socket);
        [[nodiscard]] const std::string& head() const { return head_; }
        // The statement: of the query, decoded, or what the body is.
        [[nodiscard]] std::string statement();
        // As it was sent, without the marks of its chunks.
        const std::string& body();
        // Takes so many bytes and leaves the rest.
        void readSome(std::size_t bytes);
        void send(std::string_view bytes) { socket_.write(bytes); }
        void answer(std::string_view body, std::string_view status = "200 OK", std::string_view headers = "");

    private:
        bool fill();
        std::string take(std::size_t count);
        std::string line();
        std::string chunks();
        std::string readBody();

        LoopbackSocket& socket_;
        std::string head_;
        std::string pending_;
        std::optional<std::string> body_;
    };

    explicit LoopbackServer(std::function<void(Exchange&)> handler);
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    [[nodiscard]] std::string url(std::string_view database = "spannory") const;
    [[nodiscard]] int port() const { return listener_->port(); }
    [[nodiscard]] std::vector<std::string> heads() const;
    // Waits for the handler to end. Around what a test does, it lets both read what the other has written.
    void settle() const { const std::lock_guard lock(mutex_); }
    // A handler that waits asks this now and then.
    [[nodiscard]] bool isEnding() const { return ending_; }

private:
    void run();

    std::unique_ptr<LoopbackListener> listener_;
    std::function<void(Exchange&)> handler_;
    mutable std::mutex mutex_;
    std::vector<std::string> heads_;
    std::atomic<bool> ending_ = false;
    std::thread thread_; // the last, so that it finds the others made
};
