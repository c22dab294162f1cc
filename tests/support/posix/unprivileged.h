#pragma once

#include <unistd.h>

// Root reads and writes everything; for the length of a scope it is somebody else.
class Unprivileged {
public:
    Unprivileged() : is_(::geteuid() != 0 || (::setegid(nobody) == 0 && ::seteuid(nobody) == 0)) {}
    ~Unprivileged() { is_ = ::seteuid(::getuid()) == 0 && ::setegid(::getgid()) == 0; }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

    // False where the superuser cannot become anybody else.
    [[nodiscard]] bool is() const { return is_; }

private:
    static constexpr unsigned nobody = 65534;
    bool is_;
};
