#include "collect/rowForm.h"

#include <bit>
#include <cmath>

#include "collect/diskPaths.h"
#include "collect/rowBinary.h"
#include "collect/wallClock.h"
#include "platform/movedNames.h"
#include "platform/runtimeError.h"
#include "platform/text.h"

namespace {

using modRowBinary::append;
using modRowBinary::appendText;
using modRowBinary::Reader;

// The places of `columns`.
enum Column : std::size_t {
    idx,
    drive,
    parentFolder,
    fileName,
    isFolder,
    folder,
    fullPath,
    extension,
    description,
    owner,
    fileCount,
    folderCount,
    dateInserted,
    dateAccessed,
    dateModified,
    scanCompleteTime,
    size,
    sizeOnDisk,
    columnCount
};
static_assert(columnCount == modRowForm::columns.size());

enum Kind : char { null = 'n', whole = 'i', real = 'd', text = 't' };

constexpr std::size_t longestFullPath = 255; // in characters

[[noreturn]] void refuse() {
    throw RuntimeError(databaseError::damaged, "The server holds what is no row of a scan.");
}

// The path behind the drive, as the working database has it.
std::string_view pathBehindDrive(std::string& whole, std::string_view drivePart, std::string_view parent,
                                 std::string_view name) {
    whole.assign(parent.starts_with(drivePart) ? parent.substr(drivePart.size()) : parent).append(name);
    return whole.size() <= longestFullPath ? std::string_view(whole)
                                           : platform::firstCharacters(whole, longestFullPath);
}

void appendValue(std::string& result, const Value& value) {
    if (const auto* wholeNumber = std::get_if<std::int64_t>(&value)) {
        append<char>(result, whole);
        append(result, *wholeNumber);
    } else if (const auto* realNumber = std::get_if<double>(&value)) {
        append<char>(result, real);
        append(result, *realNumber);
    } else if (const auto* characters = std::get_if<std::string>(&value)) {
        append<char>(result, text);
        appendText(result, *characters);
    } else {
        append<char>(result, null);
    }
}

Value takeValue(Reader& reader) {
    switch (reader.number<char>()) {
    case null:
        return {};
    case whole:
        return reader.number<std::int64_t>();
    case real:
        return reader.number<double>();
    case text:
        return std::string(reader.text());
    default:
        refuse();
    }
}

Value textOrNull(std::string_view characters) {
    return characters.empty() ? Value() : Value(std::string(characters));
}

} // namespace

std::string modRowForm::columnList() {
    std::string result;
    for (const std::string_view column : columns) {
        result.append(result.empty() ? "" : ", ").append(column);
    }
    return result;
}

std::string modRowForm::serverColumnList() {
    return "drive, parentFolder, fileName, extension, description, owner, isFolder, odd, fileCount, "
           "folderCount, "
           "scanCompleteTime, dateInserted, dateAccessed, dateModified, size, sizeOnDisk, idx";
}

// --- From the working database ----------------------------------------------------------------------------

modRowForm::Encoder::Encoder(Recordset& rows, const Attempt& attempt, char separator)
    : separator_(separator) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        fields_[i] = &rows.Fields(columns[i]);
    }
    appendText(start_, attempt.host);
    appendText(start_, attempt.scan);
    ::append(start_, attempt.number);
    ::append(start_, attempt.started);
}

void modRowForm::Encoder::appendOdd(std::string& odd, std::size_t column) const {
    ::append(odd, static_cast<std::uint8_t>(column));
    appendValue(odd, fields_[column]->value());
}

// For a column that is read back as that text or, if it is empty, as NULL.
void modRowForm::Encoder::requireText(std::size_t column, std::string_view expected) {
    const Field& field = *fields_[column];
    const bool isExpected = expected.empty() ? field.isNull() : field.isText() && field.text() == expected;
    if (!isExpected) {
        appendOdd(odd_, column);
    }
}

std::string_view modRowForm::Encoder::asText(std::size_t column) {
    const std::string_view characters = fields_[column]->text();
    requireText(column, characters);
    return characters;
}

// Of a number that is read back as one, or as NULL, which is 0, where none is expected.
std::int64_t modRowForm::Encoder::asWhole(std::size_t column, bool isExpected) {
    const Field& field = *fields_[column];
    if (field.isNull()) {
        if (isExpected) {
            appendOdd(odd_, column);
        }
        return 0;
    }
    const Value value = field.value();
    const auto* number = std::get_if<std::int64_t>(&value);
    if (number == nullptr || !isExpected) {
        appendOdd(odd_, column);
    }
    return number == nullptr ? 0 : *number;
}

std::int64_t modRowForm::Encoder::asBytes(std::size_t column) {
    constexpr double tooLarge = 0x1p63;
    const Value value = fields_[column]->value();
    const auto* bytes = std::get_if<double>(&value);
    const bool fits = bytes != nullptr && *bytes >= -tooLarge && *bytes < tooLarge;
    const std::int64_t result = fits ? static_cast<std::int64_t>(*bytes) : 0;
    const auto bits = [](double number) { return std::bit_cast<std::uint64_t>(number); };
    if (!fits || bits(static_cast<double>(result)) != bits(*bytes)) {
        appendOdd(odd_, column);
    }
    return result;
}

