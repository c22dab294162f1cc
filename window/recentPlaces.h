#pragma once

#include <QSettings>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// The folders and saved scans that were opened last, as internal paths, the newest first.
class RecentPlaces {
public:
    enum class Kind : std::size_t { folder, savedScan };
    static constexpr std::size_t most = 8; // of each kind

    [[nodiscard]] const std::vector<std::string>& of(Kind kind) const { return places_.at(index(kind)); }
    [[nodiscard]] bool isEmpty() const { return of(Kind::folder).empty() && of(Kind::savedScan).empty(); }

    // Puts it first, once; the oldest ones fall out.
    void add(Kind kind, std::string_view path);
    void remove(Kind kind, std::string_view path);
    void clear() { places_ = {}; }

    // What cannot have been saved is left out.
    void restore(const QSettings& state);
    void save(QSettings& state) const;

private:
    [[nodiscard]] static std::size_t index(Kind kind) { return static_cast<std::size_t>(kind); }

    std::array<std::vector<std::string>, 2> places_;
};
