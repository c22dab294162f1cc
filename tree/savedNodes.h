#pragma once

#include "db/dao.h"
#include "tree/modDriveEnum.h"

class FolderTree;
class ImageList;

// The folder tree in table `nodes`, which serves only to carry it into a copy of the database and out of one.
// Errors are the database's and are thrown, for the command that saves or loads ends with them.
namespace modGlobal {

// Writes every node, placeholders included, in place of what the table holds, as one transaction. They are
// numbered from 1, each parent before its children; a top-level node's parent is -1. On error the table stays
// as it was.
void tvwSaveNodes(const FolderTree& tree, Database& database);

// Replaces the whole tree by the saved one, as it was: order, texts, tags, placeholders, what is expanded and
// selected. True when there was one; without a saved "My Computer" the tree stays as it is. Emits no signal
// of the tree and looks at no folder, only at which drives there are. On error the tree stays as it is.
//
// The rows may come from anywhere. Left out, with an entry in the error log, are those whose key is unsound
// or has been there before, whose parent does not stand before them, that lie more than 2,048 levels deep
// (Qt's layout recurses), and what is beyond 300,000 nodes or 256 MB of keys and texts. Texts are cut to
// 32,767 characters and made one line. Of several selected nodes the last is.
bool tvwLoadNodes(FolderTree& tree, Database& database, ImageList& images,
                  const modDriveEnum::DriveSource& drives = {});

// Empties the table. A load appends a file's nodes to what is there, so it is to be empty before:
// tvwLoadNodes leaves it so, and who has saved the tree into a copy empties it then.
void clearSavedNodes(Database& database);

} // namespace modGlobal
