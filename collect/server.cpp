#include "collect/server.h"

#include <charconv>

#include "collect/schema.h"

namespace {

ServerError refused(const HttpClient& client, const std::string& reason) {
    return {ServerError::Kind::refused, errorNumber::invalidCall, client.url().shown() + ": " + reason};
}

// The version of what is there; 0 if nothing, or not all of it.
std::int64_t versionOf(HttpClient& client) {
    const std::string& database = client.url().database;
    return modServer::askNumber(client, modSchema::hasVersion(database)) == 0
               ? 0
               : modServer::askNumber(client, modSchema::askVersion(database));
}

void requireKnown(const HttpClient& client, std::int64_t version) {
    if (version != modSchema::version) {
        throw refused(client, "the database " + client.url().database + " is of version " +
                                  std::to_string(version) + ", and this program knows version " +
                                  std::to_string(modSchema::version));
    }
}

bool answersYes(HttpClient& client, const std::string& statement) {
    return modServer::askNumber(client, statement) != 0;
}

} // namespace

std::int64_t modServer::askNumber(HttpClient& client, std::string_view statement) {
    constexpr std::size_t longestAnswer = 64;
    const std::string answer =
        client.askText(std::string(statement) + " FORMAT TabSeparated", {}, longestAnswer);
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(answer.data(), answer.data() + answer.size(), number);
    if (error != std::errc() || std::string_view(end, answer.data() + answer.size()) != "\n") {
        throw ServerError(ServerError::Kind::strange, errorNumber::typeMismatch,
                          client.url().shown() +
                              " does not answer as a ClickHouse server does: " + oneSafeLine(answer));
    }
    return number;
}

void modServer::setUp(HttpClient& client, const std::string& cluster) {
    if (!cluster.empty() && !answersYes(client, "SELECT count() FROM system.clusters WHERE cluster = " +
                                                    modSchema::literal(cluster))) {
        throw refused(client, "it knows no cluster of the name " + cluster);
    }
    if (const std::int64_t version = versionOf(client); version != 0) {
        requireKnown(client, version);
    }
    if (!cluster.empty() && answersYes(client, modSchema::isOnOneServer(client.url().database))) {
        throw refused(client, "the tables of " + client.url().database + " are on this server alone already");
    }
    const bool hasLowCardinality =
        answersYes(client, "SELECT count() FROM system.data_type_families WHERE name = 'LowCardinality'");
    HttpClient::Parameters parameters;
    if (answersYes(client, "SELECT count() FROM system.settings WHERE name = "
                           "'allow_experimental_low_cardinality_type'")) {
        parameters.emplace_back("allow_experimental_low_cardinality_type", "1");
    }
    for (const std::string& statement :
         modSchema::definitions({client.url().database, cluster, hasLowCardinality})) {
        static_cast<void>(client.askText(statement, parameters));
    }
}

void modServer::requireSchema(HttpClient& client) {
    const std::int64_t version = versionOf(client);
    if (version == 0) {
        throw refused(client, "there is no database " + client.url().database +
                                  " for scans. To make one, use --collect-setup");
    }
    requireKnown(client, version);
}
