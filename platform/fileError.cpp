#include "platform/fileError.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "platform/files.h"
#include "platform/paths.h"

namespace platform {

namespace {

// In the order of NotDone.
constexpr std::array<std::string_view, 6> participles{"read",    "written", "created",
                                                      "deleted", "opened",  "loaded"};

constexpr std::array<std::pair<int, std::string_view>, 9> causes{{
    {errorNumber::overflow, "The file is too large"},
    {errorNumber::outOfMemory, "There is not enough memory"},
    {errorNumber::fileNotFound, "There is no such file"},
    {errorNumber::inputOutput, "The disk or the network has failed"},
    {errorNumber::fileAlreadyExists, "There is a file of that name already"},
    {errorNumber::diskFull, "The disk is full"},
    {errorNumber::tooManyFiles, "Too many files are open"},
    {errorNumber::permissionDenied, "Permission is denied"},
    {errorNumber::pathNotFound, "There is no such folder"},
}};

std::string_view causeOf(int number) {
    const auto* const found = std::ranges::find(causes, number, &std::pair<int, std::string_view>::first);
    return found == causes.end() ? "The system refuses it" : found->second;
}

} // namespace

RuntimeError fileError(int number, std::string_view path, NotDone notDone) {
    return fileError(number, causeOf(number), path, notDone);
}

RuntimeError fileError(int number, std::string_view cause, std::string_view path, NotDone notDone) {
    std::string description(cause);
    description.append(": ").append(path == standardOutput ? "the standard output" : displayPath(path));
    description.append(" was not ").append(participles[static_cast<std::size_t>(notDone)]).append(".");
    return {number, description};
}

} // namespace platform
