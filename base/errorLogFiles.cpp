#include "base/errorLogFiles.h"

#include <string>

#include "base/clsRegSettings.h"
#include "base/modGlobal.h"

modGlobal::ErrorLogFiles modGlobal::errorLogFiles(const clsRegSettings& settings,
                                                  std::string_view applicationFolder) {
    // Odd on purpose: the second default adds its own "\", which a drive's root already has.
    std::string folder(applicationFolder);
    const bool isRoot = folder.find('\\') + 1 == folder.size();
    if (folder.ends_with('\\') && !isRoot) {
        folder.pop_back();
    }
    return {settings.GetSetting("application_settings", "errorLogFile", addBackslash(folder) + "errorLog.txt",
                                stpIni),
            settings.GetSetting("startup", "errorLogTextFile", folder + "\\errorLog.txt", stpIni)};
}
