#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The keys of the folder tree's nodes. A folder's key is its full internal path with a trailing "\".
namespace modNodeKeys {

inline constexpr std::string_view root = "ROOT";       // "My Computer"
inline constexpr std::string_view network = "NETWORK"; // the parent of the servers

// The tag of a node whose subfolders have been listed.
inline constexpr std::string_view foldersProcessed = "FOLDERS_PROCESSED";

// The maximum length of a key in characters; longer paths are not keys.
inline constexpr std::size_t longest = 32767;

// True for a key in the form that the program creates: not empty, not too long, and without anything that
// internal paths cannot contain, such as a quote. For keys from elsewhere.
[[nodiscard]] bool isSound(std::string_view key);

// The key of a node's placeholder, which stands for its children until they are listed.
[[nodiscard]] std::string placeholderOf(std::string_view key);

// The key of the node above a placeholder; empty if this is not a placeholder's key.
[[nodiscard]] std::string_view parentOfPlaceholder(std::string_view placeholderKey);

// True for folders, drives and network shares, which can be listed and scanned. False for ROOT, NETWORK,
// servers (`\\server\`) and placeholders.
[[nodiscard]] bool isFolderKey(std::string_view key);

// The key of the folder that contains this one. A volume's root is contained in the folder where it is
// mounted; empty for other roots, and for shares.
[[nodiscard]] std::string above(std::string_view folderKey);

// The last component of the key ("me" for `/home\me\`, "server" for `\\server\`).
[[nodiscard]] std::string_view nameOf(std::string_view key);

} // namespace modNodeKeys
