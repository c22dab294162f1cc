#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/folders.h"

// The folders of a walk that can be read ahead of it, in the order in which the walk will want them: depth
// first, the subfolders of a folder in the order of its entries. Not for several threads at once, but for the
// entries of a folder that is being read: they belong to its reader.
class ReadOrder {
public:
    class Folder {
    public:
        [[nodiscard]] const std::string& path() const noexcept { return path_; } // with a trailing "\"

        // For whoever reads the folder, until ReadOrder::finish(), and for the walk from then on.
        platform::FolderListing entries;
        bool isRead = false; // false if it could not be read, or not to its end
        std::string failure; // why

    private:
        friend class ReadOrder;
        enum class State { unread, beingRead, read };
        struct Subfolder {
            std::size_t index; // among the entries
            bool isNew;
        };

        void reset();

        std::string path_;
        State state_ = State::unread;
        bool isNew_ = true;    // nothing was recorded in it, so everything below it will be read
        bool isTaken_ = false; // by the walk
        bool isDropped_ = false;
        std::size_t index_ = 0; // among its parent's entries
        std::vector<Subfolder> subfolders_;
        std::size_t next_ = 0;                        // the first of them that nobody reads or has read
        std::vector<std::shared_ptr<Folder>> chosen_; // those before it that were chosen
        std::size_t passed_ = 0;                      // how many of these the walk has taken or passed
        std::list<std::shared_ptr<Folder>>::iterator place_; // in order_
        bool isPlaced_ = false;
    };
    using FolderPtr = std::shared_ptr<Folder>;

    // Whether an entry of the folder (a path with a trailing "\") is walked if it is a folder itself.
    using IsWalked = std::function<bool(std::string_view folder, std::string_view name)>;

    explicit ReadOrder(IsWalked isWalked) : isWalked_(std::move(isWalked)) {}

    // The folder with which the walk begins. The walk reads it.
    [[nodiscard]] FolderPtr start(std::string_view path, bool isNew);

    // --- for readers
    // ----------------------------------------------------------------------------------------- The next
    // folder to read, for the caller; null if there is none at the moment.
    [[nodiscard]] FolderPtr choose();
    [[nodiscard]] bool hasNext() const;

    // Finds the subfolders of a folder that the caller has read; at any time, by any thread.
    void findSubfolders(Folder& folder) const;
    // The caller has read the folder, and has found its subfolders.
    void finish(const FolderPtr& folder);
    // The caller could not; the walk is to read it.
    void giveBack(const FolderPtr& folder);

    // --- for the walk
    // ---------------------------------------------------------------------------------------- The subfolder
    // that is this entry of the folder. Entries before it are no longer wanted. If it is unread, the walk
    // reads it, and calls findSubfolders() and finish().
    [[nodiscard]] FolderPtr take(Folder& parent, std::size_t index, bool isNew);
    [[nodiscard]] static bool isUnread(const Folder& folder) {
        return folder.state_ == Folder::State::unread;
    }
    [[nodiscard]] static bool isBeingRead(const Folder& folder) {
        return folder.state_ == Folder::State::beingRead;
    }

    // What the walk will do with a subfolder.
    enum class Plan { skip, walk, walkAsNew };

    // Of a folder that is not new, subfolders are only read ahead from here on. The walk has taken it.
    void open(const FolderPtr& folder, const std::function<Plan(std::string_view name)>& planFor);

    // The walk has recorded everything in the folder.
    void leave(FolderPtr folder);

    // What the folders that are read but not taken need in memory, about.
    [[nodiscard]] std::size_t waitingBytes() const noexcept { return waitingBytes_; }

private:
    using Place = std::list<FolderPtr>::iterator;

    void place(const FolderPtr& folder, Place before);
    void unplace(Folder& folder);
    void drop(Folder& top);
    [[nodiscard]] static std::size_t bytesOf(const Folder& folder);
    [[nodiscard]] FolderPtr newFolder();

    IsWalked isWalked_;
    // Folders that are being read, and folders that have been and whose subfolders are not all chosen.
    std::list<FolderPtr> order_;
    std::vector<FolderPtr> spare_; // kept for their memory
    std::size_t waitingBytes_ = 0;
};
