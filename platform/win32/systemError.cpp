#include "platform/win32/systemError.h"

#include <array>

#include "platform/paths.h"
#include "platform/text.h"
#include "platform/win32/wide.h"

namespace platform {

namespace {

int numberOf(DWORD errorCode) {
    switch (errorCode) {
    case ERROR_FILE_NOT_FOUND:
        return errorNumber::fileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_DIRECTORY:
        return errorNumber::pathNotFound;
    case ERROR_ACCESS_DENIED:
    case ERROR_NETWORK_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
    case ERROR_PRIVILEGE_NOT_HELD:
        return errorNumber::permissionDenied;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return errorNumber::diskFull;
    case ERROR_TOO_MANY_OPEN_FILES:
        return errorNumber::tooManyFiles;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return errorNumber::fileAlreadyExists;
    case ERROR_CRC:
    case ERROR_READ_FAULT:
    case ERROR_WRITE_FAULT:
    case ERROR_GEN_FAILURE:
    case ERROR_IO_DEVICE:
        return errorNumber::inputOutput;
    default:
        return errorNumber::pathFileAccess;
    }
}

} // namespace

RuntimeError systemError(DWORD errorCode, std::string_view path) {
    const int number = numberOf(errorCode);
    std::string subject = displayPath(path);
    if (number == errorNumber::pathFileAccess) {
        subject += " (" + systemMessage(errorCode) + ")";
    }
    return RuntimeError::about(number, subject);
}

std::string systemMessage(DWORD errorCode) {
    if (errorCode == folderInsteadOfFile) {
        return "Is a directory"; // not every version of the system has words for it
    }
    std::array<wchar_t, 512> text{};
    const DWORD length =
        ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, errorCode, 0,
                         text.data(), static_cast<DWORD>(text.size()), nullptr);
    std::string message = narrow({text.data(), length});
    while (!message.empty() && std::string_view(" .\r\n").find(message.back()) != std::string_view::npos) {
        message.pop_back();
    }
    return message.empty() ? "error " + std::to_string(errorCode) : message;
}

} // namespace platform
