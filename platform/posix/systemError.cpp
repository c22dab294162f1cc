#include "platform/posix/systemError.h"

#include <cerrno>
#include <string>
#include <system_error>

#include "platform/paths.h"

namespace platform {

namespace {

int numberOf(int errorCode) {
    switch (errorCode) {
    case ENOENT:
        return errorNumber::fileNotFound;
    case ENOTDIR:
        return errorNumber::pathNotFound;
    case EACCES:
    case EPERM:
        return errorNumber::permissionDenied;
    case ENOSPC:
    case EDQUOT:
        return errorNumber::diskFull;
    case EMFILE:
    case ENFILE:
        return errorNumber::tooManyFiles;
    case EEXIST:
        return errorNumber::fileAlreadyExists;
    case EIO:
        return errorNumber::inputOutput;
    default:
        return errorNumber::pathFileAccess;
    }
}

} // namespace

RuntimeError systemError(int errorCode, std::string_view path) {
    const int number = numberOf(errorCode);
    std::string subject = displayPath(path);
    if (number == errorNumber::pathFileAccess) {
        subject += " (" + std::generic_category().message(errorCode) + ")";
    }
    return RuntimeError::about(number, subject);
}

} // namespace platform
