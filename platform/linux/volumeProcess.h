#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

#include "platform/linux/descriptor.h"
#include "platform/linux/processMaker.h"

namespace platform {

// A process of its own for calls that may never return. A thread would not do: while one waits in a call that
// not even a kill ends, as for an answer of a FUSE server that hangs, its process cannot end either.
class VolumeProcess {
public:
    using Piece = std::function<void(std::string_view)>;

    // Answers a request in any number of pieces; its result goes back, too.
    using Serve = std::function<int(std::string_view request, const Piece& answer)>;

    struct Wait {
        std::chrono::milliseconds patience; // without a piece
        std::function<bool()> goesOn;       // called some 20 times a second; may be empty
    };

    // What the other process does: answers requests until the program closes the socket.
    static void serve(int socket, const Serve& serve);

    // The maker's processes serve.
    explicit VolumeProcess(ProcessMaker& maker);

    // Ends the process, but does not wait until it has ended.
    ~VolumeProcess();
    VolumeProcess(const VolumeProcess&) = delete;
    VolumeProcess& operator=(const VolumeProcess&) = delete;

    // What `serve` returned; ETIMEDOUT if patience ended, ECANCELED if goesOn said no, EIO if the process is
    // gone, EAGAIN if the system had no process or files for it. Behind any of these, the process must not be
    // asked again.
    int ask(std::string_view request, const Piece& take, const Wait& wait);

    // True while a request has no complete answer. Asks, but does not wait.
    [[nodiscard]] bool isWaiting();

    // How long it has been without a piece.
    [[nodiscard]] std::chrono::milliseconds silence() const;

private:
    using Clock = std::chrono::steady_clock;

    bool receive(const Piece& take);
    bool takePieces(const Piece& take);

    ProcessMaker& maker_;
    pid_t process_ = -1;
    Descriptor socket_;
    std::string received_; // not yet taken
    bool isAnswered_ = true;
    int result_ = 0;
    Clock::time_point lastPiece_;
};

} // namespace platform
