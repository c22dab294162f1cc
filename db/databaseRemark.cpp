#include "db/databaseRemark.h"

#include <string>

#include "base/applicationFolder.h"
#include "base/clsRegSettings.h"
#include "db/ownDatabase.h"
#include "platform/answering.h"
#include "platform/files.h"
#include "platform/ownership.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"

using Weight = modSettings::Remark::Weight;

void modDatabase::addRemark(modSettings::Remark& remark, std::string_view text,
                            std::string_view applicationFolder) {
    const std::string value = clsRegSettings::expandEnvironmentName(std::string(text));
    if (value.empty() || remark.weight == Weight::error) {
        return;
    }
    try {
        std::string path = platform::toInternal(value);
        if (platform::mayNotAnswer(path)) {
            return;
        }
        path = platform::resolveFolderLinks(path);
        if (platform::isOwnLink(path)) {
            path = platform::resolveLinks(path);
            remark.add(Weight::note, "It is a link to " + platform::displayPath(path) + ".");
        }
        const auto refuse = [&](std::string_view what) {
            remark.add(Weight::error, platform::displayPath(path) + " is " + std::string(what) +
                                          ". It would be left alone, and main.dat in the application folder "
                                          "used instead.");
        };
        if (platform::isSameFile(path, findDataFile(applicationFolder, "001.dat"))) {
            refuse("the template of the working database");
            return;
        }
        switch (kindOf(path)) {
        case FileKind::replaceable:
            return;
        case FileKind::unmarked:
            remark.add(Weight::warning, "It is a database, and used only if it is an earlier version's "
                                        "working database, which is then emptied.");
            return;
        case FileKind::savedScan:
            refuse("a saved scan");
            return;
        case FileKind::link:
            refuse("a link that is not yours, or leads to no file of yours");
            return;
        case FileKind::others:
            refuse("not a database of this program");
            return;
        }
    } catch (const RuntimeError& error) {
        remark.add(error);
    }
}
