#include "base/applicationFolder.h"

#include "base/modGlobal.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/ownership.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"

namespace {

// Why the folder, or the settings in it, may say what another user wants; empty if they do not.
std::string whyForeign(const std::string& folder) {
    for (const std::string& path : {folder, folder + "settings.ini"}) {
        if (const std::string reason = platform::whyForeign(path); !reason.empty()) {
            return platform::displayPath(path) + " is not used, because " + reason;
        }
    }
    return {};
}

std::string choose(std::string_view given) {
    if (!given.empty()) {
        return platform::toInternal(given);
    }
    const std::string named = platform::environmentVariable("SPANNORY_HOME").value_or("");
    if (!named.empty()) {
        return platform::toInternal(named);
    }
    std::string own = platform::executableFolder();
    if (platform::folderIsWritable(own) && platform::fileExists(own + "001.dat") && whyForeign(own).empty()) {
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
    if (const std::string reason = whyForeign(folder); !reason.empty()) {
        throw RuntimeError(errorNumber::permissionDenied, reason);
    }
    return folder;
}

std::string findDataFile(std::string_view applicationFolder, std::string_view name) {
    std::string own = modGlobal::addBackslash(applicationFolder).append(name);
    for (const std::string& path : {own, modGlobal::addBackslash(platform::executableFolder()).append(name),
                                    modGlobal::addBackslash(platform::shareFolder()).append(name)}) {
        if (platform::fileExists(path)) {
            return path;
        }
    }
    return own;
}
