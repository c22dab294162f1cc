#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "collect/httpClient.h"
#include "platform/clock.h"

// What a server tells of all machines together.
namespace modCollected {

// What is asked for.
struct Question {
    std::string host; // empty for all
    std::string path; // of a folder, as it is called there; empty for all
    bool onDisk = false;
    // Rows of each table but that of the machines, and one more if there are; 0 for all.
    std::size_t top = 0;
    std::int64_t days = 0; // that growth is told of
};

// The path of a folder as the server has it: "/srv" as "/srv/", "C:\data" as "C:\data\". Throws RuntimeError
// 5 if the text is no whole path.
[[nodiscard]] std::string folderPath(std::string_view typed);

enum class Table { machines, owners, types, folders, growth, grownFolders };
inline constexpr std::size_t tables = 6;

// "Machines", "Owners", ...
[[nodiscard]] std::string_view captionOf(Table table);

// What does not apply is nothing. Texts are as on the disk: any bytes.
struct Row {
    std::string host;
    std::string name;                         // a path, an owner or an extension
    std::string began;                        // of a machine: the path with which the scan began
    std::optional<platform::Seconds> scanned; // when the newest scan of it ended
    std::optional<platform::Seconds> since;   // when the one before, that `before` comes from, did
    std::optional<double> size;
    std::optional<double> files;
    std::optional<double> folders;
    std::optional<double> before;
    bool isGone = false;        // the newest scan has come to the folder's place, and has not found it
    bool isFoldersOnly = false; // of a machine: its files are in no other table
    bool isInOther = false;     // of a machine: within another scan of it, and so counted in no other table

    [[nodiscard]] std::optional<double> change() const {
        return size && before ? std::optional(*size - *before) : std::nullopt;
    }
};

// "gone, in another scan"; empty for most.
[[nodiscard]] std::string remarkOf(const Row& row);

struct Figures {
    // Machines by name, all else largest first.
    std::array<std::vector<Row>, tables> rows;

    [[nodiscard]] const std::vector<Row>& of(Table table) const {
        return rows.at(static_cast<std::size_t>(table));
    }
};

// No table has more rows than this: of more, the first are asked for. `strange` if a server sends more.
inline constexpr std::size_t mostRows = 200'000;

// Asks the server. Throws ServerError; `strange` as well if its tables are not of this version.
[[nodiscard]] Figures ask(HttpClient& server, const Question& question, platform::Seconds now);

} // namespace modCollected
