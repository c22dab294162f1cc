#pragma once

#include <QMenu>
#include <QObject>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "window/menu/popMenu.h"
#include "window/recentPlaces.h"

// The submenu File > Open Recent.
class RecentMenu final : public QObject {
    Q_OBJECT

public:
    // Nothing is owned.
    struct Dependencies {
        PopMenu& cP;
        // Opens a path as typed; false if there is nothing.
        std::function<bool(const std::string& path)> open;
    };

    explicit RecentMenu(Dependencies dependencies) : dependencies_(std::move(dependencies)) {}

    // To be called when the menus have been made.
    void connectMenu();

    [[nodiscard]] RecentPlaces& places() { return places_; }
    void add(RecentPlaces::Kind kind, std::string_view path);

Q_SIGNALS:
    // What there is to remember is another.
    void changed();

private:
    void fill(QMenu& menu);
    void addPlaces(QMenu& menu, RecentPlaces::Kind kind);
    void choose(RecentPlaces::Kind kind, const std::string& path);

    Dependencies dependencies_;
    RecentPlaces places_;
};
