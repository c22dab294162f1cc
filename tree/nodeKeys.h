#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The keys of the folder tree's nodes. A folder's is its full internal path with trailing "\".
namespace modNodeKeys {

inline constexpr std::string_view root = "ROOT";       // "My Computer"
inline constexpr std::string_view network = "NETWORK"; // the servers' parent

// What a node's tag says once its subfolders have been listed.
inline constexpr std::string_view foldersProcessed = "FOLDERS_PROCESSED";

// What keys hold at most, in characters: a longer path is none.
inline constexpr std::size_t longest = 32767;

// True for a key as the program makes them: not empty, no longer than the longest, and without anything that
// internal paths do not hold, such as a quote. For keys that come from elsewhere.
[[nodiscard]] bool isSound(std::string_view key);

// The key of the placeholder that stands for a node's children until they are listed.
[[nodiscard]] std::string placeholderOf(std::string_view key);

// The key of the node that a placeholder stands below; empty when the key is no placeholder's.
[[nodiscard]] std::string_view parentOfPlaceholder(std::string_view placeholderKey);

// True for folders, drives and network shares: what can be listed and scanned. False for ROOT, NETWORK,
// servers (`\\server\`) and placeholders.
[[nodiscard]] bool isFolderKey(std::string_view key);

// The name of what the key stands for: its last component ("me" of `/home\me\`, "server" of `\\server\`).
[[nodiscard]] std::string_view nameOf(std::string_view key);

} // namespace modNodeKeys
