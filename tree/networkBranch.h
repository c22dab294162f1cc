#pragma once

#include <string>
#include <string_view>
#include <vector>

class FolderTree;

// The tree's network branch: the node "Network" (key "NETWORK"), below it a node for each server
// (`\\server\`), and below each server its shares (`\\server\share\`). Only the shares are folders.
namespace modNetwork {

// Adds the branch as the parent's last child. The shares' roots come from platform::networkShares. They get
// placeholders without being read, because a server that does not respond would block the window. Throws
// 35602 if the branch already exists.
void addNetworkBranch(FolderTree& tree, std::string_view parentKey, const std::vector<std::string>& shares);

} // namespace modNetwork
