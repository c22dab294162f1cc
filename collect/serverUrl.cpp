#include "collect/serverUrl.h"

#include <algorithm>
#include <charconv>

#include "platform/runtimeError.h"
#include "platform/text.h"

namespace {

constexpr int usualPort = 8123;
constexpr int usualSecurePort = 8443;
constexpr int highestPort = 65535;
constexpr std::size_t longestName = 64;
constexpr std::size_t longestHost = 255;

constexpr std::string_view plainScheme = "http://";
constexpr std::string_view secureScheme = "https://";

[[noreturn]] void refuse(const std::string& reason) {
    throw RuntimeError(errorNumber::invalidCall, "This is not the URL of a server: " + reason);
}

bool startsWith(std::string_view text, std::string_view start) {
    return platform::equalIgnoringAsciiCase(text.substr(0, start.size()), start);
}

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isUser(std::string_view text) {
    return !text.empty() && text.size() <= longestName && std::all_of(text.begin(), text.end(), [](char c) {
        return isLetter(c) || isDigit(c) || c == '_' || c == '-' || c == '.';
    });
}

bool isHost(std::string_view text) {
    const bool isAddress = text.starts_with('[') && text.ends_with(']');
    const std::string_view inside = isAddress ? text.substr(1, text.size() - 2) : text;
    return !inside.empty() && text.size() <= longestHost && inside.front() != '-' &&
           std::all_of(inside.begin(), inside.end(), [&](char c) {
               return isLetter(c) || isDigit(c) || c == '.' || c == '-' ||
                      (isAddress ? c == ':' || c == '%' : c == '_');
           });
}

int portOf(std::string_view text) {
    int port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error != std::errc() || end != text.data() + text.size() || port < 1 || port > highestPort) {
        refuse("its port is no number from 1 to 65535");
    }
    return port;
}

// Takes the part before the separator off the text.
std::string_view takeUpTo(std::string_view& text, std::size_t at) {
    const std::string_view part = text.substr(0, at);
    text.remove_prefix(std::min(at + 1, text.size()));
    return part;
}

} // namespace

std::string ServerUrl::shown() const {
    return std::string(isSecure ? secureScheme : plainScheme) + host + ":" + std::to_string(port);
}

bool isServerUrl(std::string_view text) {
    return startsWith(text, plainScheme) || startsWith(text, secureScheme);
}

bool isPlainName(std::string_view text) {
    return !text.empty() && text.size() <= longestName && !isDigit(text.front()) &&
           std::all_of(text.begin(), text.end(),
                       [](char c) { return isLetter(c) || isDigit(c) || c == '_'; });
}

ServerUrl parseServerUrl(std::string_view text) {
    if (!isServerUrl(text)) {
        refuse("it begins with neither http:// nor https://");
    }
    ServerUrl url;
    url.isSecure = startsWith(text, secureScheme);
    url.port = url.isSecure ? usualSecurePort : usualPort;
    url.user = "default";
    text.remove_prefix(url.isSecure ? secureScheme.size() : plainScheme.size());
    // Before anything else, so that no other message tempts anybody to try again with a password.
    if (const std::size_t at = text.rfind('@'); at != std::string_view::npos) {
        const std::string_view user = takeUpTo(text, at);
        if (user.find(':') != std::string_view::npos) {
            refuse("it holds a password. Use --collect-password-file, or SPANNORY_COLLECT_PASSWORD in the "
                   "environment");
        }
        if (!isUser(user)) {
            refuse("its user may have letters, digits, \".\", \"-\" and \"_\" only");
        }
        url.user = user;
    }
    std::string_view place = takeUpTo(text, std::min(text.find('/'), text.size()));
    const std::size_t afterAddress = place.starts_with('[') ? std::min(place.find(']'), place.size()) : 0;
    if (const std::size_t colon = place.find(':', afterAddress); colon != std::string_view::npos) {
        url.port = portOf(place.substr(colon + 1));
        place = place.substr(0, colon);
    }
    if (!isHost(place)) {
        refuse("it names no host");
    }
    url.host = place;
    if (text.ends_with('/')) {
        text.remove_suffix(1);
    }
    if (!isPlainName(text)) {
        refuse("behind its host must stand \"/\" and the name of a database, of letters, digits and \"_\"");
    }
    url.database = text;
    return url;
}
