#pragma once

#include <unistd.h>

// The superuser may read and write everything; during a scope the process runs as another user.
class Unprivileged {
public:
    Unprivileged() : is_(::geteuid() != 0 || (::setegid(nobody) == 0 && ::seteuid(nobody) == 0)) {}
    ~Unprivileged() { is_ = ::seteuid(::getuid()) == 0 && ::setegid(::getgid()) == 0; }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

    // False if the superuser cannot become another user.
    [[nodiscard]] bool is() const { return is_; }

private:
    static constexpr unsigned nobody = 65534;
    bool is_;
};
