#include "window/dialogs/historyReader.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>

// Shared with the thread, which may outlive the reader.
struct HistoryReader::Job {
    Job(HistoryReader& reader, Question asked) : question(std::move(asked)), owner(&reader) {}

    // Calls it with the owner, in the owner's thread, if there still is one.
    void tellOwner(std::function<void(HistoryReader&)> tell) {
        const std::lock_guard lock(mutex);
        if (owner != nullptr) {
            QMetaObject::invokeMethod(
                owner, [to = owner, tell = std::move(tell)] { tell(*to); }, Qt::QueuedConnection);
        }
    }

    const Question question;
    std::atomic<bool> isCancelled = false;
    std::mutex mutex; // for what follows
    HistoryReader* owner;
    bool isDone = false;
    std::condition_variable done;
};

HistoryReader::HistoryReader() = default;

HistoryReader::~HistoryReader() {
    constexpr std::chrono::seconds patience{1};
    if (job_) {
        job_->isCancelled = true;
        std::unique_lock lock(job_->mutex);
        job_->owner = nullptr;
        job_->done.wait_for(lock, patience, [this] { return job_->isDone; });
    }
}

void HistoryReader::ask(const Question& question) {
    question_ = question;
    isAsked_ = true;
    isChanged_ = true;
    if (job_) {
        job_->isCancelled = true;
    } else {
        begin();
    }
}

void HistoryReader::cancel() {
    if (job_) {
        job_->isCancelled = true;
    }
}

void HistoryReader::begin() {
    isChanged_ = false;
    job_ = std::make_shared<Job>(*this, question_);
    try {
        std::thread(work, job_).detach();
    } catch (const std::exception& error) { // there are too many threads
        Answer answer;
        answer.question = question_;
        answer.failure = error.what();
        takeAnswer(job_.get(), answer);
    }
}

void HistoryReader::work(const std::shared_ptr<Job>& job) {
    Answer answer;
    answer.question = job->question;
    try {
        const std::vector<std::string> files = modExport::savedScansAt(job->question.scans);
        answer.files = files.size();
        const auto progress = [&](std::size_t done) {
            job->tellOwner([of = job.get(), done, all = files.size()](HistoryReader& owner) {
                owner.takeProgress(of, static_cast<int>(done), static_cast<int>(all));
            });
        };
        answer.histories = modExport::readHistories(
            files, job->question.folder,
            {job->question.mostSubfolders, [&] { return !job->isCancelled; }, progress});
    } catch (const std::exception& error) {
        answer.failure = error.what();
    }
    job->tellOwner(
        [of = job.get(), answer = std::move(answer)](HistoryReader& owner) { owner.takeAnswer(of, answer); });
    const std::lock_guard lock(job->mutex);
    job->isDone = true;
    job->done.notify_all();
}

void HistoryReader::takeProgress(const Job* job, int files, int ofFiles) {
    if (job == job_.get() && !isChanged_) {
        Q_EMIT progressed(files, ofFiles);
    }
}

void HistoryReader::takeAnswer(const Job* job, const Answer& answer) {
    if (job != job_.get()) {
        return;
    }
    job_.reset();
    if (isChanged_) {
        begin();
        return;
    }
    isAsked_ = false;
    Q_EMIT answered(answer);
}
