#pragma once

#include <string>
#include <string_view>

// Where a server is that scans are collected on.
struct ServerUrl {
    bool isSecure = false; // https
    std::string user;      // "default" unless the text names one
    std::string host;      // as in the text: an address of IPv6 in brackets
    int port = 0;          // of the text, or 8123 and, for https, 8443
    std::string database;

    // "https://backup:8443", for messages; without the user.
    [[nodiscard]] std::string shown() const;
};

// Takes "http://HOST/DATABASE" or "https://USER@HOST:PORT/DATABASE" apart. Throws RuntimeError 5 that says
// what is wrong, without repeating the text: it may hold a password, which is refused.
[[nodiscard]] ServerUrl parseServerUrl(std::string_view text);

// Whether a text looks like a URL and not like a path.
[[nodiscard]] bool isServerUrl(std::string_view text);

// Whether the text may name a database or a cluster: letters, digits and "_", not beginning with a digit.
[[nodiscard]] bool isPlainName(std::string_view text);
