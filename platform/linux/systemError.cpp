#include "platform/systemError.h"

#include <array>
#include <cerrno>
#include <system_error>

namespace platform {

std::span<const SystemErrorNumber> systemErrorNumbers() noexcept {
    static constexpr std::array<SystemErrorNumber, 11> numbers{{
        {ENOENT, errorNumber::fileNotFound},
        {ENOTDIR, errorNumber::pathNotFound},
        {EACCES, errorNumber::permissionDenied},
        {EPERM, errorNumber::permissionDenied},
        {ENOSPC, errorNumber::diskFull},
        {EDQUOT, errorNumber::diskFull},
        {EFBIG, errorNumber::diskFull}, // the largest file that the user may have
        {EMFILE, errorNumber::tooManyFiles},
        {ENFILE, errorNumber::tooManyFiles},
        {EEXIST, errorNumber::fileAlreadyExists},
        {EIO, errorNumber::inputOutput},
    }};
    return numbers;
}

std::string systemMessage(std::int64_t code) {
    return std::generic_category().message(static_cast<int>(code));
}

} // namespace platform
