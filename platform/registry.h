#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

enum class RegistryRoot { localMachine, currentUser };

// The system's registry of text values. On a system without one, the file `registry.ini` stands in for it:
// one section per key, every value in quotes. Each operation opens and closes what it needs; none raises an
// error. Names ignore case; the value name "" is the key's unnamed default value.
class Registry {
public:
    // The folder of the stand-in file (an internal path ending in "\"). If it is empty, every operation on a
    // stand-in fails.
    explicit Registry(std::string_view folder);

    // Nothing if the key or value is missing, or if the value does not even hold an empty text.
    [[nodiscard]] std::optional<std::string> readText(RegistryRoot root, std::string_view keyPath,
                                                      std::string_view valueName) const noexcept;

    // Creates the key if it is missing. False for names and values that cannot be stored, such as those with
    // line breaks.
    [[nodiscard]] bool writeText(RegistryRoot root, std::string_view keyPath, std::string_view valueName,
                                 std::string_view text) const noexcept;

    // False if there is no such key or value.
    [[nodiscard]] bool deleteValue(RegistryRoot root, std::string_view keyPath,
                                   std::string_view valueName) const noexcept;
    [[nodiscard]] bool deleteSubkey(RegistryRoot root, std::string_view keyPath,
                                    std::string_view subkey) const noexcept;

private:
    std::string file_;
};

} // namespace platform
