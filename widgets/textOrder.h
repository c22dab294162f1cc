#pragma once

#include <QCollator>
#include <string>
#include <string_view>
#include <variant>

// The alphabetical order of the user's language, ignoring case. Texts are UTF-8.
class TextOrder {
public:
    enum class Digits { asLetters, asNumbers };
    explicit TextOrder(Digits digits = Digits::asLetters);

    // Below 0, 0 or above 0.
    [[nodiscard]] int compare(std::string_view left, std::string_view right) const;

    // A key for sorting many texts: created once for each, and compared with <.
    using Key = std::variant<std::string, QCollatorSortKey>;
    [[nodiscard]] Key key(std::string_view text) const;

private:
    QCollator collator_;
    std::string language_;
};
