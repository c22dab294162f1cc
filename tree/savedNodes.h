#pragma once

#include "db/dao.h"
#include "tree/modDriveEnum.h"

class FolderTree;
class ImageList;

// The folder tree in table `nodes`, which is only used to save it with a scan and to load it again. Database
// errors are thrown, and end the command that saves or loads.
namespace modGlobal {

// Writes all nodes, including placeholders, in one transaction, replacing the table's content. They are
// numbered from 1, each parent before its children; the parent of a top-level node is -1. After an error, the
// table is unchanged.
void tvwSaveNodes(const FolderTree& tree, Database& database);

// Replaces the whole tree by the saved one: order, texts, tags, placeholders, expanded and selected nodes.
// True if there was one; without a saved "My Computer", the tree stays unchanged. Emits no signals and reads
// no folders; only the drives are queried. After an error, the tree is unchanged.
//
// The rows may come from anywhere. Rows are left out, with an entry in the error log, if their key is invalid
// or a duplicate, if their parent does not come before them, if they are more than 2,048 levels deep (Qt's
// layout is recursive), or if they exceed 300,000 nodes or 256 MB of keys and texts. Texts are cut to 32,767
// characters and joined into one line. If several nodes are selected, the last one counts.
bool tvwLoadNodes(FolderTree& tree, Database& database, ImageList& images,
                  const modDriveEnum::DriveSource& drives = {});

// Empties the table. Loading appends a file's nodes to the table, which must therefore be empty: tvwLoadNodes
// empties it, and so must the caller of tvwSaveNodes after saving a copy.
void clearSavedNodes(Database& database);

} // namespace modGlobal
