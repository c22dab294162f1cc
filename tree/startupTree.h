#pragma once

#include <string>
#include <vector>

#include "tree/modDriveEnum.h"

class clsRegSettings;
class FolderTree;

// The tree as the window first shows it.
namespace modStartupTree {

// Who knows the places: the system, unless a test says otherwise.
struct Places {
    modDriveEnum::DriveSource drives;
    std::function<std::vector<std::string>()> networkShares = platform::networkShares;
};

// Fills the empty tree: "My Computer" (key "ROOT"), expanded, with the drives below it and, unless the
// settings forbid it, the network branch. Traps its errors and logs them as the main window's.
void initializeTreeView(FolderTree& tree, const clsRegSettings& settings, const Places& places = {});

// Has the tree be again as at the start, whatever it holds.
void makeAnew(FolderTree& tree, const clsRegSettings& settings, const Places& places = {});

} // namespace modStartupTree
