#include "db/enginesFiles.h"

#include <sqlite3.h>

#include "platform/files.h"

namespace {

using Access = int (*)(sqlite3_vfs*, const char*, int, int*);

// The engine asks whether a file exists only for journals and logs.
int seeNone(sqlite3_vfs* /*services*/, const char* /*path*/, int flags, int* result) {
    *result = flags == SQLITE_ACCESS_EXISTS ? 0 : 1;
    return SQLITE_OK;
}

int seeRegular(sqlite3_vfs* /*services*/, const char* path, int flags, int* result) {
    sqlite3_vfs* const system = sqlite3_vfs_find(nullptr);
    if (flags == SQLITE_ACCESS_EXISTS && platform::somethingExists(path) && !platform::fileExists(path)) {
        *result = 0;
        return SQLITE_OK;
    }
    return system->xAccess(system, path, flags, result);
}

// The system's own services but for that answer. Lives as long as the program, as the engine wants.
struct Services {
    Services(const char* name, Access access) {
        // Nobody asks how much memory the engine takes, and to count it takes a lock for each piece. Without
        // effect if somebody has used the engine before.
        sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
        sqlite3_initialize();
        vfs = *sqlite3_vfs_find(nullptr);
        vfs.zName = name;
        vfs.pNext = nullptr;
        vfs.xAccess = access;
        sqlite3_vfs_register(&vfs, 0);
    }
    sqlite3_vfs vfs{};
};

} // namespace

const char* enginesFiles::withoutJournals() {
    static const Services services("spannory-working", seeNone);
    return services.vfs.zName;
}

const char* enginesFiles::withRegularJournals() {
    static const Services services("spannory-saved", seeRegular);
    return services.vfs.zName;
}
