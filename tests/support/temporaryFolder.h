#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// A new empty folder in the system's temporary folder, removed with its contents after the test.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }
    [[nodiscard]] std::filesystem::path operator/(std::string_view name) const;

    // The native path of an entry as a user would type it.
    [[nodiscard]] std::string typed(std::string_view name = {}) const;
    // The internal path; folders without a trailing "\".
    [[nodiscard]] std::string internal(std::string_view name = {}) const;

    // Creates a file with this content, and any missing folders above it.
    void write(std::string_view name, std::string_view content) const;
    // A file's bytes.
    [[nodiscard]] std::string read(std::string_view name) const;

private:
    std::filesystem::path path_;
};
