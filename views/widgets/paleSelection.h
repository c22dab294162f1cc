#pragma once

#include <QStyleOptionViewItem>
#include <QWidget>

// A selected row is paler while the keyboard is elsewhere, so that of two views it is seen which one the keys
// move in. To be called from a view's initViewItemOption.
void paleSelectionWithoutFocus(const QWidget& view, QStyleOptionViewItem& option);
