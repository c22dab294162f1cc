#include "tree/modDriveEnum.h"

#include <algorithm>
#include <array>

#include "base/errorTrap.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "tree/folderTree.h"

namespace modDriveEnum {

namespace {

constexpr std::string_view moduleName = "modDriveEnum";

struct Description {
    int type;
    const char* text;
};

constexpr std::array<Description, 7> descriptions{{
    {platform::drive::unknown, "Unknown"},
    {platform::drive::noRoot, "The root directory does not exist"},
    {platform::drive::removable, "Removable Drive"},
    {platform::drive::fixed, "Hard Drive"},
    {platform::drive::remote, "Network"},
    {platform::drive::cdRom, "Optical Drive"},
    {platform::drive::ramDisk, "RAM Disk"},
}};

bool hasFloppyLetter(std::string_view drive) {
    const char letter = drive.empty() ? '\0' : platform::asciiLower(drive.front());
    return letter == 'a' || letter == 'b';
}

} // namespace

void enumerateLocalDrives(std::string_view parentNode, FolderTree& tree, const DriveSource& source) {
    modGlobal::trapped(moduleName, "enumerateLocalDrives", [&] {
        for (const std::string& root : driveRoots(source)) {
            const QString description = getDriveDescription(root, source);
            if (description.toUpper() == QStringLiteral("NETWORK")) {
                continue;
            }
            const QString shown = QString::fromStdString(platform::displayPath(root));
            tree.addNode(parentNode,
                         {root, QStringLiteral("%1 (%2)").arg(shown, description), {}, {}, false});
        }
    });
}

std::vector<std::string> driveRoots(const DriveSource& source) {
    return modGlobal::trapped(moduleName, "getDriveString", [&] { return source.driveRoots(); });
}

std::string getDriveString(const DriveSource& source) {
    std::string drives;
    for (const std::string& root : driveRoots(source)) {
        drives.append(root).push_back('\0');
    }
    return drives;
}

QString getDriveDescription(std::string_view drive, const DriveSource& source) {
    return modGlobal::trapped(moduleName, "getDriveDescription", [&] {
        const int type = source.driveType(drive);
        if (type == platform::drive::removable && hasFloppyLetter(drive)) {
            return QStringLiteral("Floppy Disk");
        }
        const auto* const found =
            std::find_if(descriptions.begin(), descriptions.end(),
                         [&](const Description& description) { return description.type == type; });
        return found == descriptions.end() ? QString() : QString::fromUtf8(found->text);
    });
}

} // namespace modDriveEnum
