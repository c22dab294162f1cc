#pragma once

#include <QStyleOptionViewItem>
#include <QWidget>

// Makes the selected row paler while the keyboard focus is elsewhere, so that the user can see which of two
// views the keys affect. Call it from a view's initViewItemOption.
void paleSelectionWithoutFocus(const QWidget& view, QStyleOptionViewItem& option);