std::uint32_t modRowForm::Encoder::asMoment(std::size_t column) {
    const Field& field = *fields_[column];
    if (field.isNull()) {
        return 0;
    }
    if (field.isText()) {
        Moment& last = moments_[column];
        const std::string_view characters = field.text();
        if (last.seconds != 0 && last.text == characters) {
            return last.seconds;
        }
        if (const auto seconds = modWallClock::secondsOf(characters)) {
            last.text = characters;
            last.seconds = *seconds;
            return last.seconds;
        }
    }
    appendOdd(odd_, column);
    return 0;
}

void modRowForm::Encoder::takeFolder() {
    const std::string_view driveText = fields_[drive]->text();
    const std::string_view parentText = fields_[parentFolder]->text();
    if (!hasFolder_ || parentText != parent_ || driveText != drive_) {
        hasFolder_ = true;
        drive_ = driveText;
        parent_ = parentText;
        std::string diskDrive;
        std::string diskParent;
        modDiskPaths::appendPath(diskDrive, drive_, separator_);
        modDiskPaths::appendPath(diskParent, parent_, separator_);
        const std::string driveAgain = modDiskPaths::internalDrive(diskDrive, separator_);
        driveIsOdd_ = driveAgain != drive_;
        parentIsOdd_ = modDiskPaths::internalFolder(diskParent, driveAgain, diskDrive, separator_) != parent_;
        diskFolder_.clear();
        appendText(diskFolder_, diskDrive);
        appendText(diskFolder_, diskParent);
    }
    const auto note = [&](std::size_t column, const std::string& characters, bool isOdd) {
        if (isOdd) {
            appendOdd(odd_, column);
        } else {
            requireText(column, characters);
        }
    };
    note(drive, drive_, driveIsOdd_);
    note(parentFolder, parent_, parentIsOdd_);
}

// Without the "\" of a folder's.
void modRowForm::Encoder::appendFileName(std::string& result, std::string_view name, bool isAFolder) {
    const bool isWhole = isAFolder && name.ends_with('\\');
    const std::string_view bare = name.substr(0, name.size() - (isWhole ? 1 : 0));
    if (separator_ == '\\' || platform::isUnmovedName(bare)) {
        appendText(result, bare);
    } else {
        scratch_.clear();
        modDiskPaths::appendName(scratch_, bare, separator_);
        appendText(result, scratch_);
        if (modDiskPaths::internalName(scratch_, separator_) != bare) {
            appendOdd(odd_, fileName);
            return;
        }
    }
    if (isWhole != isAFolder) {
        appendOdd(odd_, fileName);
    } else {
        requireText(fileName, name);
    }
}

void modRowForm::Encoder::appendExtension(std::string& result) {
    const std::string_view internal = fields_[extension]->text();
    scratch_.clear();
    modDiskPaths::appendName(scratch_, internal, separator_);
    appendText(result, scratch_);
    if (!platform::isUnmovedName(internal) && modDiskPaths::internalName(scratch_, separator_) != internal) {
        appendOdd(odd_, extension);
    } else {
        requireText(extension, internal);
    }
}

void modRowForm::Encoder::append(std::string& result) {
    constexpr std::int64_t most = 1;
    odd_.clear();
    result.append(start_);
    takeFolder();
    result.append(diskFolder_);
    std::int64_t folderFlag = asWhole(isFolder, true);
    if (folderFlag < 0 || folderFlag > most) {
        folderFlag = 0;
        appendOdd(odd_, isFolder);
    }
    const bool isAFolder = folderFlag == 1;
    const std::string_view name = fields_[fileName]->text();
    appendFileName(result, name, isAFolder);
    appendExtension(result);
    appendText(result, asText(description));
    appendText(result, asText(owner));
    ::append(result, static_cast<std::uint8_t>(folderFlag));
    requireText(folder, fields_[parentFolder]->text());
    requireText(fullPath,
                pathBehindDrive(scratch_, fields_[drive]->text(), fields_[parentFolder]->text(), name));

    numbers_.clear();
    ::append(numbers_, asWhole(fileCount, isAFolder));
    ::append(numbers_, asWhole(folderCount, isAFolder));
    for (const std::size_t column : {scanCompleteTime, dateInserted, dateAccessed, dateModified}) {
        ::append(numbers_, asMoment(column));
    }
    ::append(numbers_, asBytes(size));
    ::append(numbers_, asBytes(sizeOnDisk));
    ::append(numbers_, asWhole(idx, true));
    appendText(result, odd_);
    result.append(numbers_);
}

// --- Back -------------------------------------------------------------------------------------------------

void modRowForm::Decoder::takeFolder(std::string_view diskDrive, std::string_view diskParent) {
    if (diskDrive != diskDrive_ || diskParent != diskParent_) {
        diskDrive_ = diskDrive;
        diskParent_ = diskParent;
        drive_ = modDiskPaths::internalDrive(diskDrive, separator_);
        parent_ = modDiskPaths::internalFolder(diskParent, drive_, diskDrive, separator_);
    }
}

