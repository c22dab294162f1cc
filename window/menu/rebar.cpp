#include "window/menu/rebar.h"

#include <QEvent>
#include <QMainWindow>
#include <QPointer>
#include <QStyle>
#include <QStyleOption>
#include <QStylePainter>

#include "base/errorTrap.h"
#include "window/menu/menuToolbar.h"
#include "window/menu/popMenu.h"

class Rebar::Band final : public QWidget {
public:
    Band(QWidget& control, QWidget* parent) : QWidget(parent), layout_(this), control_(&control) {
        layout_.setContentsMargins(gripper, 0, 0, 0);
        layout_.addWidget(&control);
        fixHeight();
    }

    ~Band() override {
        if (control_) {
            control_->setParent(nullptr); // its owner keeps it
        }
    }

    Band(const Band&) = delete;
    Band& operator=(const Band&) = delete;

protected:
    bool event(QEvent* event) override {
        const bool handled = QWidget::event(event);
        // A change of the desktop's font or style has changed the control's height.
        if (event->type() == QEvent::LayoutRequest) {
            fixHeight();
        }
        return handled;
    }

    void paintEvent(QPaintEvent* /*event*/) override {
        QStylePainter painter(this);
        QStyleOption option;
        option.initFrom(this);
        painter.drawControl(QStyle::CE_MenuBarEmptyArea, option);
        option.rect = QRect(0, 0, gripper, height());
        option.state |= QStyle::State_Horizontal;
        painter.drawPrimitive(QStyle::PE_IndicatorToolBarHandle, option);
    }

private:
    static constexpr int gripper = 10;

    void fixHeight() {
        if (control_) {
            setFixedHeight(control_->sizeHint().height());
        }
    }

    QHBoxLayout layout_;
    QPointer<QWidget> control_;
};

Rebar::Rebar(QWidget* parent) : QWidget(parent), layout_(this) {
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.setSpacing(0);
}

Rebar::~Rebar() = default;

void Rebar::addBand(const QString& key, QWidget& control) {
    Band& added = *bands_.emplace_back(std::make_unique<Band>(control, this));
    added.setObjectName(key);
    layout_.addWidget(&added);
}

QWidget* Rebar::band(const QString& key) const {
    return findChild<QWidget*>(key, Qt::FindDirectChildrenOnly);
}

namespace modMenus {

void setRebar(QMainWindow& window, Rebar& cRebar, MenuToolbar& tbrMenu, const PopMenu& cP) {
    modGlobal::trapped("frmMain", "setRebar", [&] {
        tbrMenu.addActions(cP.stored(QStringLiteral("Outer")));
        cRebar.addBand(QStringLiteral("MenuBar"), tbrMenu);
        window.setMenuWidget(&cRebar);
    });
}

} // namespace modMenus
