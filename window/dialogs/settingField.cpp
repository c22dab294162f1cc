#include "window/dialogs/settingField.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QWheelEvent>

#include "platform/paths.h"
#include "platform/text.h"
#include "widgets/qtText.h"

using modSettings::Key;
using modSettings::Kind;
using modSettings::Remark;

namespace {

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QLabel& wrapped(QLabel& label) {
    label.setTextFormat(Qt::PlainText);
    label.setWordWrap(true);
    return label;
}

// On or off; partly checked while the file has neither.
class FlagField final : public SettingField {
public:
    explicit FlagField(const Key& key) : SettingField(key) {
        box_.setText(text(key.caption));
        row().addWidget(&box_, 1);
        layOut();
        connect(&box_, &QCheckBox::clicked, this, [this] { box_.setTristate(false); });
        connect(&box_, &QCheckBox::stateChanged, this, &SettingField::changed);
    }

    [[nodiscard]] std::string value() const override {
        return box_.checkState() == Qt::PartiallyChecked ? "" : box_.isChecked() ? "1" : "0";
    }
    void setValue(const std::string& value, const std::string& /*fileText*/) override {
        box_.setTristate(value.empty());
        box_.setCheckState(value.empty() ? Qt::PartiallyChecked : value == "1" ? Qt::Checked : Qt::Unchecked);
    }
    [[nodiscard]] QWidget& control() override { return box_; }

private:
    QCheckBox box_;
};

// Changed by the wheel only when it has the focus; otherwise the page is scrolled.
class ChoiceBox final : public QComboBox {
public:
    ChoiceBox() { setFocusPolicy(Qt::StrongFocus); }

protected:
    void wheelEvent(QWheelEvent* event) override {
        hasFocus() ? QComboBox::wheelEvent(event) : event->ignore();
    }
};

// A column, an order or a number of threads. What is none of them gets a line of its own, until another is
// chosen.
class ChoiceField final : public SettingField {
public:
    ChoiceField(const Key& key, const QStringList& columns) : SettingField(key) {
        if (key.kind == Kind::column) {
            for (int i = 0; i < columns.size(); ++i) {
                box_.addItem(columns.at(i), QString::number(i + 1));
            }
        } else if (key.kind == Kind::readers) {
            box_.addItem(QStringLiteral("as many threads as help"), QStringLiteral("-1"));
            box_.addItem(QStringLiteral("no thread"), QStringLiteral("0"));
            for (const int count : {1, 2, 4, 8, 16, 32}) {
                const QString number = QString::number(count);
                box_.addItem(number + (count == 1 ? QStringLiteral(" thread") : QStringLiteral(" threads")),
                             number);
            }
        } else {
            box_.addItem(QStringLiteral("Ascending (A to Z, smallest first)"), QStringLiteral("0"));
            box_.addItem(QStringLiteral("Descending (Z to A, largest first)"), QStringLiteral("1"));
        }
        usual_ = box_.count();
        box_.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box_.setMinimumContentsLength(10);
        box_.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        caption().setBuddy(&box_);
        row().addWidget(&caption());
        row().addWidget(&box_, 1);
        layOut();
        connect(&box_, &QComboBox::currentIndexChanged, this, &SettingField::changed);
    }

    [[nodiscard]] std::string value() const override { return box_.currentData().toString().toStdString(); }
    void setValue(const std::string& value, const std::string& fileText) override {
        while (box_.count() > usual_) {
            box_.removeItem(usual_);
        }
        const QString wanted = QString::fromStdString(value);
        if (box_.findData(wanted) < 0) {
            box_.addItem(QStringLiteral("(%1)").arg(modQt::shownText(value.empty() ? fileText : value)),
                         wanted);
        }
        box_.setCurrentIndex(box_.findData(wanted));
    }
    [[nodiscard]] QWidget& control() override { return box_; }

private:
    ChoiceBox box_;
    int usual_ = 0; // the number of lines that stand for something
};

class PathField final : public SettingField {
public:
    PathField(const Key& key, const std::string& standardPath) : SettingField(key) {
        edit_.setPlaceholderText(modQt::shownPath(standardPath));
        cmdChoose_.setObjectName(text(key.name) + QStringLiteral("Choose"));
        cmdChoose_.setText(QStringLiteral("..."));
        cmdChoose_.setAutoDefault(false);
        const QString what = text(key.caption).remove(u'&');
        cmdChoose_.setToolTip(QStringLiteral("Choose the file"));
        cmdChoose_.setAccessibleName(QStringLiteral("Choose the file: ") + what);
        cmdChoose_.setMaximumWidth(cmdChoose_.fontMetrics().height() * 3);
        caption().setBuddy(&edit_);
        row().addWidget(&caption());
        row().addWidget(&edit_, 1);
        row().addWidget(&cmdChoose_);
        layOut();
        connect(&edit_, &QLineEdit::textChanged, this, &SettingField::changed);
        connect(&cmdChoose_, &QPushButton::clicked, this, &SettingField::choiceWanted);
    }

