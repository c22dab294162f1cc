#include "window/tabs/openComparison.h"

#include <utility>

#include "platform/locale.h"

void OpenComparison::set(Comparison comparison) {
    comparison_ = std::move(comparison);
    isOutdated_ = false;
    Q_EMIT changed();
}

void OpenComparison::replaceResult(modChanges::Request request, modChanges::Result result) {
    modChanges::forget(database(), comparison_->request.number);
    comparison_->request = std::move(request);
    comparison_->result = std::move(result);
    isOutdated_ = false;
    Q_EMIT changed();
}

void OpenComparison::close() {
    comparison_.reset();
    isOutdated_ = false;
    Q_EMIT changed();
}

void OpenComparison::setOutdated() {
    if (isOpen() && !std::exchange(isOutdated_, true)) {
        Q_EMIT changed();
    }
}

bool OpenComparison::covers(std::string_view folder) const {
    return isOpen() && modScans::isAtOrBelow(folder, comparison_->request.folder);
}

std::optional<modChanges::Change> OpenComparison::itself(std::string_view folder) const {
    const modChanges::Request& request = comparison_->request;
    if (platform::sameName(folder, request.folder)) {
        return comparison_->result.folder;
    }
    return modChanges::folderRow(database(), request.number, folder);
}

std::vector<modChanges::Change> OpenComparison::entriesIn(std::string_view folder) const {
    return modChanges::entriesIn(database(), comparison_->request.number, folder);
}

std::vector<modChanges::Change> OpenComparison::childrenOf(std::string_view folder) const {
    return modChanges::childrenOf(database(), comparison_->request.number, folder);
}
