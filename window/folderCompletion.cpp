#include "window/folderCompletion.h"

#include <QAbstractItemView>
#include <algorithm>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/folders.h"
#include "platform/locale.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"
#include "widgets/qtText.h"

namespace {

constexpr int mostThreads = 4; // that wait for drives that do not answer

// The typed text up to and including its last separator; empty if it has none.
QString folderIn(const QString& typed) {
    const qsizetype slash = typed.lastIndexOf(u'/');
    const qsizetype own = typed.lastIndexOf(QLatin1Char(platform::displaySeparator));
    return typed.left(std::max(slash, own) + 1);
}

// Whether the path can be typed as it is shown.
bool isPlain(const QString& name) {
    return std::none_of(name.begin(), name.end(), [](QChar c) {
        return c < QChar(u' ') || c == QChar::ReplacementCharacter || c == QChar(u'\x7F');
    });
}

} // namespace

// Where threads leave what they have listed; it outlives the object that has asked them.
class FolderCompletion::Outbox {
public:
    explicit Outbox(FolderCompletion& owner) : owner_(&owner) {}

    void close() {
        const std::lock_guard lock(mutex_);
        owner_ = nullptr;
    }

    [[nodiscard]] bool enter() {
        const std::lock_guard lock(mutex_);
        const bool isFree = threads_ < mostThreads;
        threads_ += isFree ? 1 : 0;
        return isFree;
    }

    void leave(const QString& folder, const QStringList& names) {
        const std::lock_guard lock(mutex_);
        --threads_;
        if (owner_ != nullptr) {
            QMetaObject::invokeMethod(
                owner_, [owner = owner_, folder, names] { owner->take(folder, names); },
                Qt::QueuedConnection);
        }
    }

private:
    std::mutex mutex_;
    FolderCompletion* owner_;
    int threads_ = 0;
};

FolderCompletion::FolderCompletion(QLineEdit& box, Lister lister)
    : box_(box), lister_(std::move(lister)), outbox_(std::make_shared<Outbox>(*this)) {
    constexpr int rows = 12;
    const bool ignoresCase = platform::namesIgnoreCase();
    completer_.setModel(&paths_);
    completer_.setCaseSensitivity(ignoresCase ? Qt::CaseInsensitive : Qt::CaseSensitive);
    completer_.setModelSorting(ignoresCase ? QCompleter::CaseInsensitivelySortedModel
                                           : QCompleter::CaseSensitivelySortedModel);
    completer_.setMaxVisibleItems(rows);
    box_.setCompleter(&completer_);
    connect(&box_, &QLineEdit::textEdited, this, &FolderCompletion::complete);
}

FolderCompletion::~FolderCompletion() {
    outbox_->close();
    box_.setCompleter(nullptr);
}

QStringList FolderCompletion::subfolders(const QString& typedFolder) {
    QStringList names;
    try {
        platform::FolderReader reader;
        platform::FolderListing listing;
        reader.readNames(platform::toInternal(typedFolder.toStdString()), listing);
        for (std::size_t i = 0; i < listing.size(); ++i) {
            if (listing[i].isFolder) {
                names << QString::fromStdString(platform::displayName(listing[i].name));
            }
        }
    } catch (const RuntimeError&) { // such as a relative path, and no current folder
    }
    return names;
}

void FolderCompletion::hide() {
    completer_.popup()->hide();
}

void FolderCompletion::complete(const QString& typed) {
    const QString folder = folderIn(typed);
    if (folder.isEmpty()) {
        folder_.clear();
        paths_.setStringList({});
    } else if (folder != folder_) {
        folder_ = folder;
        isAsked_ = false;
        isListed_ = false;
        paths_.setStringList({});
        ask();
    } else if (isListed_ && withHidden_ != typed.mid(folder.size()).startsWith(u'.')) {
        offer(typed);
    }
}

// If all threads are waiting, the first one to come back has it asked for again.
void FolderCompletion::ask() {
    if (folder_.isEmpty() || isAsked_ || !outbox_->enter()) {
        return;
    }
    isAsked_ = true;
    std::thread([outbox = outbox_, lister = lister_, folder = folder_] {
        const auto before = [&](const QString& left, const QString& right) {
            return platform::namesIgnoreCase() ? left.compare(right, Qt::CaseInsensitive) < 0 : left < right;
        };
        QStringList names = lister(folder);
        names.removeIf([](const QString& name) { return !isPlain(name); });
        std::sort(names.begin(), names.end(), before);
        outbox->leave(folder, names);
    }).detach();
}

void FolderCompletion::take(const QString& folder, const QStringList& names) {
    if (folder != folder_) { // another one was typed meanwhile
        ask();
        return;
    }
    names_ = names;
    isListed_ = true;
    const QString typed = box_.text();
    if (folderIn(typed) == folder) {
        offer(typed);
    }
}

void FolderCompletion::offer(const QString& typed) {
    withHidden_ = typed.mid(folder_.size()).startsWith(u'.');
    QStringList paths;
    for (const QString& name : std::as_const(names_)) {
        if (withHidden_ || !name.startsWith(u'.')) {
            paths << folder_ + name;
        }
    }
    paths_.setStringList(paths);
    completer_.setCompletionPrefix(typed);
    const bool isDone = completer_.completionCount() == 1 && completer_.currentCompletion() == typed;
    if (box_.hasFocus() && box_.isModified() && completer_.completionCount() > 0 && !isDone) {
        completer_.complete();
    }
}
