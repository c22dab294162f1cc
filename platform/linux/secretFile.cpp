#include "platform/secretFile.h"

#include <sys/stat.h>

#include "platform/linux/opening.h"

namespace platform {

bool isOpenToAll(std::string_view path) {
    struct stat status {};
    return ::stat(nativeOf(path, NotDone::read).c_str(), &status) == 0 &&
           (status.st_mode & (S_IROTH | S_IWOTH)) != 0;
}

} // namespace platform
