#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class clsRegSettings;
class Excludes;

// The user's settings and the sort order of the three lists (U owners, F files and folders, T file types).
// One shared object: loaded from settings.ini when the program starts, and partly written back when it ends.
// Until it is loaded, every property is zero, empty or False. Setters neither check nor convert.
class clsSettings {
public:
    clsSettings();

    // The working database: an internal path, or any path that a user may type.
    [[nodiscard]] const std::string& databasePath() const noexcept { return databasePath_; }
    void setDatabasePath(std::string_view path) { databasePath_ = path; }

    // The column to sort by, and the list's code for the order.
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

    // Odd on purpose: loaded at the start but not used.
    [[nodiscard]] bool getExtensionInfo() const noexcept { return getExtensionInfo_; }
    void setGetExtensionInfo(bool value) noexcept { getExtensionInfo_ = value; }

    // Whether a scan looks up each file's owner.
    [[nodiscard]] bool getOwnerInfo() const noexcept { return getOwnerInfo_; }
    void setGetOwnerInfo(bool value) noexcept { getOwnerInfo_ = value; }

    // Whether grouping by type distinguishes extensions by case.
    [[nodiscard]] bool caseSensitiveExt() const noexcept { return caseSensitiveExt_; }
    void setCaseSensitiveExt(bool value) noexcept { caseSensitiveExt_ = value; }

    // Whether real 64-bit file sizes are recorded.
    [[nodiscard]] bool fullFileSizes() const noexcept { return fullFileSizes_; }
    void setFullFileSizes(bool value) noexcept { fullFileSizes_ = value; }

    // Exact figures, orders and reports instead of those that can be compared with earlier ones.
    [[nodiscard]] bool exact() const noexcept { return exact_; }
    void setExact(bool value) noexcept { exact_ = value; }

    // Whether figures count what files and folders take on the disk, instead of their sizes.
    [[nodiscard]] bool onDisk() const noexcept { return onDisk_; }
    void setOnDisk(bool value) noexcept { onDisk_ = value; }

    // Whether nothing on the disk may be changed from the window, so that nothing can be moved to the trash.
    [[nodiscard]] bool readOnly() const noexcept { return readOnly_ || readOnlyForced_; }
    void setReadOnly(bool value) noexcept { readOnly_ = value; }
    // By the command line: it stays so until the end, whatever the setting says.
    [[nodiscard]] bool readOnlyForced() const noexcept { return readOnlyForced_; }
    void forceReadOnly() noexcept { readOnlyForced_ = true; }

    // How many threads read folders ahead of a scan; any negative number for as many as the processors and
    // the volume suggest.
    static constexpr int mostReaders = 64;
    [[nodiscard]] std::int16_t readers() const noexcept { return readers_; }
    void setReaders(std::int16_t readers) noexcept { readers_ = readers; }

    // What scans leave out; never null. Whoever keeps the object has the patterns of that moment.
    [[nodiscard]] const std::shared_ptr<const Excludes>& excludes() const noexcept { return excludes_; }
    void setExcludes(Excludes excludes);

    // Odd on purpose: texts that nothing reads or writes, kept in the class's interface.
    std::string elTUnknownOwner, elTNoExtension, elFileType, elTAllFiles, elTLastScanFormat, elOwner,
        elDetails, elErrorName, elError, elFileSize, elFileCount, elOwnerName, elExtName, elExtension,
        elLastScanStop, elLastScan, elLocation, elRoot, elPath;

    // Points the store at settings.ini in the application folder (an internal path, with or without a
    // trailing "\") and reads every property, and what is excluded. If a text cannot be converted, the
    // property takes its default, and an error naming the key and the text is logged for the main window's
    // load handler.
    void load(clsRegSettings& store, std::string_view applicationFolder);

    // A property by the name of its key: the text that it is written as, empty if no property has that key;
    // and setting it from a text, which throws 6 or 13 if it cannot be converted.
    [[nodiscard]] std::string text(std::string_view name) const;
    void setText(std::string_view name, std::string_view text);

    // Writes the sort order and getOwnerInfo, which the window changes without writing them.
    void save(const clsRegSettings& store) const;

    // Whether the user has said if figures are to be exact.
    [[nodiscard]] static bool isExactChosen(const clsRegSettings& store);
    // Write down what the user has chosen; throw if it cannot be done.
    void saveExact(const clsRegSettings& store) const { saveChoice(store, "exact", exact_); }
    void saveOnDisk(const clsRegSettings& store) const { saveChoice(store, "onDisk", onDisk_); }

private:
    struct Property;
    static const std::array<Property, 15> properties;
    [[nodiscard]] static const Property* propertyNamed(std::string_view name) noexcept;
    static void saveChoice(const clsRegSettings& store, std::string_view key, bool choice);
    void assign(const Property& property, std::string_view text);

    std::shared_ptr<const Excludes> excludes_;
    std::string databasePath_;
    std::int16_t lvwUSortColumn_ = 0;
    std::int16_t lvwUSortOrder_ = 0;
    std::int16_t lvwFSortColumn_ = 0;
    std::int16_t lvwFSortOrder_ = 0;
    std::int16_t lvwTSortColumn_ = 0;
    std::int16_t lvwTSortOrder_ = 0;
    std::int16_t readers_ = 0;
    bool getExtensionInfo_ = false;
    bool getOwnerInfo_ = false;
    bool caseSensitiveExt_ = false;
    bool fullFileSizes_ = false;
    bool exact_ = false;
    bool onDisk_ = false;
    bool readOnly_ = false;
    bool readOnlyForced_ = false;
};

// False only if the setting "dontUseNetwork" is exactly "0" or missing; with any other text ("00", "no", …)
// there is no network branch.
[[nodiscard]] bool dontUseNetwork(const clsRegSettings& store);
