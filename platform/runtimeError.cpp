#include "platform/runtimeError.h"

#include <array>
#include <utility>

namespace {

constexpr std::array<std::pair<int, const char*>, 16> descriptions{{
    {errorNumber::invalidCall, "Invalid procedure call or argument"},
    {errorNumber::overflow, "Overflow"},
    {errorNumber::outOfMemory, "Out of memory"},
    {errorNumber::subscriptOutOfRange, "Subscript out of range"},
    {errorNumber::typeMismatch, "Type mismatch"},
    {errorNumber::fileNotFound, "File not found"},
    {errorNumber::inputOutput, "Device I/O error"},
    {errorNumber::fileAlreadyExists, "File already exists"},
    {errorNumber::diskFull, "Disk full"},
    {errorNumber::tooManyFiles, "Too many files"},
    {errorNumber::permissionDenied, "Permission denied"},
    {errorNumber::pathFileAccess, "Path/File access error"},
    {errorNumber::pathNotFound, "Path not found"},
    {errorNumber::duplicateKey, "This key is already associated with an element of this collection"},
    {errorNumber::elementNotFound, "Element not found"},
    {errorNumber::keyNotUnique, "Key is not unique in collection"},
}};

std::string standardDescription(int number) {
    for (const auto& [known, text] : descriptions) {
        if (known == number) {
            return text;
        }
    }
    return "Application-defined or object-defined error";
}

} // namespace

RuntimeError::RuntimeError(int number) : RuntimeError(number, standardDescription(number)) {}

RuntimeError RuntimeError::about(int number, std::string_view subject) {
    return {number, standardDescription(number) + ": " + std::string(subject)};
}
