#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

class clsRegSettings;

// Text properties that nothing reads or writes; kept in the class's interface on purpose.
enum class UnusedText {
    elTUnknownOwner,
    elTNoExtension,
    elFileType,
    elTAllFiles,
    elTLastScanFormat,
    elOwner,
    elDetails,
    elErrorName,
    elError,
    elFileSize,
    elFileCount,
    elOwnerName,
    elExtName,
    elExtension,
    elLastScanStop,
    elLastScan,
    elLocation,
    elRoot,
    elPath,
    count
};

// The user's options and the sort state of the three lists (U owners, F files and folders, T file types).
// One shared object: filled from settings.ini when the program starts, partly written back when it ends.
// Until it is loaded every property is zero, empty or False. Setters neither check nor convert.
class clsSettings {
public:
    // The working database, an internal path or any that a user may type.
    [[nodiscard]] const std::string& databasePath() const noexcept { return databasePath_; }
    void setDatabasePath(std::string_view path) { databasePath_ = path; }

    // Index of the column to sort by, and the list's code of the order.
    [[nodiscard]] std::int16_t lvwUSortColumn() const noexcept { return lvwUSortColumn_; }
    void setLvwUSortColumn(std::int16_t column) noexcept { lvwUSortColumn_ = column; }
    [[nodiscard]] std::int16_t lvwUSortOrder() const noexcept { return lvwUSortOrder_; }
    void setLvwUSortOrder(std::int16_t order) noexcept { lvwUSortOrder_ = order; }
    [[nodiscard]] std::int16_t lvwFSortColumn() const noexcept { return lvwFSortColumn_; }
    void setLvwFSortColumn(std::int16_t column) noexcept { lvwFSortColumn_ = column; }
    [[nodiscard]] std::int16_t lvwFSortOrder() const noexcept { return lvwFSortOrder_; }
    void setLvwFSortOrder(std::int16_t order) noexcept { lvwFSortOrder_ = order; }
    [[nodiscard]] std::int16_t lvwTSortColumn() const noexcept { return lvwTSortColumn_; }
    void setLvwTSortColumn(std::int16_t column) noexcept { lvwTSortColumn_ = column; }
    [[nodiscard]] std::int16_t lvwTSortOrder() const noexcept { return lvwTSortOrder_; }
    void setLvwTSortOrder(std::int16_t order) noexcept { lvwTSortOrder_ = order; }

    // Loaded at start, consulted by nothing, deliberately left so.
    [[nodiscard]] bool getExtensionInfo() const noexcept { return getExtensionInfo_; }
    void setGetExtensionInfo(bool value) noexcept { getExtensionInfo_ = value; }

    // Look up each file's owner while scanning.
    [[nodiscard]] bool getOwnerInfo() const noexcept { return getOwnerInfo_; }
    void setGetOwnerInfo(bool value) noexcept { getOwnerInfo_ = value; }

    // Tell file extensions apart by case when grouping by type.
    [[nodiscard]] bool caseSensitiveExt() const noexcept { return caseSensitiveExt_; }
    void setCaseSensitiveExt(bool value) noexcept { caseSensitiveExt_ = value; }

    // Record whole 64-bit file sizes.
    [[nodiscard]] bool fullFileSizes() const noexcept { return fullFileSizes_; }
    void setFullFileSizes(bool value) noexcept { fullFileSizes_ = value; }

    [[nodiscard]] const std::string& unusedText(UnusedText which) const {
        return unusedTexts_.at(static_cast<std::size_t>(which));
    }
    void setUnusedText(UnusedText which, std::string_view text) {
        unusedTexts_.at(static_cast<std::size_t>(which)) = text;
    }

    // Points the store at settings.ini in the application folder (an internal path, with or without trailing
    // "\") and reads every property. A text that cannot be converted is logged as an error of the main
    // window's load handler, naming key and text; its property takes the default.
    void load(clsRegSettings& store, std::string_view applicationFolder);

    // Writes the sort state and getOwnerInfo; the other keys are the user's to edit.
    void save(const clsRegSettings& store) const;

private:
    struct Key;
    static const std::array<Key, 11> keys;
    void assign(const Key& key, std::string_view text);

    std::string databasePath_;
    std::int16_t lvwUSortColumn_ = 0;
    std::int16_t lvwUSortOrder_ = 0;
    std::int16_t lvwFSortColumn_ = 0;
    std::int16_t lvwFSortOrder_ = 0;
    std::int16_t lvwTSortColumn_ = 0;
    std::int16_t lvwTSortOrder_ = 0;
    bool getExtensionInfo_ = false;
    bool getOwnerInfo_ = false;
    bool caseSensitiveExt_ = false;
    bool fullFileSizes_ = false;
    std::array<std::string, static_cast<std::size_t>(UnusedText::count)> unusedTexts_;
};

// False only when the setting "dontUseNetwork" is exactly "0" or missing: any other text ("00", "no", …)
// keeps the network branch from being built.
[[nodiscard]] bool dontUseNetwork(const clsRegSettings& store);
