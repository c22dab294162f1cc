#pragma once

#include <QObject>
#include <memory>
#include <string>

#include "export/readHistories.h"

// Reads the histories of a folder and of its largest subfolders in a thread of its own, because there may be
// hundreds of files, on a drive that is slow to answer or never does. There is one such thread at most: what
// is asked for meanwhile begins when it has come back, which it does soon after it was cancelled.
class HistoryReader final : public QObject {
    Q_OBJECT

public:
    struct Question {
        std::string scans;  // a folder of saved scans or a file, as typed
        std::string folder; // as it is shown
        std::size_t mostSubfolders = 0;
        bool operator==(const Question&) const = default;
    };

    struct Answer {
        Question question;
        modExport::FolderHistories histories;
        std::size_t files = 0; // that there were to read
        std::string failure;   // why there is nothing to read; else empty
    };

    HistoryReader();
    // Waits a moment for the thread, and leaves it behind if it does not come back.
    ~HistoryReader() override;

    // What was asked before is not answered any more.
    void ask(const Question& question);
    // What has been read so far is the answer.
    void cancel();
    [[nodiscard]] bool isReading() const noexcept { return isAsked_; }

Q_SIGNALS:
    void progressed(int files, int ofFiles);
    void answered(const HistoryReader::Answer& answer);

private:
    struct Job;
    static void work(const std::shared_ptr<Job>& job);
    void begin();
    void takeProgress(const Job* job, int files, int ofFiles);
    void takeAnswer(const Job* job, const Answer& answer);

    Question question_;
    bool isAsked_ = false;     // and not answered
    bool isChanged_ = false;   // since the thread has begun
    std::shared_ptr<Job> job_; // what the thread works at; null if there is none
};
