#include "export/workbookFolder.h"

#include <random>
#include <string_view>

#include "export/reportFormats.h"
#include "export/targetFile.h"
#include "platform/environment.h"
#include "platform/folders.h"
#include "platform/ownership.h"
#include "platform/runtimeError.h"

namespace {

constexpr std::string_view folderPrefix = "Spannory-";
constexpr std::string_view lockName = "lock"; // held while the program lives

void removeIfLeft(const std::string& folder) {
    try {
        auto lock = platform::FileLock::tryAcquire(folder + std::string(lockName));
        if (lock) {
            lock->removeAtEnd();
            lock.reset();
            platform::removeOwnFolder(folder);
        }
    } catch (const RuntimeError&) { // it is being removed
    }
}

void removeLeftovers() {
    const std::string above = platform::temporaryFolder();
    platform::FolderListing listing;
    static_cast<void>(platform::FolderReader().readNames(above, listing));
    for (std::size_t i = 0; i < listing.size(); ++i) {
        const platform::FolderEntry entry = listing[i];
        const std::string folder = above + std::string(entry.name) + "\\";
        if (entry.name.starts_with(folderPrefix) && platform::isOwnFolder(folder)) {
            removeIfLeft(folder);
        }
    }
}

} // namespace

modExport::WorkbookFolder::WorkbookFolder() {
    removeLeftovers();
}

modExport::WorkbookFolder::~WorkbookFolder() {
    if (lock_) {
        lock_->removeAtEnd();
        lock_.reset();
        platform::removeOwnFolder(path_);
    }
}

// Another program that starts may take a folder that is not locked yet for a leftover.
void modExport::WorkbookFolder::make() {
    std::random_device random;
    while (!lock_) {
        path_ = platform::temporaryFolder().append(folderPrefix).append(std::to_string(random())) + "\\";
        if (platform::makeOwnFolder(path_)) {
            lock_ = platform::FileLock::tryAcquire(path_ + std::string(lockName));
        }
    }
}

const std::string& modExport::WorkbookFolder::path() {
    if (!lock_) {
        make();
    }
    return path_;
}

std::string modExport::WorkbookFolder::newWorkbook(const platform::LocalTime& time) {
    const std::string stem = path() + std::string(folderPrefix) + defaultFileName({}, time);
    const std::string_view extension = fileExtension(ReportFormat::excel);
    std::string name = stem + std::string(extension);
    for (int number = 2; platform::somethingExists(name); ++number) {
        name.assign(stem).append("-").append(std::to_string(number)).append(extension);
    }
    return name;
}
