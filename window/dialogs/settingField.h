#pragma once

#include <QHBoxLayout>
#include <QLabel>
#include <QStringList>
#include <QVBoxLayout>
#include <QWidget>
#include <memory>
#include <string>

#include "base/settingRemark.h"
#include "base/settingsTable.h"

// One setting in the dialog: its control, named after the key, with what it means below it, and what there is
// to say about its value.
class SettingField : public QWidget {
    Q_OBJECT

public:
    // The right control for the key; `columns` are those of its list.
    [[nodiscard]] static std::unique_ptr<SettingField>
    make(const modSettings::Key& key, const QStringList& columns, const std::string& standardPath);

    [[nodiscard]] const modSettings::Key& key() const noexcept { return key_; }

    // As in SettingsSheet. For an empty value that is no path, the control shows that nothing is chosen;
    // `fileText` then says what the file has.
    [[nodiscard]] virtual std::string value() const = 0;
    virtual void setValue(const std::string& value, const std::string& fileText) = 0;
    [[nodiscard]] virtual QWidget& control() = 0;

    void setRemark(const modSettings::Remark& remark);
    [[nodiscard]] modSettings::Remark::Weight weight() const noexcept { return weight_; }

Q_SIGNALS:
    void changed();
    // The button beside a path: a file is to be chosen.
    void choiceWanted();

protected:
    explicit SettingField(const modSettings::Key& key);
    // To be called once by each kind of field, with its control in the row.
    void layOut();
    [[nodiscard]] QHBoxLayout& row() noexcept { return row_; }
    // Before the control, for those that have no caption of their own.
    [[nodiscard]] QLabel& caption() noexcept { return lblCaption_; }

private:
    const modSettings::Key& key_;
    modSettings::Remark::Weight weight_ = modSettings::Remark::Weight::none;
    QVBoxLayout layout_{this};
    QHBoxLayout row_;
    QLabel lblCaption_;
    QLabel lblMeaning_;
    QLabel lblKey_;
    QWidget remark_;
    QHBoxLayout remarkLayout_{&remark_};
    QLabel picture_;
    QLabel lblRemark_;
};
