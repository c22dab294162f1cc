#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "db/dao.h"
#include "views/findConditions.h"

namespace modFind {

// By what the items are ranked, of which only the first are wanted. Dates that are none rank last.
struct Order {
    enum class By { size, modified, accessed };
    By by = By::size;
    bool descending = true;

    [[nodiscard]] bool operator==(const Order&) const = default;
};

// One recorded file or folder.
struct Item {
    std::string folder; // the one that it is in, with its drive and a trailing "\"
    std::string name;   // as stored: a folder's ends in "\"
    std::string description;
    std::string owner;
    std::string modified; // as stored
    std::string accessed;
    double size = 0;
    bool isFolder = false;
    bool isGone = false; // it is only in the earlier scan

    [[nodiscard]] std::string path() const { return folder + name; }
    [[nodiscard]] std::string_view nameAlone() const noexcept; // without "\"
};

// "1 file, 20 bytes", "1,024 folders, 2.0 Gb".
[[nodiscard]] std::string foundText(Kind kind, std::int64_t count, double size);

// Finds items in the table, in pieces, so that others can do something between them, even change the rows.
class FindQuery {
public:
    static constexpr std::size_t all = SIZE_MAX;

    // `folder` is the key of the one below which to look; empty for all rows. `most` items are kept.
    FindQuery(const Conditions& conditions, const Order& order, std::string_view folder, std::size_t most);

    // Works for about that long; true when all is found. What differs from an earlier scan is found in the
    // database beside the working one (views/changes.h). Database errors are thrown.
    [[nodiscard]] bool advance(Database& database, std::chrono::milliseconds time);
    // Works until all is found.
    void run(Database& database);

    [[nodiscard]] const Conditions& conditions() const noexcept { return conditions_; }
    [[nodiscard]] const Order& order() const noexcept { return order_; }

    // What was found: the number and total size of all, and the first of them in order.
    [[nodiscard]] std::int64_t count() const noexcept { return count_; }
    [[nodiscard]] double size() const noexcept;
    [[nodiscard]] const std::vector<Item>& items() const noexcept { return items_; }

private:
    using Clock = std::chrono::steady_clock;

    struct Found {
        double rank; // the greatest come first
        double row;
        double size;
        std::size_t path; // of a folder that is taken for empty, its hash; otherwise 0
    };
    class Row;

    void begin(Database& database);
    void narrow(Database& database);
    void writeStatement(const std::string& size);
    [[nodiscard]] std::string table() const;
    void read(Database& database, Clock::time_point end);
    void readSlice(Database& database, double last);
    [[nodiscard]] bool matches(const Row& row);
    [[nodiscard]] bool matchesName(std::string_view name) const;
    [[nodiscard]] std::optional<double> rankOf(const Row& row) const;
    void add(const Found& found);
    void keepFirst();
    void finishReading();
    void fetch(Database& database, Clock::time_point end);

    Conditions conditions_;
    Order order_;
    std::string folder_;
    std::size_t most_;
    std::string name_;        // a pattern in the internal form
    std::string namePart_;    // what a name that matches has in it; compared byte by byte
    bool isNameText_ = false; // that is all there is to it
    std::optional<double> older_;
    std::optional<double> newer_;
    std::string columns_;
    std::string condition_;
    enum class Stage { begin, read, fetch, done };
    Stage stage_ = Stage::begin;
    // The rows are read by number, from behind `row_` to `lastRow_`.
    double row_ = 0;
    double lastRow_ = 0;
    double step_ = 0;
    std::int64_t count_ = 0;
    double size_ = 0;
    std::vector<Found> found_;
    std::optional<double> least_;            // the lowest rank among `most_` of them
    std::size_t fetched_ = 0;                // of these
    std::unordered_set<std::size_t> filled_; // hashes of folders that something is in, to find the empty ones
    std::string lastFilled_;
    std::vector<Item> items_;
};

} // namespace modFind
