#include "collect/collectedTable.h"

#include <gmock/gmock.h>

namespace {

using modCollected::Figures;
using modCollected::Row;
using modCollected::Table;

constexpr platform::Seconds moment = 1'800'000'000;

Row machine(std::string host, std::string path, double size, bool isInOther) {
    Row row;
    row.host = std::move(host);
    row.name = std::move(path);
    row.size = size;
    row.files = 10;
    row.scanned = moment;
    row.isInOther = isInOther;
    return row;
}

Figures example() {
    Figures figures;
    auto& machines = figures.rows.at(static_cast<std::size_t>(Table::machines));
    machines = {machine("nas1", "/srv/", 3072, false), machine("nas1", "/srv/a/", 2048, true),
                machine("nas\x1b[2J", "/srv/", 1024, false)};
    machines.front().before = 1024;
    Row owner;
    owner.name = "=cmd()";
    owner.size = 5;
    owner.files = 1;
    figures.rows.at(static_cast<std::size_t>(Table::owners)) = {owner};
    return figures;
}

std::string rowText(const modCollected::CollectedTable& table, std::size_t row) {
    std::string text;
    for (std::size_t column = 0; column < table.columns().size(); ++column) {
        const auto number = table.number(row, column);
        EXPECT_TRUE(!number || !table.text(row, column).empty());
        text.append(table.text(row, column)).append("|");
    }
    return text;
}

TEST(CollectedTable, isOneListOfAllTables) {
    const Figures figures = example();
    const modCollected::CollectedTable table(figures, false);
    ASSERT_EQ(table.rowCount(), 4U);
    EXPECT_THAT(rowText(table, 0), testing::StartsWith("Machines|nas1|/srv/|"));
    EXPECT_THAT(rowText(table, 0), testing::EndsWith("|10||3072|1024|2048||"));
    EXPECT_EQ(rowText(table, 3), "Owners||=cmd()|||1||5||||");
    EXPECT_THAT(rowText(table, 1), testing::EndsWith("|in another scan|")) << "it must not be added up";
    const modCollected::CollectedTable forPeople(figures, true);
    EXPECT_THAT(rowText(forPeople, 0), testing::EndsWith("|10||3072|3.0 Kb|1024|2048|+2.0 Kb||"));
}

} // namespace
