#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <list>
#include <optional>
#include <string>

#include "views/findConditions.h"
#include "widgets/wrapLayout.h"

// The controls in which somebody says what to find.
class FindBar final : public QWidget {
    Q_OBJECT

public:
    enum class Preset { largest, oldest, recentlyChanged, emptyFolders };
    // What the file type and the owner of a row are to be.
    enum class Field { extension, owner };

    explicit FindBar(QWidget* parent = nullptr);

    // What the controls say; nothing if one of them says nothing that can be understood, see problem().
    [[nodiscard]] std::optional<modFind::Conditions> conditions() const;
    // What cannot be understood, for people; empty if all can.
    [[nodiscard]] QString problem() const;

    // Files of that extension or owner, and no other condition.
    void setOnly(Field field, const std::string& value);
    void setPreset(Preset preset);
    void focusName();
    // Whether there is a comparison, so that it can be said what has changed.
    void setHasComparison(bool has);

Q_SIGNALS:
    // While somebody types.
    void edited();
    // A choice was made, or all was set anew.
    void changed();
    void presetChosen(FindBar::Preset preset);

private:
    enum Box { name, larger, smaller, extension, owner, older, newer };
    static constexpr std::size_t boxCount = 7;

    void add(const QString& label, QWidget& control, const QString& tip);
    void addBox(Box box);
    void addChoice(QComboBox& choice, const QString& objectName, const QString& label,
                   const QStringList& texts, const QString& tip);
    void clear();
    void followKind();
    [[nodiscard]] std::string text(Box box) const;
    [[nodiscard]] bool isUnderstood(Box box) const;

    WrapLayout layout_{this};
    std::list<QWidget> fields_; // each with a label and a control
    QComboBox cboPreset_;
    QComboBox cboKind_;
    QComboBox cboDate_;
    QComboBox cboState_;
    std::array<QLineEdit, boxCount> boxes_;
    QPushButton cmdClear_;
    std::list<QLabel> labels_;
    bool isSetting_ = false;
};
