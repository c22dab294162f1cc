#pragma once

#include <QObject>
#include <QString>
#include <QWidget>

// Which page of the help explains a control and what is in it, for F1.
namespace modQt {

// The page is a file name, such as "chart.html".
void setHelpTopic(QObject& control, const char* page);

// The page of the control, or of the nearest one in its window that it is in; empty for none.
[[nodiscard]] QString helpTopic(const QWidget& control);

} // namespace modQt
