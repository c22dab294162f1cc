#include "window/pathBox.h"

#include "platform/paths.h"
#include "widgets/qtText.h"

void PathBox::showFolder(const std::string& key) {
    if (hasFocus() && isModified()) {
        return;
    }
    shownKey_ = key;
    shownText_ = modQt::shownFolder(key);
    if (text() != shownText_) {
        setText(shownText_);
    }
}

std::string PathBox::takePath() {
    completion_.hide();
    setModified(false);
    return !shownKey_.empty() && text() == shownText_ ? platform::displayPath(shownKey_)
                                                      : text().toStdString();
}
