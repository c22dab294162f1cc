#include "tree/history.h"

#include "platform/locale.h"

void History::visit(std::string_view key) {
    if (!keys_.empty()) {
        if (platform::sameName(keys_[present_], key)) {
            return;
        }
        keys_.resize(present_ + 1);
    }
    keys_.emplace_back(key);
    if (keys_.size() > most) {
        keys_.erase(keys_.begin());
    }
    present_ = keys_.size() - 1;
}

void History::correct(std::string_view key) {
    if (keys_.empty()) {
        visit(key);
    } else {
        keys_[present_] = key;
    }
}

std::string History::back(const IsThere& isThere) {
    while (hasBack()) {
        std::string key = keys_[present_ - 1];
        if (isThere(key)) {
            --present_;
            return key;
        }
        keys_.erase(keys_.begin() + static_cast<std::ptrdiff_t>(present_) - 1);
        --present_;
    }
    return {};
}

std::string History::forward(const IsThere& isThere) {
    while (hasForward()) {
        std::string key = keys_[present_ + 1];
        if (isThere(key)) {
            ++present_;
            return key;
        }
        keys_.erase(keys_.begin() + static_cast<std::ptrdiff_t>(present_) + 1);
    }
    return {};
}

void History::clear() {
    keys_.clear();
    present_ = 0;
}
