#pragma once

#include <QCompleter>
#include <QLineEdit>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QStringListModel>
#include <functional>
#include <memory>

// Completes the name of a folder while its path is typed: a list of the subfolders of the folder typed so
// far, which is read in a thread of its own, because a drive may be slow to answer, or never answer. Names
// that begin with a dot are offered only to those who type one.
class FolderCompletion final : public QObject {
    Q_OBJECT

public:
    // The names of the subfolders of a folder as typed, in any order. Called in a thread of its own.
    using Lister = std::function<QStringList(const QString& typedFolder)>;

    explicit FolderCompletion(QLineEdit& box, Lister lister = subfolders);
    ~FolderCompletion() override;

    [[nodiscard]] static QStringList subfolders(const QString& typedFolder);

    // Closes the list.
    void hide();

private:
    class Outbox;

    void complete(const QString& typed);
    void ask();
    void take(const QString& folder, const QStringList& names);
    void offer(const QString& typed);

    QLineEdit& box_;
    Lister lister_;
    QStringListModel paths_;
    QCompleter completer_;
    QString folder_; // as typed, with its separator
    bool withHidden_ = false;
    QStringList names_; // in the folder
    bool isAsked_ = false;
    bool isListed_ = false;
    std::shared_ptr<Outbox> outbox_;
};
