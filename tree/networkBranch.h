#pragma once

#include <string>
#include <string_view>
#include <vector>

class FolderTree;

// The tree's network branch: the node "Network" (key "NETWORK"), below it one node per server (`\\server\`),
// below each the server's shares (`\\server\share\`). Only the shares are folders.
namespace modNetwork {

// Adds the branch as the parent's last child. The shares' roots come from platform::networkShares. They get
// placeholders without being looked at: a server that does not answer would hold the window up. Throws 35602
// when the branch is there.
void addNetworkBranch(FolderTree& tree, std::string_view parentKey, const std::vector<std::string>& shares);

} // namespace modNetwork
