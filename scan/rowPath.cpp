#include "scan/rowPath.h"

namespace {

// A path that is no longer than this has no more characters than a path may have.
constexpr std::size_t surelyShort = 32767;

// Up to and including the "\" before the last name; empty if there is none.
std::string_view upToName(std::string_view path) {
    if (path.ends_with('\\')) {
        path.remove_suffix(1);
    }
    return path.substr(0, path.rfind('\\') + 1);
}

} // namespace

void RowPath::set(std::string_view path) {
    path_ = path;
    isFolder_ = path.ends_with('\\');
    if (!isShared_ || path.size() > surelyShort || upToName(path) != parent_) {
        deriveAll();
        return;
    }
    fileName_ = path.substr(parent_.size());
    extension_ = clsFile::extensionOf(isFolder_ ? std::string_view() : fileName_);
}

void RowPath::deriveAll() {
    isShared_ = false;
    file_.setFullPath(path_);
    parent_ = file_.parentFolder();
    drive_ = path_.substr(0, file_.drive().size());
    // A folder's own name, including its "\", is the part of its path that its parent's path lacks.
    folder_ = isFolder_ ? std::string_view(parent_) : path_.substr(0, file_.folder().size());
    fileName_ =
        isFolder_ ? path_.substr(parent_.size()) : path_.substr(path_.size() - file_.FileName().size());
    extension_ = clsFile::extensionOf(path_.substr(path_.rfind('\\') + 1));
    const std::string anItem = parent_ + "x\\";
    if (!parent_.empty() && upToName(path_) == parent_ && anItem.size() <= surelyShort) {
        file_.setFullPath(anItem); // a share's root is longer than the server above it
        isShared_ = file_.drive().size() <= parent_.size();
    }
    if (isShared_) {
        drive_ = std::string_view(parent_).substr(0, drive_.size());
        folder_ = parent_;
    }
}
