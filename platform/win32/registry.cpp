#include "platform/registry.h"

#include <windows.h>

#include "platform/win32/wide.h"

namespace platform {

namespace {

// A key opened for one operation.
class OpenKey {
public:
    OpenKey(RegistryRoot root, std::string_view path, bool make) {
        HKEY above = root == RegistryRoot::localMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER; // NOLINT
        const std::wstring name = wide(path);
        const LSTATUS result =
            make ? ::RegCreateKeyExW(above, name.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                                     nullptr, &key_, nullptr)
                 : ::RegOpenKeyExW(above, name.c_str(), 0, KEY_ALL_ACCESS, &key_);
        if (result != ERROR_SUCCESS) {
            key_ = nullptr;
        }
    }
    ~OpenKey() {
        if (key_ != nullptr) {
            ::RegCloseKey(key_);
        }
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;

    [[nodiscard]] bool isOpen() const noexcept { return key_ != nullptr; }
    [[nodiscard]] HKEY get() const noexcept { return key_; }

private:
    HKEY key_ = nullptr;
};

// The name of the unnamed value is null.
class ValueName {
public:
    explicit ValueName(std::string_view name) : unnamed_(name.empty()), name_(wide(name)) {}
    [[nodiscard]] const wchar_t* get() const noexcept { return unnamed_ ? nullptr : name_.c_str(); }

private:
    bool unnamed_;
    std::wstring name_;
};

// False if the operation throws.
template <class Operation>
bool succeeds(Operation operation) noexcept {
    try {
        return operation();
    } catch (...) {
        return false;
    }
}

} // namespace

// No stand-in file is needed here.
Registry::Registry(std::string_view /*folder*/) {}

// NOLINTBEGIN(readability-convert-member-functions-to-static): elsewhere they need their object

// The value's type is ignored.
std::optional<std::string> Registry::readText(RegistryRoot root, std::string_view keyPath,
                                              std::string_view valueName) const noexcept {
    std::optional<std::string> text;
    static_cast<void>(succeeds([&] {
        const OpenKey key(root, keyPath, false);
        const ValueName name(valueName);
        DWORD size = 0;
        if (!key.isOpen() ||
            ::RegQueryValueExW(key.get(), name.get(), nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS ||
            size == 0) {
            return false;
        }
        std::wstring value(size / sizeof(wchar_t) + 1, L'\0');
        if (::RegQueryValueExW(key.get(), name.get(), nullptr, nullptr, reinterpret_cast<BYTE*>(value.data()),
                               &size) != ERROR_SUCCESS) { // NOLINT
            return false;
        }
        const std::size_t length = size / sizeof(wchar_t);
        text = narrow(std::wstring_view(value).substr(0, length > 0 ? length - 1 : 0)); // less the final NUL
        return true;
    }));
    return text;
}

bool Registry::writeText(RegistryRoot root, std::string_view keyPath, std::string_view valueName,
                         std::string_view text) const noexcept {
    return succeeds([&] {
        const OpenKey key(root, keyPath, true);
        const std::wstring value = wide(text);
        return key.isOpen() &&
               ::RegSetValueExW(key.get(), ValueName(valueName).get(), 0, REG_SZ,
                                reinterpret_cast<const BYTE*>(value.c_str()), // NOLINT
                                static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
    });
}

bool Registry::deleteValue(RegistryRoot root, std::string_view keyPath,
                           std::string_view valueName) const noexcept {
    return succeeds([&] {
        const OpenKey key(root, keyPath, false);
        return key.isOpen() && ::RegDeleteValueW(key.get(), ValueName(valueName).get()) == ERROR_SUCCESS;
    });
}

bool Registry::deleteSubkey(RegistryRoot root, std::string_view keyPath,
                            std::string_view subkey) const noexcept {
    return succeeds([&] {
        const OpenKey key(root, keyPath, false);
        return key.isOpen() && ::RegDeleteKeyW(key.get(), wide(subkey).c_str()) == ERROR_SUCCESS;
    });
}

// NOLINTEND(readability-convert-member-functions-to-static)

} // namespace platform
