#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The accounts that own entries, by numbers of our own, as their identifiers are long. Shared by all threads.
namespace platform {

inline constexpr std::uint32_t accountNotAsked = 0;
inline constexpr std::uint32_t unknownAccount = 1;

// The number of the account that owns the entry at the path (widePath, wide.h).
class AccountReader {
public:
    [[nodiscard]] std::uint32_t accountOf(const std::wstring& path);

private:
    std::vector<unsigned char> descriptor_ = std::vector<unsigned char>(1024);
};

// Domain, "\", account; "unknown" if that cannot be found out.
[[nodiscard]] std::string accountName(std::uint32_t account);

} // namespace platform
