#pragma once

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QToolButton>
#include <QWidget>
#include <string>

class ListView;

// A box below the lists that narrows the rows of the one that is shown. Hidden until it is asked for.
class FilterBar final : public QWidget {
    Q_OBJECT

public:
    explicit FilterBar(QWidget* parent = nullptr);

    // The list to narrow; the one before has all its rows again. Null for none. Not owned.
    void setList(ListView* list);

    // Shows the box and gives it the focus.
    void open();
    // Clears the box and hides it; the focus goes to the list.
    void close();
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void apply();
    void showCount();

    ListView* list_ = nullptr;
    bool isOpen_ = false;
    QHBoxLayout layout_{this};
    QLabel label_;
    QLineEdit txtFilter_;
    QLabel lblFilter_;
    QToolButton cmdCloseFilter_;
    QTimer tmrFilter_; // until somebody stops typing
};
