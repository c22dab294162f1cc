#include "collect/password.h"

#include "platform/environment.h"
#include "platform/fileError.h"
#include "platform/files.h"
#include "platform/secretFile.h"

std::string collectPassword(std::string_view file) {
    constexpr std::uint64_t longestFile = 4096;
    if (file.empty()) {
        return platform::environmentVariable("SPANNORY_COLLECT_PASSWORD").value_or("");
    }
    if (platform::isOpenToAll(file)) {
        throw platform::fileError(errorNumber::permissionDenied,
                                  "Every user may read or change this file with a password; make it your own "
                                  "alone",
                                  file, platform::NotDone::read);
    }
    const std::string content = platform::readFile(file, longestFile);
    return content.substr(0, content.find_first_of("\r\n"));
}
