#include "support/loopback.h"

#include <winsock2.h>

#include <stdexcept>

namespace {

constexpr DWORD longestSilence = 20000; // milliseconds, so that no test hangs

class Socket final : public LoopbackSocket {
public:
    explicit Socket(SOCKET handle) : handle_(handle) {
        const char* const limit =
            reinterpret_cast<const char*>(&longestSilence); // NOLINT: as the call wants it
        ::setsockopt(handle_, SOL_SOCKET, SO_RCVTIMEO, limit, sizeof longestSilence);
        ::setsockopt(handle_, SOL_SOCKET, SO_SNDTIMEO, limit, sizeof longestSilence);
    }
    ~Socket() override { ::closesocket(handle_); }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    std::string read(std::size_t most) override {
        std::string bytes(most, '\0');
        const int count = ::recv(handle_, bytes.data(), static_cast<int>(most), 0);
        bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
        return bytes;
    }
    bool write(std::string_view bytes) override {
        while (!bytes.empty()) {
            const int count = ::send(handle_, bytes.data(), static_cast<int>(bytes.size()), 0);
            if (count <= 0) {
                return false;
            }
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    }

private:
    SOCKET handle_;
};

class Listener final : public LoopbackListener {
public:
    Listener() {
        constexpr WORD version = 0x0202;
        constexpr int waiting = 16;
        WSADATA data{};
        ::WSAStartup(version, &data);
        handle_ = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        int length = sizeof address;
        auto* const any = reinterpret_cast<sockaddr*>(&address); // NOLINT: as the call wants it
        if (handle_ == INVALID_SOCKET || ::bind(handle_, any, length) != 0 ||
            ::listen(handle_, waiting) != 0 || ::getsockname(handle_, any, &length) != 0) {
            throw std::runtime_error("no socket to listen at");
        }
        port_ = ntohs(address.sin_port);
    }
    ~Listener() override {
        ::closesocket(handle_);
        ::WSACleanup();
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    [[nodiscard]] int port() const override { return port_; }
    std::unique_ptr<LoopbackSocket> accept() override {
        constexpr long microseconds = 100000;
        fd_set waiting;
        FD_ZERO(&waiting);
        FD_SET(handle_, &waiting);
        timeval limit{0, microseconds};
        if (::select(0, &waiting, nullptr, nullptr, &limit) != 1) {
            return nullptr;
        }
        const SOCKET handle = ::accept(handle_, nullptr, nullptr);
        return handle == INVALID_SOCKET ? nullptr : std::make_unique<Socket>(handle);
    }

private:
    SOCKET handle_ = INVALID_SOCKET;
    int port_ = 0;
};

} // namespace

std::unique_ptr<LoopbackListener> LoopbackListener::open() {
    return std::make_unique<Listener>();
}
