#include "platform/systemError.h"

#include <windows.h>

#include <array>

#include "platform/win32/wide.h"

namespace platform {

std::span<const SystemErrorNumber> systemErrorNumbers() noexcept {
    static constexpr std::array<SystemErrorNumber, 24> numbers{{
        {ERROR_FILE_NOT_FOUND, errorNumber::fileNotFound},
        {ERROR_PATH_NOT_FOUND, errorNumber::pathNotFound},
        {ERROR_INVALID_DRIVE, errorNumber::pathNotFound},
        {ERROR_INVALID_NAME, errorNumber::pathNotFound},
        {ERROR_BAD_PATHNAME, errorNumber::pathNotFound},
        {ERROR_BAD_NETPATH, errorNumber::pathNotFound},
        {ERROR_BAD_NET_NAME, errorNumber::pathNotFound},
        {ERROR_DIRECTORY, errorNumber::pathNotFound},
        {ERROR_ACCESS_DENIED, errorNumber::permissionDenied},
        {ERROR_NETWORK_ACCESS_DENIED, errorNumber::permissionDenied},
        {ERROR_SHARING_VIOLATION, errorNumber::permissionDenied},
        {ERROR_LOCK_VIOLATION, errorNumber::permissionDenied},
        {ERROR_WRITE_PROTECT, errorNumber::permissionDenied},
        {ERROR_PRIVILEGE_NOT_HELD, errorNumber::permissionDenied},
        {ERROR_DISK_FULL, errorNumber::diskFull},
        {ERROR_HANDLE_DISK_FULL, errorNumber::diskFull},
        {ERROR_TOO_MANY_OPEN_FILES, errorNumber::tooManyFiles},
        {ERROR_FILE_EXISTS, errorNumber::fileAlreadyExists},
        {ERROR_ALREADY_EXISTS, errorNumber::fileAlreadyExists},
        {ERROR_CRC, errorNumber::inputOutput},
        {ERROR_READ_FAULT, errorNumber::inputOutput},
        {ERROR_WRITE_FAULT, errorNumber::inputOutput},
        {ERROR_GEN_FAILURE, errorNumber::inputOutput},
        {ERROR_IO_DEVICE, errorNumber::inputOutput},
    }};
    return numbers;
}

// In the user's language.
std::string systemMessage(std::int64_t code) {
    std::array<wchar_t, 512> text{};
    const DWORD length =
        ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                         static_cast<DWORD>(code), 0, text.data(), static_cast<DWORD>(text.size()), nullptr);
    std::string message = narrow({text.data(), length});
    while (!message.empty() && std::string_view(" .\r\n").find(message.back()) != std::string_view::npos) {
        message.pop_back();
    }
    return message.empty() ? "error " + std::to_string(code) : message;
}

} // namespace platform
