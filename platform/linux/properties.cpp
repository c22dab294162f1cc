#include "platform/properties.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>

#include "platform/answering.h"
#include "platform/linux/folderCalls.h"
#include "platform/paths.h"

namespace platform {

constinit const std::string_view modeName = "Mode";

namespace {

char typeLetter(mode_t mode) {
    struct Letter {
        mode_t type;
        char letter;
    };
    constexpr std::array<Letter, 7> letters{{{S_IFDIR, 'd'},
                                             {S_IFLNK, 'l'},
                                             {S_IFREG, '-'},
                                             {S_IFCHR, 'c'},
                                             {S_IFBLK, 'b'},
                                             {S_IFIFO, 'p'},
                                             {S_IFSOCK, 's'}}};
    for (const Letter& letter : letters) {
        if ((mode & S_IFMT) == letter.type) {
            return letter.letter;
        }
    }
    return '?';
}

// As ls writes it.
std::string modeText(mode_t mode) {
    constexpr std::string_view rights = "rwxrwxrwx";
    std::string text(1, typeLetter(mode));
    for (std::size_t i = 0; i < rights.size(); ++i) {
        text += (mode & (0400U >> i)) != 0 ? rights[i] : '-';
    }
    const auto special = [&](mode_t bit, std::size_t place, char set, char alone) {
        if ((mode & bit) != 0) {
            text[place] = text[place] == 'x' ? set : alone;
        }
    };
    special(S_ISUID, 3, 's', 'S');
    special(S_ISGID, 6, 's', 'S');
    special(S_ISVTX, 9, 't', 'T');
    return text;
}

Properties::Kind kindOf(mode_t mode) {
    return S_ISDIR(mode)   ? Properties::Kind::folder
           : S_ISLNK(mode) ? Properties::Kind::link
           : S_ISREG(mode) ? Properties::Kind::file
                           : Properties::Kind::other;
}

} // namespace

std::optional<Properties> propertiesOf(std::string_view internalPath) {
    if (!answers(internalPath)) {
        return std::nullopt;
    }
    const std::string native = toNative(internalPath);
    struct stat status {};
    if (::lstat(native.c_str(), &status) != 0) {
        return std::nullopt;
    }
    Properties result;
    static_cast<EntryFacts&>(result) = factsOf(status);
    result.kind = kindOf(status.st_mode);
    result.mode = modeText(status.st_mode);
    std::array<char, PATH_MAX> target{};
    const ssize_t length =
        S_ISLNK(status.st_mode) ? ::readlink(native.c_str(), target.data(), target.size()) : 0;
    result.linkTarget.assign(target.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    return result;
}

} // namespace platform
