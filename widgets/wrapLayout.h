#pragma once

#include <QLayout>
#include <memory>
#include <vector>

// Widgets side by side, in as many lines as the width makes necessary. Each has the width that it prefers, or
// all of the line if that is less.
class WrapLayout final : public QLayout {
    Q_OBJECT

public:
    explicit WrapLayout(QWidget* parent = nullptr);
    ~WrapLayout() override;

    void addItem(QLayoutItem* item) override; // takes it over
    [[nodiscard]] int count() const override;
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override; // hands it over

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
    void setGeometry(const QRect& place) override;

private:
    // The height that the lines take; places the widgets too if `places`.
    int layOut(const QRect& room, bool places) const;

    std::vector<std::unique_ptr<QLayoutItem>> items_;
};
