#include "platform/answering.h"

#include <cerrno>

#include "platform/folders.h"
#include "platform/linux/mountTable.h"
#include "platform/linux/volumeCalls.h"
#include "platform/paths.h"

namespace platform {

bool mayNotAnswer(std::string_view internalPath) {
    const auto table = MountTable::current();
    const Mount* const volume = table->volumeOf(toNative(internalPath));
    return volume != nullptr && volume->mayNotAnswer();
}

bool answers(std::string_view internalPath, const std::function<bool()>& goesOn) {
    const std::string native = toNative(internalPath);
    if (!couldHang(native)) {
        return true;
    }
    VolumeCalls calls(native);
    calls.setGoesOn(goesOn);
    const int error = calls.tryToRead(native);
    return error != ETIMEDOUT && error != ECANCELED;
}

bool seemsToBeFolder(std::string_view internalPath) {
    return mayNotAnswer(internalPath) || folderExists(internalPath);
}

} // namespace platform