    // Blanks around a path are a slip, from copying it for example.
    [[nodiscard]] std::string value() const override {
        return std::string(platform::trimmed(edit_.text().toStdString()));
    }
    void setValue(const std::string& value, const std::string& /*fileText*/) override {
        edit_.setText(QString::fromStdString(value));
    }
    [[nodiscard]] QWidget& control() override { return edit_; }

private:
    QLineEdit edit_;
    QPushButton cmdChoose_;
};

} // namespace

SettingField::SettingField(const Key& key) : key_(key) {}

std::unique_ptr<SettingField> SettingField::make(const Key& key, const QStringList& columns,
                                                 const std::string& standardPath) {
    switch (key.kind) {
    case Kind::flag:
    case Kind::notZero:
        return std::make_unique<FlagField>(key);
    case Kind::column:
    case Kind::order:
    case Kind::readers:
        return std::make_unique<ChoiceField>(key, columns);
    case Kind::database:
    case Kind::errorLog:
        break;
    }
    return std::make_unique<PathField>(key, standardPath);
}

void SettingField::layOut() {
    const QString name = text(key_.name);
    const QString place =
        QStringLiteral("The key %1 in the section [%2] of settings.ini").arg(name, text(key_.section));
    lblCaption_.setText(text(key_.caption));
    wrapped(lblMeaning_).setText(text(key_.explanation));
    wrapped(lblKey_).setText(name + QStringLiteral(": ") + text(modSettings::effectText(key_.effect)));
    lblKey_.setForegroundRole(QPalette::PlaceholderText);
    lblKey_.setToolTip(place);
    lblRemark_.setObjectName(name + QStringLiteral("Remark"));
    wrapped(lblRemark_).setTextInteractionFlags(Qt::TextSelectableByMouse);
    control().setObjectName(name);
    control().setToolTip(place);

    const int indent = style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this) +
                       style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, this);
    for (QLabel* const label : {&lblMeaning_, &lblKey_}) {
        label->setContentsMargins(indent, 0, 0, 0);
    }
    layout_.setContentsMargins(0, 0, 0, fontMetrics().height() / 2);
    layout_.setSpacing(fontMetrics().height() / 6);
    remarkLayout_.setContentsMargins(indent, 0, 0, 0);
    remarkLayout_.addWidget(&picture_, 0, Qt::AlignTop);
    remarkLayout_.addWidget(&lblRemark_, 1);
    layout_.addLayout(&row_);
    layout_.addWidget(&remark_);
    layout_.addWidget(&lblMeaning_);
    layout_.addWidget(&lblKey_);
    setRemark({});
}

void SettingField::setRemark(const Remark& remark) {
    const auto icon = remark.weight == Remark::Weight::error     ? QStyle::SP_MessageBoxCritical
                      : remark.weight == Remark::Weight::warning ? QStyle::SP_MessageBoxWarning
                                                                 : QStyle::SP_MessageBoxInformation;
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    weight_ = remark.weight;
    picture_.setPixmap(
        style()->standardIcon(icon, nullptr, this).pixmap(QSize(side, side), devicePixelRatio()));
    lblRemark_.setText(modQt::shownText(remark.text));
    remark_.setVisible(remark.weight != Remark::Weight::none);
    control().setAccessibleDescription(text(key_.explanation) + u' ' + lblRemark_.text());
}
