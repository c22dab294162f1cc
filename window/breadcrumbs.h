#pragma once

#include <QMenu>
#include <QToolButton>
#include <QWidget>
#include <memory>
#include <string>
#include <vector>

// The path of a folder as a row of buttons, one for each folder on the way to it, beginning with its drive.
// If there is not enough room, the first ones are in the menu of a button "…".
class Breadcrumbs final : public QWidget {
    Q_OBJECT

public:
    explicit Breadcrumbs(QWidget* parent = nullptr);
    ~Breadcrumbs() override;

    // A folder's key (tree/nodeKeys.h), or nothing. The path may go on to a folder below it; the shown one
    // stands out.
    void showFolder(const std::string& key, const std::string& below = {});

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void folderChosen(const std::string& key);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    class Crumb;
    void place();
    void fillMenu(std::size_t hidden);
    void choose(const std::string& key);

    QToolButton cmdMore_;
    QMenu above_;
    std::vector<std::unique_ptr<Crumb>> crumbs_; // in the order of the path
};
