#pragma once

#include <unistd.h>

#include <utility>

namespace platform {

// An open file descriptor, closed when its owner is destroyed.
class Descriptor {
public:
    explicit Descriptor(int value = -1) noexcept : value_(value) {}
    ~Descriptor() { reset(); }
    Descriptor(Descriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }

    [[nodiscard]] int get() const noexcept { return value_; }
    [[nodiscard]] bool isOpen() const noexcept { return value_ >= 0; }
    [[nodiscard]] int release() noexcept { return std::exchange(value_, -1); }
    void reset() noexcept {
        if (value_ >= 0) {
            ::close(std::exchange(value_, -1));
        }
    }

private:
    int value_;
};

} // namespace platform
