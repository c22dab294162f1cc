#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// The folders that were shown, one after the other, by their keys; one of them is the present one.
class History {
public:
    static constexpr std::size_t most = 1000; // the earliest ones are forgotten

    // Whether a folder can still be shown.
    using IsThere = std::function<bool(const std::string&)>;

    // Another folder is shown: it follows the present one, and those ahead are forgotten. Nothing happens if
    // it is the present one.
    void visit(std::string_view key);

    // The present folder has turned out to be this one, as a link leads elsewhere.
    void correct(std::string_view key);

    [[nodiscard]] bool hasBack() const noexcept { return present_ > 0; }
    [[nodiscard]] bool hasForward() const noexcept { return present_ + 1 < keys_.size(); }

    // Goes to the nearest folder before or after the present one that is still there, and returns it; empty
    // if there is none. Those that are gone are forgotten.
    [[nodiscard]] std::string back(const IsThere& isThere);
    [[nodiscard]] std::string forward(const IsThere& isThere);

    void clear();

private:
    std::vector<std::string> keys_;
    std::size_t present_ = 0;
};
