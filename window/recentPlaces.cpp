#include "window/recentPlaces.h"

#include <QByteArray>
#include <algorithm>

#include "base/clsFile.h"
#include "platform/locale.h"
#include "platform/runtimeError.h"
#include "tree/nodeKeys.h"

namespace {

constexpr char separator = '\n'; // no internal path holds one

constexpr std::array stateKeys{"recentFolders", "recentSavedScans"};

bool isPath(std::string_view text) {
    try {
        return modNodeKeys::isSound(text) && !clsFile(text).drive().empty();
    } catch (const RuntimeError&) { // such as is no path at all
        return false;
    }
}

} // namespace

void RecentPlaces::add(Kind kind, std::string_view path) {
    const std::string added(path); // it may be one of those here
    remove(kind, added);
    std::vector<std::string>& places = places_.at(index(kind));
    places.insert(places.begin(), added);
    places.resize(std::min(places.size(), most));
}

void RecentPlaces::remove(Kind kind, std::string_view path) {
    std::erase_if(places_.at(index(kind)),
                  [&](const std::string& place) { return platform::sameName(place, path); });
}

void RecentPlaces::restore(const QSettings& state) {
    clear();
    for (const Kind kind : {Kind::folder, Kind::savedScan}) {
        const std::string saved =
            state.value(QString::fromLatin1(stateKeys.at(index(kind)))).toByteArray().toStdString();
        std::vector<std::string> read;
        for (std::size_t start = 0; start < saved.size() && read.size() < most;) {
            const std::size_t end = std::min(saved.find(separator, start), saved.size());
            if (const std::string path = saved.substr(start, end - start); isPath(path)) {
                read.push_back(path);
            }
            start = end + 1;
        }
        std::for_each(read.rbegin(), read.rend(), [&](const std::string& path) { add(kind, path); });
    }
}

void RecentPlaces::save(QSettings& state) const {
    for (const Kind kind : {Kind::folder, Kind::savedScan}) {
        QByteArray saved;
        for (const std::string& path : of(kind)) {
            saved += QByteArray::fromStdString(path) + separator;
        }
        state.setValue(QString::fromLatin1(stateKeys.at(index(kind))), saved);
    }
}
