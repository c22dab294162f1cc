#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

// The numbers that the program's errors carry. They are what the error log's first field records.
namespace errorNumber {
inline constexpr int invalidCall = 5;
inline constexpr int overflow = 6;
inline constexpr int outOfMemory = 7;
inline constexpr int subscriptOutOfRange = 9;
inline constexpr int typeMismatch = 13;
inline constexpr int fileNotFound = 53;
inline constexpr int inputOutput = 57;
inline constexpr int fileAlreadyExists = 58;
inline constexpr int diskFull = 61;
inline constexpr int tooManyFiles = 67;
inline constexpr int permissionDenied = 70;
inline constexpr int pathFileAccess = 75;
inline constexpr int pathNotFound = 76;
inline constexpr int duplicateKey = 457;
inline constexpr int dialogCancelled = 32755;
inline constexpr int elementNotFound = 35601;
inline constexpr int keyNotUnique = 35602; // a tree's
} // namespace errorNumber

// A run-time error: a number and a description, as the error log writes them.
// Thrown by every layer; trapped by modGlobal::trapped, which logs it.
class RuntimeError : public std::runtime_error {
public:
    RuntimeError(int number, const std::string& description)
        : std::runtime_error(description), number_(number) {}

    // The number's standard description alone: "Overflow" for 6.
    explicit RuntimeError(int number);

    // The standard description, a colon and what it concerns, usually a displayed path:
    // "Disk full: /srv/report.html".
    [[nodiscard]] static RuntimeError about(int number, std::string_view subject);

    [[nodiscard]] int number() const noexcept { return number_; }

private:
    int number_;
};
