#pragma once

#include <memory>
#include <string>
#include <string_view>

// Compresses a stream piece by piece, in the form of gzip files. Throws RuntimeError 7 without memory.
class Gzip {
public:
    Gzip();
    ~Gzip();
    Gzip(const Gzip&) = delete;
    Gzip& operator=(const Gzip&) = delete;

    // Appends what has become of the bytes so far; some may stay inside.
    void add(std::string_view bytes, std::string& result);
    // Appends the rest. Nothing can be added then.
    void finish(std::string& result);

private:
    struct State;
    std::unique_ptr<State> state_;
};
