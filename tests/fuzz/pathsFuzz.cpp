// Names of any bytes, on their way into the program and out again, and the arithmetic on paths.

#include <string>

#include "base/clsFile.h"
#include "base/terminalText.h"
#include "fuzz/support/input.h"
#include "fuzz/support/require.h"
#include "platform/paths.h"

namespace {

void requireNameReturns(std::string_view name) {
    const std::string internal = platform::internalName(name);
    require(isUtf8(internal), "an internal name is valid UTF-8");
    for (const char c : internal) {
        require(static_cast<unsigned char>(c) >= 0x20 && c != 0x7F &&
                    std::string_view("\\\"|*?<>").find(c) == std::string_view::npos,
                "an internal name has no character that paths cannot hold");
    }
    std::string native;
    platform::appendNativeName(native, internal);
    require(native == name, "a name returns to the system");
    require(platform::displayName(internal) == name, "a name is shown as it is on the disk");
}

// Without "..", which would have to look at the disk.
void requirePathReturns(std::string_view names) {
    std::string native;
    for (Input rest(reinterpret_cast<const std::uint8_t*>(names.data()), names.size());
         !rest.isEmpty();) { // NOLINT
        const std::string_view name = rest.upTo('/');
        if (!name.empty() && name != "." && name != "..") {
            native.append("/").append(name);
        }
    }
    if (native.find('\\') != std::string::npos) {
        return; // it may be an internal path as well
    }
    const std::string internal = platform::toInternal(native);
    require(platform::toNative(internal) == native, "a path returns to the system");
    require(native.empty() || platform::toInternal(internal) == internal, "an internal path stays as it is");
    require(platform::toNative(platform::toInternal(native + "/")) == (native.empty() ? "/" : native),
            "also with a separator at its end");
}

void requireSafeForTerminal(std::string_view text) {
    const std::string shown = forTerminal(text);
    require(isUtf8(shown), "a terminal gets valid UTF-8");
    std::string original;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const auto byte = static_cast<unsigned char>(shown[i]);
        require(byte >= 0x20 && byte != 0x7F, "a terminal gets no control characters");
        require(byte != 0xC2 || static_cast<unsigned char>(shown[i + 1]) > 0x9F, "also none of two bytes");
        const std::string_view digits = std::string_view(shown).substr(i + 1, 3);
        if (byte == '\\' && digits.size() == 3 &&
            digits.find_first_not_of("01234567") == std::string_view::npos) {
            original.push_back(
                static_cast<char>((digits[0] - '0') * 64 + (digits[1] - '0') * 8 + digits[2] - '0'));
            i += 3;
        } else {
            original.push_back(shown[i]);
        }
    }
    require(original == text, "the original text can be told from what a terminal shows");
}

template <class Property>
std::string_view part(Property property) {
    try {
        return property();
    } catch (const RuntimeError& error) {
        require(error.number() == errorNumber::invalidCall || error.number() == errorNumber::overflow,
                "arithmetic on paths fails with 5 or 6");
        return "failed";
    }
}

void requireParts(std::string_view path) {
    const clsFile file(path);
    const std::string_view drive = part([&] { return file.drive(); });
    if (drive == "failed") {
        return;
    }
    require(drive.empty() || std::string(drive).append(file.fullPathNoDrive()) == path,
            "a path is its drive and the rest");
    require(std::string(file.folder()).append(path.substr(file.folder().size())) == path &&
                (file.folder().empty() || file.FileName() == path.substr(file.folder().size())),
            "a path is its folder and its name");
    const std::string_view extension = file.fileExtension();
    require(extension == "(no extension)" || path.ends_with(extension), "a path ends in its extension");
    static_cast<void>(part([&] { return file.fileNameWithoutExtension(); }));
    const std::string_view parent = part([&] { return file.parentFolder(); });
    require(parent == "failed" || parent.size() <= path.size() + 1, "a parent's path is no longer");
    require(file.lastFolder().size() <= path.size(), "a name is no longer than its path");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = Input(data, size).rest();
    const std::string_view name = text.substr(0, text.find_first_of(std::string_view("/\0", 2)));
    requireNameReturns(name);
    requirePathReturns(text.substr(0, text.find('\0')));
    requireSafeForTerminal(text);
    requireParts(text);
    requireParts(platform::internalName(text));
    static_cast<void>(platform::displayPath(text));
    return 0;
}
