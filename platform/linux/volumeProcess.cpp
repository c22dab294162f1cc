#include "platform/linux/volumeProcess.h"

#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>

namespace platform {

namespace {

using Length = std::uint32_t;

constexpr Length isResult = 0xFFFFFFFF; // in place of a piece's length; an int follows
constexpr std::size_t sentAtOnce = 4096;
constexpr int pollMilliseconds = 50;

bool sendAll(int socket, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return true;
}

template <class Number>
void append(std::string& text, Number number) {
    text.append(reinterpret_cast<const char*>(&number), sizeof number); // NOLINT: bytes between two copies
}

template <class Number>
Number numberAt(std::string_view bytes) {
    Number number{};
    std::memcpy(&number, bytes.data(), sizeof number);
    return number;
}

// --- in the other process ---------------------------------------------------------------------------------

bool receiveExactly(int socket, char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t got = ::recv(socket, bytes, count, 0);
        if (got == 0 || (got < 0 && errno != EINTR)) {
            return false;
        }
        if (got > 0) {
            bytes += got;
            count -= static_cast<std::size_t>(got);
        }
    }
    return true;
}

} // namespace

void VolumeProcess::serve(int socket, const Serve& serve) {
    std::string request;
    std::string answer;
    for (Length length = 0;
         receiveExactly(socket, reinterpret_cast<char*>(&length), sizeof length);) { // NOLINT
        request.resize(length);
        if (!receiveExactly(socket, request.data(), length)) {
            return;
        }
        answer.clear();
        const int result = serve(request, [&](std::string_view piece) {
            append(answer, static_cast<Length>(piece.size()));
            answer += piece;
            if (answer.size() >= sentAtOnce) {
                sendAll(socket, answer);
                answer.clear();
            }
        });
        append(answer, isResult);
        append(answer, result);
        if (!sendAll(socket, answer)) {
            return;
        }
    }
}

// --- in the program ---------------------------------------------------------------------------------------

VolumeProcess::VolumeProcess(ProcessMaker& maker) : maker_(maker) {
    std::array<int, 2> sockets{-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()) != 0) {
        return;
    }
    socket_ = Descriptor(sockets[0]);
    process_ = maker_.make(Descriptor(sockets[1]));
    if (process_ < 0) {
        socket_.reset();
    }
}

VolumeProcess::~VolumeProcess() {
    if (process_ > 0) {
        maker_.end(process_);
    }
}

int VolumeProcess::ask(std::string_view request, const Piece& take, const Wait& wait) {
    std::string sent;
    append(sent, static_cast<Length>(request.size()));
    sent += request;
    isAnswered_ = false;
    lastPiece_ = Clock::now();
    if (!socket_.isOpen()) {
        return EAGAIN;
    }
    if (!sendAll(socket_.get(), sent)) {
        return EIO;
    }
    for (auto lastCall = Clock::now(); !isAnswered_;) {
        pollfd state{socket_.get(), POLLIN, 0};
        const bool isReady = ::poll(&state, 1, pollMilliseconds) > 0;
        if (isReady && !receive(take)) {
            return EIO;
        }
        const auto now = Clock::now();
        if (!isAnswered_ && wait.goesOn && now - lastCall >= std::chrono::milliseconds(pollMilliseconds)) {
            lastCall = now;
            if (!wait.goesOn()) {
                return ECANCELED;
            }
        }
        if (!isAnswered_ && silence() > wait.patience) {
            return ETIMEDOUT;
        }
    }
    return result_;
}

bool VolumeProcess::isWaiting() {
    pollfd state{socket_.get(), POLLIN, 0};
    bool isThere = true;
    while (!isAnswered_ && isThere && ::poll(&state, 1, 0) > 0) {
        isThere = receive([](std::string_view) {});
    }
    return !isAnswered_ && isThere;
}

std::chrono::milliseconds VolumeProcess::silence() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - lastPiece_);
}

// False if the process is gone.
bool VolumeProcess::receive(const Piece& take) {
    constexpr std::size_t bufferSize = std::size_t{64} << 10;
    std::array<char, bufferSize> buffer; // NOLINT: filled by the call
    const ssize_t count = ::recv(socket_.get(), buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (count <= 0) {
        return count < 0 && (errno == EINTR || errno == EAGAIN);
    }
    lastPiece_ = Clock::now();
    received_.append(buffer.data(), static_cast<std::size_t>(count));
    return takePieces(take);
}

bool VolumeProcess::takePieces(const Piece& take) {
    std::string_view rest = received_;
    while (rest.size() >= sizeof(Length)) {
        const auto length = numberAt<Length>(rest);
        const std::size_t size = length == isResult ? sizeof result_ : length;
        if (rest.size() < sizeof length + size) {
            break;
        }
        const std::string_view bytes = rest.substr(sizeof length, size);
        rest.remove_prefix(sizeof length + size);
        if (length == isResult) {
            result_ = numberAt<int>(bytes);
            isAnswered_ = true;
        } else {
            take(bytes);
        }
    }
    received_.erase(0, received_.size() - rest.size());
    return true;
}

} // namespace platform
