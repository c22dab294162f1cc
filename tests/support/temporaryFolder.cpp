#include "support/temporaryFolder.h"

#include <atomic>
#include <fstream>
#include <random>
#include <sstream>

#include "platform/paths.h"

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    do {
        path_ = fs::temp_directory_path() / ("spannory-test-" + std::to_string(random()));
    } while (!fs::create_directory(path_));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    for (fs::recursive_directory_iterator entry(path_, ignored), end; !ignored && entry != end;
         entry.increment(ignored)) {
        if (entry->is_directory(ignored) && !entry->is_symlink(ignored)) {
            fs::permissions(entry->path(), fs::perms::owner_all, ignored);
        }
    }
    fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::typed(std::string_view name) const {
    return (name.empty() ? path_ : path_ / name).string();
}

std::string TemporaryFolder::internal(std::string_view name) const {
    return platform::toInternal(typed(name));
}

void TemporaryFolder::write(std::string_view name, std::string_view content) const {
    const fs::path file = path_ / name;
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
}

std::string TemporaryFolder::read(std::string_view name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}
