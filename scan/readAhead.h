#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/folders.h"
#include "scan/readOrder.h"
#include "scan/readers.h"

// Reads the folders of a walk ahead of it, by threads of its own (the readers). The walk gets each folder as
// if it had read it at that moment or a little earlier; it reads those itself that no reader has begun.
class ReadAhead {
public:
    using FolderPtr = ReadOrder::FolderPtr;

    struct Walk {
        int readers = -1;        // clsSettings::readers
        bool withOwners = false; // platform::FolderReader::setWithOwners
        // Called by several threads, even after the walk has ended: it has to keep what it needs.
        ReadOrder::IsWalked isWalked;
        // Called by the walk's thread, some 20 times a second while it waits. If it returns false, the folder
        // that it waits for counts as unreadable.
        std::function<bool()> goesOn;
    };

    explicit ReadAhead(const Walk& walk);
    // Does not wait for a reader that waits for its volume.
    ~ReadAhead();
    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;

    // The folder with which the walk begins, read. `isNew`: nothing was recorded for it or in it.
    [[nodiscard]] FolderPtr start(std::string_view path, bool isNew);

    // The subfolder that is this entry of the folder, read. Call it in the order of the entries; those passed
    // over are not wanted.
    [[nodiscard]] FolderPtr subfolder(const FolderPtr& parent, std::size_t index, bool isNew);

    // ReadOrder::open and leave.
    void open(const FolderPtr& folder, const std::function<ReadOrder::Plan(std::string_view name)>& planFor);
    void leave(FolderPtr folder);

private:
    void readItself(const FolderPtr& folder, bool isStart);

    const bool withOwners_;
    const std::function<bool()> goesOn_;
    const std::shared_ptr<Readers> readers_;
    platform::FolderReader reader_; // of the walk
    bool helps_ = false; // while the walk waits, it reads ahead, too; never where a call may not return
};
