#include "app/applicationFolder.h"

#include "app/modGlobal.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"

namespace {

std::string choose(std::string_view given) {
    if (!given.empty()) {
        return platform::toInternal(given);
    }
    const std::string named = platform::environmentVariable("SPANNORY_HOME").value_or("");
    if (!named.empty()) {
        return platform::toInternal(named);
    }
    std::string own = platform::executableFolder();
    if (platform::folderIsWritable(own) && platform::fileExists(own + "001.dat")) {
        return own;
    }
    return platform::userDataFolder();
}

} // namespace

std::string findApplicationFolder(std::string_view given) {
    std::string folder = modGlobal::addBackslash(choose(given));
    if (!platform::folderExists(folder)) {
        platform::makeFolders(folder);
    }
    return folder;
}
