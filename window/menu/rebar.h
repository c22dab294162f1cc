#pragma once

#include <QHBoxLayout>
#include <QString>
#include <QWidget>
#include <memory>
#include <vector>

class MenuToolbar;
class PopMenu;
class QMainWindow;

// A strip along the top of the window that holds controls in bands, side by side, each after a gripper.
class Rebar final : public QWidget {
    Q_OBJECT

public:
    explicit Rebar(QWidget* parent = nullptr);
    ~Rebar() override;

    // Adds a band with this key as its object name and the fixed height of the control. The control is shown
    // in the band; its owner keeps it.
    void addBand(const QString& key, QWidget& control);

    // Null if there is no band with this key.
    [[nodiscard]] QWidget* band(const QString& key) const;

private:
    class Band;
    QHBoxLayout layout_;
    std::vector<std::unique_ptr<Band>> bands_;
};

namespace modMenus {

// Puts the main menu (stored as "Outer") on its toolbar, the toolbar into the band "MenuBar" of the rebar,
// and the rebar at the top of the window. The window owns none of them, so they must be destroyed before it.
// Errors are logged.
void setRebar(QMainWindow& window, Rebar& cRebar, MenuToolbar& tbrMenu, const PopMenu& cP);

} // namespace modMenus