bool modRowForm::Decoder::take(std::string_view& bytes, Row& row) {
    Reader reader(bytes);
    const std::string_view diskDrive = reader.text();
    const std::string_view diskParent = reader.text();
    const std::string_view diskName = reader.text();
    const std::string_view diskExtension = reader.text();
    row[description] = textOrNull(reader.text());
    row[owner] = textOrNull(reader.text());
    const bool isAFolder = reader.number<std::uint8_t>() == 1;
    const std::string_view odd = reader.text();
    for (const std::size_t column : {fileCount, folderCount}) {
        const auto count = reader.number<std::int64_t>();
        row[column] = isAFolder ? Value(count) : Value();
    }
    for (const std::size_t column : {scanCompleteTime, dateInserted, dateAccessed, dateModified}) {
        row[column] = textOrNull(modWallClock::storedText(reader.number<std::uint32_t>()));
    }
    for (const std::size_t column : {size, sizeOnDisk}) {
        row[column] = static_cast<double>(reader.number<std::int64_t>());
    }
    row[idx] = reader.number<std::int64_t>();
    if (!reader.isSound()) {
        refuse();
    }
    if (!reader.isComplete()) {
        return false;
    }
    bytes = reader.rest();

    takeFolder(diskDrive, diskParent);
    row[drive] = textOrNull(drive_);
    row[parentFolder] = textOrNull(parent_);
    row[isFolder] = std::int64_t{isAFolder ? 1 : 0};
    row[fileName] =
        textOrNull(modDiskPaths::internalName(diskName, separator_).append(isAFolder ? "\\" : ""));
    row[extension] = textOrNull(modDiskPaths::internalName(diskExtension, separator_));

    // What is made of other columns is made of the right ones.
    std::array<bool, columnCount> isTold{};
    Reader oddReader(odd);
    while (!oddReader.rest().empty()) {
        const auto column = oddReader.number<std::uint8_t>();
        if (column >= columnCount) {
            refuse();
        }
        row[column] = takeValue(oddReader);
        isTold[column] = true;
        if (!oddReader.isComplete() || !oddReader.isSound()) {
            refuse();
        }
    }
    if (!isTold[folder]) {
        row[folder] = textOrNull(valueText(row[parentFolder]));
    }
    if (!isTold[fullPath]) {
        std::string path;
        row[fullPath] = textOrNull(pathBehindDrive(path, valueText(row[drive]), valueText(row[parentFolder]),
                                                   valueText(row[fileName])));
    }
    return true;
}

// --- The scans that rows come from ------------------------------------------------------------------------

std::string modRowForm::encodedScans(const std::vector<modScans::Scan>& scans) {
    std::string result;
    ::append(result, static_cast<std::uint32_t>(scans.size()));
    const auto appendMoment = [&](const std::optional<platform::Seconds>& moment) {
        appendValue(result, moment ? Value(*moment) : Value());
    };
    for (const modScans::Scan& scan : scans) {
        for (const std::string* each :
             {&scan.host, &scan.system, &scan.path, &scan.excludes, &scan.programVersion, &scan.uniqueId}) {
            appendText(result, *each);
        }
        appendMoment(scan.started);
        appendMoment(scan.finished);
        for (const bool flag : {scan.cancelled, scan.exact, scan.withOwners, scan.onDisk}) {
            ::append(result, static_cast<std::uint8_t>(flag ? 1 : 0));
        }
        ::append(result, scan.unreadableFolders);
        ::append(result, scan.unreadableFiles);
    }
    return result;
}

std::vector<modScans::Scan> modRowForm::decodedScans(std::string_view bytes) {
    Reader reader(bytes);
    const auto takeMoment = [&]() -> std::optional<platform::Seconds> {
        const Value value = takeValue(reader);
        const auto* moment = std::get_if<std::int64_t>(&value);
        return moment == nullptr ? std::nullopt : std::optional(*moment);
    };
    const auto count = reader.number<std::uint32_t>();
    std::vector<modScans::Scan> scans;
    for (std::uint32_t i = 0; i < count; ++i) {
        modScans::Scan scan;
        for (std::string* each :
             {&scan.host, &scan.system, &scan.path, &scan.excludes, &scan.programVersion, &scan.uniqueId}) {
            *each = reader.text();
        }
        scan.started = takeMoment();
        scan.finished = takeMoment();
        for (bool* flag : {&scan.cancelled, &scan.exact, &scan.withOwners, &scan.onDisk}) {
            *flag = reader.number<std::uint8_t>() == 1;
        }
        scan.unreadableFolders = reader.number<std::int64_t>();
        scan.unreadableFiles = reader.number<std::int64_t>();
        if (!reader.isComplete() || !reader.isSound() || scans.size() == modScans::mostRead) {
            refuse();
        }
        scans.push_back(std::move(scan));
    }
    if (!reader.isComplete()) {
        refuse();
    }
    return scans;
}
