#include "platform/linux/processMaker.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <set>
#include <vector>

namespace platform {

namespace {

// A message to the process set aside is a pid: that of a process to be ended, or this with a socket for a new
// one. Its answer is the new one's pid.
constexpr pid_t newProcess = 0;

constexpr int lookAgainMilliseconds = 200;
constexpr int patienceMilliseconds = 1000; // a process is made at once

struct Message {
    pid_t process = -1;
    int socket = -1;
};

// Space for one descriptor beside a message.
union Attachment {
    cmsghdr header;
    std::array<char, CMSG_SPACE(sizeof(int))> bytes;
};

msghdr messageAround(iovec& bytes, Attachment& attachment, bool withAttachment) {
    msghdr message{};
    message.msg_iov = &bytes;
    message.msg_iovlen = 1;
    if (withAttachment) {
        message.msg_control = attachment.bytes.data();
        message.msg_controllen = attachment.bytes.size();
    }
    return message;
}

bool sendMessage(int control, Message sent) {
    iovec bytes{&sent.process, sizeof sent.process};
    Attachment attachment{};
    msghdr message = messageAround(bytes, attachment, sent.socket >= 0);
    if (sent.socket >= 0) {
        cmsghdr* const header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(sizeof sent.socket);
        std::memcpy(CMSG_DATA(header), &sent.socket, sizeof sent.socket);
    }
    ssize_t count = 0;
    do {
        count = ::sendmsg(control, &message, MSG_NOSIGNAL | MSG_DONTWAIT);
    } while (count < 0 && errno == EINTR);
    return count == sizeof sent.process;
}

// False if that takes too long, as when somebody has stopped the process.
bool hasAnswer(int control) {
    pollfd state{control, POLLIN, 0};
    return ::poll(&state, 1, patienceMilliseconds) > 0;
}

// False if the other side is gone.
bool receiveMessage(int control, Message& received) {
    iovec bytes{&received.process, sizeof received.process};
    Attachment attachment{};
    msghdr message = messageAround(bytes, attachment, true);
    ssize_t count = 0;
    do {
        count = ::recvmsg(control, &message, MSG_CMSG_CLOEXEC);
    } while (count < 0 && errno == EINTR);
    const cmsghdr* const header = count > 0 ? CMSG_FIRSTHDR(&message) : nullptr;
    if (header != nullptr && header->cmsg_type == SCM_RIGHTS) {
        std::memcpy(&received.socket, CMSG_DATA(header), sizeof received.socket);
    }
    return count == sizeof received.process;
}

// --- in the other processes -------------------------------------------------------------------------------

// Keeps nothing of what the program has open, above all no locks and no one's pipes, and does not take part
// in what the terminal tells it.
void leaveAllBut(int socket) {
    for (const int ignored : {SIGINT, SIGQUIT, SIGHUP}) {
        std::signal(ignored, SIG_IGN);
    }
    if (::chdir("/") != 0) { // so that it keeps no volume in use
        ::_exit(1);
    }
    const auto number = static_cast<unsigned>(socket);
    if (socket > STDERR_FILENO + 1) {
        ::close_range(STDERR_FILENO + 1, number - 1, 0);
    }
    ::close_range(std::max(number, static_cast<unsigned>(STDERR_FILENO)) + 1, ~0U, 0);
    const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC); // which needs a free number
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (stream != socket) {
            ::dup2(nothing, stream);
        }
    }
}

[[noreturn]] void work(int socket, const ProcessMaker::Work& work, pid_t maker) {
    try {
        ::prctl(PR_SET_NAME, "spannory-volume");
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != maker) {
            ::_exit(0);
        }
        work(socket);
    } catch (...) { // no memory; the program notices the end
    }
    ::_exit(0);
}

// Makes and ends processes until the program is gone, and then ends those that are left: one that waits for a
// volume would not notice.
class Maker {
public:
    Maker(int control, const ProcessMaker::Work& work) : control_(control), work_(work) {}

    void run() {
        for (pollfd state{control_, POLLIN, 0};;) {
            const int timeout = ending_.empty() ? -1 : lookAgainMilliseconds;
            if (::poll(&state, 1, timeout) > 0) {
                Message message;
                if (!receiveMessage(control_, message)) {
                    break;
                }
                handle(message);
            }
            std::erase_if(ending_, [](pid_t process) { return ::waitpid(process, nullptr, WNOHANG) != 0; });
        }
        for (const pid_t process : working_) {
            ::kill(process, SIGKILL);
        }
    }

private:
    void handle(const Message& message) {
        if (message.process == newProcess) {
            sendMessage(control_, {make(message.socket)});
        } else if (working_.erase(message.process) != 0) {
            ::kill(message.process, SIGKILL);
            ending_.push_back(message.process);
        }
    }

    pid_t make(int received) {
        const Descriptor socket(received);
        if (received < 0) { // the message came without it, for want of a free number
            return -1;
        }
        const pid_t self = ::getpid();
        const pid_t process = ::fork();
        if (process == 0) {
            leaveAllBut(received);
            work(received, work_, self);
        }
        if (process > 0) {
            working_.insert(process);
        }
        return process;
    }

    int control_;
    const ProcessMaker::Work& work_;
    std::set<pid_t> working_;
    std::vector<pid_t> ending_;
};

} // namespace

pid_t ProcessMaker::make(const Descriptor& socket) {
    const std::lock_guard guard(mutex_);
    constexpr int attempts = 2; // the process set aside may have been ended by others
    for (int attempt = 0; attempt < attempts && (control_.isOpen() || setAside()); ++attempt) {
        Message answer;
        if (sendMessage(control_.get(), {newProcess, socket.get()}) && hasAnswer(control_.get()) &&
            receiveMessage(control_.get(), answer)) {
            return answer.process;
        }
        control_.reset();
        ::kill(setAside_, SIGKILL);
        ::waitpid(setAside_, nullptr, 0);
    }
    return -1;
}

void ProcessMaker::end(pid_t process) {
    const std::lock_guard guard(mutex_);
    if (control_.isOpen()) {
        sendMessage(control_.get(), {process});
    }
}

bool ProcessMaker::setAside() {
    std::array<int, 2> sockets{-1, -1};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, sockets.data()) != 0) {
        return false;
    }
    control_ = Descriptor(sockets[0]);
    const Descriptor other(sockets[1]);
    setAside_ = ::fork();
    if (setAside_ == 0) {
        leaveAllBut(other.get());
        ::prctl(PR_SET_NAME, "spannory-maker");
        try {
            Maker(other.get(), work_).run();
        } catch (...) { // no memory; the program notices the end
        }
        ::_exit(0);
    }
    if (setAside_ < 0) {
        control_.reset();
    }
    return setAside_ > 0;
}

} // namespace platform
