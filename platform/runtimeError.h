#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

// The numbers of the program's errors, as recorded in the first field of the error log.
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
inline constexpr int keyNotUnique = 35602; // in a tree
} // namespace errorNumber

// A run-time error: a number and a description, as written to the error log. Thrown by every layer, and
// caught by modGlobal::trapped, which logs it.
class RuntimeError : public std::runtime_error {
public:
    RuntimeError(int number, const std::string& description)
        : std::runtime_error(description), number_(number) {}

    // With the number's standard description: "Overflow" for 6.
    explicit RuntimeError(int number);

    // The standard description, a colon and the subject: "Type mismatch: getOwnerInfo=maybe". For files, see
    // platform/fileError.h.
    [[nodiscard]] static RuntimeError about(int number, std::string_view subject);

    [[nodiscard]] int number() const noexcept { return number_; }

private:
    int number_;
};
