#pragma once

#include <QWidget>

#include "app/window/clsDialogs.h"

// The boxes as a person sees them, above the given window.
class QtDialogs final : public clsDialogs {
public:
    void setParent(QWidget* parent) { parent_ = parent; }

    void message(const QString& text) override;
    [[nodiscard]] bool ask(const QString& text) override;
    void about() override;

private:
    QWidget* parent_ = nullptr;
};
