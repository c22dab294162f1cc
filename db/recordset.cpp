#include <algorithm>

#include "base/numberFormat.h"
#include "db/daoImplementation.h"
#include "platform/text.h"

namespace {

[[noreturn]] void failWith(int number, const std::string& description) {
    throw RuntimeError(number, description);
}

} // namespace

// --- Field ------------------------------------------------------------------------------------------------

bool Field::isNull() const {
    return recordset_->current().isNull(index_);
}

std::string_view Field::text() const {
    const Statement& row = recordset_->current();
    if (row.isReal(index_)) {
        digits_.clear();
        modFormat::appendNumber(digits_, row.number(index_));
        return digits_;
    }
    return row.text(index_);
}

double Field::number() const {
    return recordset_->current().number(index_);
}

Value Field::value() const {
    return recordset_->current().value(index_);
}

bool Field::isText() const {
    return recordset_->current().isText(index_);
}

void Field::set(const Value& value) {
    recordset_->fresh().bindValue(index_ + 1, value);
    held_ = Held::other;
    isSet_ = true;
}

void Field::setNumber(double number) {
    if (held_ != Held::number || heldNumber_ != number) {
        recordset_->fresh().bindNumber(index_ + 1, number);
        held_ = Held::number;
        heldNumber_ = number;
    }
    isSet_ = true;
}

void Field::setInteger(std::int64_t number) {
    if (held_ != Held::integer || heldInteger_ != number) {
        recordset_->fresh().bindInteger(index_ + 1, number);
        held_ = Held::integer;
        heldInteger_ = number;
    }
    isSet_ = true;
}

void Field::setText(std::string_view text) {
    if (held_ != Held::text || heldText_.data() != text.data() || heldText_.size() != text.size()) {
        recordset_->fresh().bindBorrowedText(index_ + 1, text);
        held_ = Held::text;
        heldText_ = text;
    }
    isSet_ = true;
}

void Field::endRow() {
    if (!isSet_ && held_ != Held::nothing) {
        recordset_->fresh().bindNull(index_ + 1);
        held_ = Held::nothing;
    }
}

// --- Recordset --------------------------------------------------------------------------------------------

Recordset::Recordset(std::unique_ptr<Implementation> implementation)
    : implementation_(std::move(implementation)) {
    Implementation& self = *implementation_;
    for (const std::string& column : self.columns) {
        self.fields.push_back(Field(*this, column, static_cast<int>(self.fields.size())));
    }
    if (self.columns.empty()) {
        for (int column = 0; column < self.statement.columnCount(); ++column) {
            self.fields.push_back(Field(*this, self.statement.columnName(column), column));
        }
        self.atEnd = !self.statement.step();
    }
}

Recordset::~Recordset() = default;

Recordset::Implementation& Recordset::open() const {
    if (!implementation_) {
        failWith(databaseError::objectClosed, "The recordset is closed");
    }
    return *implementation_;
}

Statement& Recordset::current() const {
    Implementation& self = open();
    if (!self.columns.empty() || self.atEnd) {
        failWith(databaseError::noCurrentRecord, "No current record");
    }
    return self.statement;
}

Statement& Recordset::fresh() const {
    Implementation& self = open();
    if (self.columns.empty()) {
        failWith(databaseError::readOnly, "Cannot update; the recordset is read-only");
    }
    return self.statement;
}

bool Recordset::EndOfFile() const {
    return open().atEnd;
}

void Recordset::MoveNext() {
    Statement& row = current();
    implementation_->atEnd = true; // in case the step fails
    implementation_->atEnd = !row.step();
}

void Recordset::MoveFirst() {
    Implementation& self = open();
    if (!self.columns.empty()) {
        failWith(databaseError::noCurrentRecord, "No current record");
    }
    self.statement.reset();
    self.atEnd = true;
    self.atEnd = !self.statement.step();
}

void Recordset::MoveLast() {
    std::int64_t moves = RecordCount() - 1;
    MoveFirst();
    for (; moves > 0; --moves) {
        MoveNext();
    }
}

std::int64_t Recordset::RecordCount() {
    Implementation& self = open();
    Statement counting = self.connection.prepare(self.countText);
    for (std::size_t i = 0; i < self.literals.size(); ++i) {
        counting.bindValue(static_cast<int>(i) + 1, self.literals[i]);
    }
    counting.step();
    return static_cast<std::int64_t>(counting.number(0));
}

Field* Recordset::find(std::string_view name) {
    Implementation& self = open();
    const auto found = std::find_if(self.fields.begin(), self.fields.end(), [&](const Field& field) {
        return platform::equalIgnoringAsciiCase(field.name(), name);
    });
    return found == self.fields.end() ? nullptr : &*found;
}

Field& Recordset::Fields(std::string_view name) {
    Field* const found = find(name);
    if (found == nullptr) {
        failWith(databaseError::noSuchField, "Item not found in this collection: " + std::string(name));
    }
    return *found;
}

Field& Recordset::Fields(int index) {
    Implementation& self = open();
    if (index < 0 || index >= static_cast<int>(self.fields.size())) {
        failWith(databaseError::noSuchField, "Item not found in this collection: " + std::to_string(index));
    }
    return self.fields[static_cast<std::size_t>(index)];
}

int Recordset::FieldCount() const {
    return static_cast<int>(open().fields.size());
}

void Recordset::AddNew() {
    static_cast<void>(fresh());
    for (Field& field : implementation_->fields) {
        field.beginRow();
    }
}

void Recordset::Update() {
    Statement& row = fresh();
    for (Field& field : implementation_->fields) {
        field.endRow();
    }
    row.run();
}

void Recordset::Close() noexcept {
    implementation_.reset();
}
