#include "platform/properties.h"

#include <array>

#include "platform/win32/fileInformation.h"
#include "platform/win32/wide.h"

namespace platform {

constinit const std::string_view modeName = "Attributes";

namespace {

struct Attribute {
    DWORD bit;
    const char* text;
};

constexpr std::array<Attribute, 6> attributes{{{FILE_ATTRIBUTE_READONLY, "read-only"},
                                               {FILE_ATTRIBUTE_HIDDEN, "hidden"},
                                               {FILE_ATTRIBUTE_SYSTEM, "system"},
                                               {FILE_ATTRIBUTE_COMPRESSED, "compressed"},
                                               {FILE_ATTRIBUTE_ENCRYPTED, "encrypted"},
                                               {FILE_ATTRIBUTE_SPARSE_FILE, "sparse"}}};

std::string modeText(DWORD bits) {
    std::string text;
    for (const Attribute& attribute : attributes) {
        if ((bits & attribute.bit) != 0) {
            text.append(text.empty() ? "" : ", ").append(attribute.text);
        }
    }
    return text;
}

std::int64_t allocated(const std::wstring& path, std::int64_t otherwise) {
    DWORD high = 0;
    const DWORD low = ::GetCompressedFileSizeW(path.c_str(), &high);
    const bool failed = low == INVALID_FILE_SIZE && ::GetLastError() != ERROR_SUCCESS;
    return failed ? otherwise : static_cast<std::int64_t>(high) << 32 | low;
}

} // namespace

std::optional<Properties> propertiesOf(std::string_view internalPath) {
    const std::wstring path = widePath(internalPath);
    const DWORD bits = ::GetFileAttributesW(path.c_str());
    const std::optional<EntryFacts> facts = ownFacts(path);
    if (bits == INVALID_FILE_ATTRIBUTES || !facts) {
        return std::nullopt;
    }
    Properties result;
    static_cast<EntryFacts&>(result) = *facts;
    result.kind = isLink(path)      ? Properties::Kind::link
                  : facts->isFolder ? Properties::Kind::folder
                                    : Properties::Kind::file;
    result.sizeOnDisk = facts->isFolder ? 0 : allocated(path, facts->size);
    result.mode = modeText(bits);
    return result;
}

} // namespace platform
