#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "db/dao.h"
#include "db/scanRecords.h"

// A saved scan that is read where it lies, without being loaded. The file is trusted no more than one that is
// loaded: it is only read, and nothing that it brings along is run. What a person is told about a folder
// takes some looks into its indexes; files without them, of earlier versions, are gone through.
class ScanFile {
public:
    // The path is one as typed. Throws as DBEngine::OpenDatabase and Database::requireStored do.
    explicit ScanFile(std::string_view path);

    // The scans that its rows come from, in order; none in files of earlier versions.
    [[nodiscard]] const std::vector<modScans::Scan>& scans() const noexcept { return scans_; }

    // When the scan of the folder ended; of a folder above all scans, the last of them. If the file does not
    // say so, when it was last changed.
    [[nodiscard]] platform::Seconds finished(std::string_view key) const;

    // The first of the keys (of modSavedScan::possibleKeys) that the file holds; empty if there is none.
    [[nodiscard]] std::string find(const std::vector<std::string>& keys) const;

    struct Folder {
        double size = 0; // bytes
        // At any depth. Nothing if the file keeps folders only, and does not say.
        std::optional<std::int64_t> files;
        std::optional<std::int64_t> folders;
    };
    enum class Counts { always, ifStored }; // to count takes long in files of earlier versions
    // Nothing if the folder itself was not scanned, or if the key is empty.
    [[nodiscard]] std::optional<Folder> folder(std::string_view key, Counts wanted = Counts::always) const;

    // The keys of the largest folders directly in the folder, at most `most`, the largest first.
    [[nodiscard]] std::vector<std::string> largestIn(std::string_view key, std::size_t most) const;

    // Asks from time to time, while a statement runs long, whether reading is to go on; if not, it throws.
    void setGoesOn(std::function<bool()> goesOn);

    // For statements about table `details` and nothing else.
    [[nodiscard]] Database& database() const { return *database_; }

private:
    struct ItemCounts {
        std::optional<std::int64_t> files;
        std::optional<std::int64_t> folders;
    };
    [[nodiscard]] ItemCounts storedCounts(const std::string& itself) const;
    [[nodiscard]] ItemCounts storedCountsOfRoot(std::string_view key) const;
    [[nodiscard]] ItemCounts counted(std::string_view key) const;

    std::unique_ptr<Database> database_;
    std::vector<modScans::Scan> scans_;
    platform::Seconds changed_ = 0;
    bool storesCounts_ = false; // its rows of folders have them
};
