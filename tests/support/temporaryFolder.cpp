#include "support/temporaryFolder.h"

#include <fstream>
#include <random>
#include <sstream>

#include "platform/paths.h"
#include "support/testSystem.h"

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    do {
        path_ = fs::temp_directory_path() / ("spannory-test-" + std::to_string(random()));
    } while (!fs::create_directory(path_));
}

TemporaryFolder::~TemporaryFolder() {
    testSystem::removeAll(path_);
}

fs::path TemporaryFolder::operator/(std::string_view name) const {
    return path_ / testSystem::pathOf(name);
}

std::string TemporaryFolder::typed(std::string_view name) const {
    return testSystem::textOf(name.empty() ? path_ : *this / name);
}

std::string TemporaryFolder::internal(std::string_view name) const {
    return platform::toInternal(typed(name));
}

void TemporaryFolder::write(std::string_view name, std::string_view content) const {
    const fs::path file = *this / name;
    testSystem::makeFolders(file.parent_path());
    testSystem::writeFile(file, content);
}

std::string TemporaryFolder::read(std::string_view name) const {
    std::ifstream file(*this / name, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}
