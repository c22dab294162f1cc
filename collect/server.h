#pragma once

#include <string>
#include <string_view>

#include "collect/httpClient.h"

// What is asked of a server before anything else. Both throw ServerError.
namespace modServer {

// Makes the database, its tables and views, as far as they are missing; with the name of a cluster, those
// that are spread over it, of which this server must know. `refused` for a database of another version.
void setUp(HttpClient& client, const std::string& cluster);

// Throws `refused` unless the tables are there in the version that this program knows.
void requireSchema(HttpClient& client);

// The answer of a statement that asks for one whole number; `strange` for anything else.
[[nodiscard]] std::int64_t askNumber(HttpClient& client, std::string_view statement);

} // namespace modServer
