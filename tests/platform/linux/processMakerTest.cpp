#include "platform/linux/processMaker.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

namespace {

using platform::Descriptor;
using platform::ProcessMaker;

// Tells its maker, and waits to be ended.
void tellMaker(int socket) {
    const pid_t maker = ::getppid();
    static_cast<void>(::send(socket, &maker, sizeof maker, MSG_NOSIGNAL));
    char nothing = 0;
    static_cast<void>(::recv(socket, &nothing, 1, 0));
}

struct Made {
    explicit Made(ProcessMaker& from) {
        std::array<int, 2> sockets{-1, -1};
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()), 0);
        socket = Descriptor(sockets[0]);
        process = from.make(Descriptor(sockets[1]));
        EXPECT_EQ(::recv(socket.get(), &maker, sizeof maker, 0), static_cast<ssize_t>(sizeof maker));
    }
    Descriptor socket;
    pid_t process = -1;
    pid_t maker = -1;
};

// Or waits for whoever is to take note of it.
bool hasEnded(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    const std::string line(std::istreambuf_iterator<char>(file), {});
    return line.empty() || line.find(") Z") != std::string::npos;
}

bool ends(pid_t process) {
    constexpr int looks = 100;
    for (int i = 0; i < looks && !hasEnded(process); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return hasEnded(process);
}

} // namespace

TEST(ProcessMaker, endsWhatItMadeAndLeavesTheOthers) {
    ProcessMaker maker(tellMaker);
    const Made first(maker);
    const Made second(maker);
    EXPECT_EQ(first.maker, second.maker);
    EXPECT_NE(first.maker, ::getpid());
    maker.end(first.process);
    EXPECT_TRUE(ends(first.process));
    EXPECT_FALSE(hasEnded(second.process));
}

// Whatever somebody does to the process that was set aside.
TEST(ProcessMaker, goesOnWithAnotherOne) {
    for (const int signal : {SIGKILL, SIGSTOP}) {
        SCOPED_TRACE(signal);
        ProcessMaker maker(tellMaker);
        const Made first(maker);
        ASSERT_EQ(::kill(first.maker, signal), 0);
        const Made second(maker);
        EXPECT_GT(second.process, 0);
        EXPECT_NE(second.maker, first.maker);
        EXPECT_TRUE(ends(first.process)) << "nobody else would end it";
    }
}
