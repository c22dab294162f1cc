#include "widgets/lvsort.h"

#include <QHeaderView>
#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

#include "base/dateFormat.h"
#include "base/errorTrap.h"
#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "db/dao.h"
#include "platform/text.h"
#include "widgets/listView.h"
#include "widgets/textOrder.h"

namespace modLvw {

namespace {

constexpr int toggle = -1;
constexpr int indexOutOfBounds = 35600;

enum class KeyKind { text, size, change, date, number, share, balance, moment };

// "DATETIME" is not a known tag unless the list is exact; it then stands for the moment.
KeyKind keyKind(std::string_view tag, bool exactDates) {
    const auto is = [tag](std::string_view name) { return platform::equalIgnoringAsciiCase(tag, name); };
    return is("SIZE")                     ? KeyKind::size
           : is("DATE")                   ? KeyKind::date
           : is("NUMBER")                 ? KeyKind::number
           : is("SHARE")                  ? KeyKind::share
           : is("CHANGE")                 ? KeyKind::change
           : is("BALANCE")                ? KeyKind::balance
           : exactDates && is("DATETIME") ? KeyKind::moment
                                          : KeyKind::text;
}

// While an object lives, the rows of the list are not drawn.
class RedrawLock {
public:
    explicit RedrawLock(QWidget& widget) : widget_(widget), wasDrawn_(widget.updatesEnabled()) {
        widget_.setUpdatesEnabled(false);
    }
    ~RedrawLock() { widget_.setUpdatesEnabled(wasDrawn_); }
    RedrawLock(const RedrawLock&) = delete;
    RedrawLock& operator=(const RedrawLock&) = delete;

private:
    QWidget& widget_;
    bool wasDrawn_;
};

std::string tagText(const CellTag& tag) {
    std::string result;
    if (const double* number = std::get_if<double>(&tag)) {
        modFormat::appendNumber(result, *number);
    } else if (const std::string_view* text = std::get_if<std::string_view>(&tag)) {
        result = *text;
    }
    return result;
}

// A date as stored, or as left by sorting by a date column.
std::string reformattedDate(std::string_view text, std::string_view picture) {
    const std::string midnight = std::string(text) + " 12:00:00 AM";
    std::string result;
    modFormat::appendReformattedDate(result, modFormat::parseDate(midnight) ? midnight : text, picture);
    return result;
}

// Of an amount; the larger one below zero comes first.
std::string signedKey(std::string amount, bool isNegative) {
    for (char& digit : amount) {
        digit = isNegative ? static_cast<char>('0' + ('9' - digit)) : digit;
    }
    return amount.insert(0, isNegative ? "0" : "1");
}

// The key of a cell in a column that is not sorted as text.
std::string sortKey(const ListCell& cell, KeyKind kind) {
    if (kind == KeyKind::date) {
        return reformattedDate(cell.text, "yyyy/mm/dd");
    }
    std::string result;
    if (kind == KeyKind::moment) { // texts that are not dates come first
        const bool isDate = modFormat::parseDate(cell.text).has_value();
        modFormat::appendReformattedDate(result, cell.text, "yyyy/mm/dd hh:nn:ss");
        return result.insert(0, isDate ? "1" : "0");
    }
    constexpr double sharesTold = 1e12; // apart
    if (const auto value = numberOf(cell.tag)) {
        const bool isShare = kind == KeyKind::share || kind == KeyKind::balance;
        const bool isSigned = kind == KeyKind::change;
        const double amount = kind == KeyKind::balance || isSigned ? std::abs(*value) : *value;
        modFormat::appendFormattedNumber(result, isShare ? amount * sharesTold : amount,
                                         isSigned ? "00000000000000000000000000000" : "0000000000000000000");
        return isSigned ? signedKey(result, *value < 0) : result;
    }
    return tagText(cell.tag);
}

// The text of such a cell after sorting.
std::string restoredText(const ListCell& cell, KeyKind kind) {
    if (kind == KeyKind::date) {
        return reformattedDate(cell.text, "mm/dd/yyyy");
    }
    if (kind == KeyKind::share || kind == KeyKind::change || kind == KeyKind::balance) {
        return std::string(cell.text);
    }
    const auto value = kind == KeyKind::size ? numberOf(cell.tag) : std::nullopt;
    return value ? formatSize(*value) : tagText(cell.tag);
}

template <class Key>
std::vector<int> orderOf(const std::vector<Key>& keys, bool descending) {
    std::vector<int> order(keys.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&keys, descending](int left, int right) {
        const Key& leftKey = keys[static_cast<std::size_t>(left)];
        const Key& rightKey = keys[static_cast<std::size_t>(right)];
        return descending ? rightKey < leftKey : leftKey < rightKey;
    });
    return order;
}

std::vector<int> orderByText(const ListModel& rows, int column, bool descending) {
    const TextOrder textOrder;
    std::vector<TextOrder::Key> keys;
    keys.reserve(static_cast<std::size_t>(rows.rowCount()));
    for (int i = 0; i < rows.rowCount(); ++i) {
        keys.push_back(textOrder.key(rows.text(i, column)));
    }
    return orderOf(keys, descending);
}

std::vector<int> orderByKey(const ListModel& rows, int column, KeyKind kind, bool descending) {
    std::vector<std::string> keys;
    keys.reserve(static_cast<std::size_t>(rows.rowCount()));
    for (int i = 0; i < rows.rowCount(); ++i) {
        keys.push_back(sortKey(rows.row(i).cell(column), kind));
    }
    return orderOf(keys, descending);
}

int chosenOrder(const ListSort& present, int column, int order) {
    if (order != toggle) {
        return order == 0 ? 0 : 1;
    }
    return present.sorted && present.key == column && present.order == 0 ? 1 : 0;
}

void sortBy(ListView& list, int column, int order) {
    ListModel& rows = list.rows();
    const KeyKind kind = keyKind(rows.columns()[static_cast<std::size_t>(column)].tag, list.exactDates());
    list.setSort({true, column, chosenOrder(list.sort(), column, order)});
    // Shows the arrow at once. Pending events are not handled, because they could change the rows.
    list.header()->viewport()->repaint();
    const bool descending = list.sort().order != 0;
    const std::vector<int> places = kind == KeyKind::text ? orderByText(rows, column, descending)
                                                          : orderByKey(rows, column, kind, descending);
    if (!std::is_sorted(places.begin(), places.end())) {
        rows.reorder(places);
    }
    const bool rewritten = kind != KeyKind::text && kind != KeyKind::moment;
    for (int i = 0; rewritten && i < rows.rowCount(); ++i) {
        rows.setText(i, column, restoredText(rows.row(i).cell(column), kind));
    }
}

} // namespace

void lvsort(ListView& list, int column, int order, bool selectFirst) {
    modGlobal::trapped("modLvw", "lvsort", [&] {
        if (column < 1 || column > list.rows().columnCount()) {
            throw RuntimeError(indexOutOfBounds, "Index out of bounds");
        }
        const RedrawLock lock(*list.viewport());
        sortBy(list, column - 1, order);
        if (selectFirst && list.rows().rowCount() > 0) {
            list.selectRow(0);
        }
    });
}

void sortAsRemembered(ListView& list, int column, int order, int defaultColumn, bool selectFirst) {
    const bool exists = column >= 1 && column <= list.rows().columnCount();
    lvsort(list, exists ? column : defaultColumn, order == 0 ? 0 : 1, selectFirst);
}

int itemIndex(std::string_view key, const ListView& list) {
    return list.rows().find(key);
}

} // namespace modLvw
