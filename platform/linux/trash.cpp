#include "platform/trash.h"

#include <string>

#include "platform/files.h"

namespace platform {

void provideTrash(std::string_view userData) {
    std::string folder(userData);
    folder.append(folder.ends_with('\\') ? "" : "\\").append("Trash");
    makeFolders(folder);
}

} // namespace platform
