#include "support/loopback.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

namespace {

constexpr int longestSilence = 20; // seconds, so that no test hangs

class Socket final : public LoopbackSocket {
public:
    explicit Socket(int descriptor) : descriptor_(descriptor) {
        const timeval limit{longestSilence, 0};
        ::setsockopt(descriptor_, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
        ::setsockopt(descriptor_, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
    }
    ~Socket() override { ::close(descriptor_); }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    std::string read(std::size_t most) override {
        std::string bytes(most, '\0');
        const ssize_t count = ::recv(descriptor_, bytes.data(), most, 0);
        bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
        return bytes;
    }
    bool write(std::string_view bytes) override {
        while (!bytes.empty()) {
            const ssize_t count = ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (count <= 0) {
                return false;
            }
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    }

private:
    int descriptor_;
};

class Listener final : public LoopbackListener {
public:
    Listener() {
        constexpr int waiting = 16;
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        auto* const any = reinterpret_cast<sockaddr*>(&address); // NOLINT: as the call wants it
        if (descriptor_ < 0 || ::bind(descriptor_, any, length) != 0 || ::listen(descriptor_, waiting) != 0 ||
            ::getsockname(descriptor_, any, &length) != 0) {
            throw std::runtime_error("no socket to listen at");
        }
        port_ = ntohs(address.sin_port);
    }
    ~Listener() override { ::close(descriptor_); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    [[nodiscard]] int port() const override { return port_; }
    std::unique_ptr<LoopbackSocket> accept() override {
        constexpr int milliseconds = 100;
        pollfd waiting{descriptor_, POLLIN, 0};
        if (::poll(&waiting, 1, milliseconds) != 1) {
            return nullptr;
        }
        const int descriptor = ::accept4(descriptor_, nullptr, nullptr, SOCK_CLOEXEC);
        return descriptor < 0 ? nullptr : std::make_unique<Socket>(descriptor);
    }

private:
    int descriptor_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    int port_ = 0;
};

} // namespace

std::unique_ptr<LoopbackListener> LoopbackListener::open() {
    return std::make_unique<Listener>();
}
