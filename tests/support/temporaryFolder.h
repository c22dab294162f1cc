#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// A new empty folder of the system's, removed with all it holds when the test ends.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }
    [[nodiscard]] std::filesystem::path operator/(std::string_view name) const;

    // The native path of an entry as text: what a user would type.
    [[nodiscard]] std::string typed(std::string_view name = {}) const;
    // The internal path; folders without their trailing "\".
    [[nodiscard]] std::string internal(std::string_view name = {}) const;

    // Makes a file of that content below the folder, and the folders above it.
    void write(std::string_view name, std::string_view content) const;
    // A file's bytes.
    [[nodiscard]] std::string read(std::string_view name) const;

private:
    std::filesystem::path path_;
};
