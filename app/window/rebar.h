#pragma once

#include <QHBoxLayout>
#include <QString>
#include <QWidget>
#include <memory>
#include <vector>

class MenuToolbar;
class PopMenu;
class QMainWindow;

// A strip along the window's top that holds controls in bands, side by side, each behind a gripper.
class Rebar final : public QWidget {
    Q_OBJECT

public:
    explicit Rebar(QWidget* parent = nullptr);
    ~Rebar() override;

    // Adds a band, its height fixed to the control's, and gives it the key as object name. The control is
    // shown in it and stays its owner's.
    void addBand(const QString& key, QWidget& control);

    // Null when there is no band with this key.
    [[nodiscard]] QWidget* band(const QString& key) const;

private:
    class Band;
    QHBoxLayout layout_;
    std::vector<std::unique_ptr<Band>> bands_;
};

namespace modMenus {

// Puts the main menu (stored as "Outer") on its toolbar, the toolbar into the rebar's band "MenuBar", and the
// rebar on the window's top. The window keeps none of them: their owner must be gone before it. Errors are
// logged.
void setRebar(QMainWindow& window, Rebar& cRebar, MenuToolbar& tbrMenu, const PopMenu& cP);

} // namespace modMenus
