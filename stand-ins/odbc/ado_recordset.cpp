#include "odbc/ado_recordset.h"

#include <algorithm>
#include <string>
#include <utility>

#include "automation/automation_error.h"
#include "odbc/ado_connection.h"
#include "odbc/ado_error.h"

namespace odbc {
namespace {

automation::AutomationError Error(AdoError error) {
  return MakeError(error, kRecordsetSource);
}

automation::AutomationError NotCapable(std::u16string_view text) {
  return {static_cast<std::int32_t>(AdoError::FeatureNotAvailable),
          std::u16string(kRecordsetSource), std::u16string(text)};
}

automation::AutomationError NoUpdating() {
  return NotCapable(
      u"Current Recordset does not support updating. This may be a limitation of the provider, or "
      u"of the selected locktype.");
}

automation::AutomationError NoBookmarks() {
  return NotCapable(
      u"Current Recordset does not support bookmarks. This may be a limitation of the provider or "
      u"of the selected cursortype.");
}

// Whether a field of the column can hold the value as it is.
bool Holds(const Column& column, const automation::Value& value) {
  if (value.IsNull()) {
    return column.nullable;
  }
  switch (column.kind) {
    case ColumnKind::Boolean:
      return value.Is<bool>();
    case ColumnKind::Int16:
      return value.Is<std::int16_t>();
    case ColumnKind::Int32:
      return value.Is<std::int16_t>() || value.Is<std::int32_t>();
    case ColumnKind::BigInt:
      return value.Is<std::int16_t>() || value.Is<std::int32_t>() ||
             value.Is<automation::Decimal>();
    case ColumnKind::Single:
    case ColumnKind::Double:
      return value.Is<double>();
    case ColumnKind::Decimal:
      return value.Is<automation::Decimal>();
    case ColumnKind::Currency:
      return value.Is<automation::Currency>();
    case ColumnKind::Date:
    case ColumnKind::Time:
      return value.Is<automation::Date>();
    case ColumnKind::Text:
    case ColumnKind::Binary:
      return value.Is<std::u16string>();
  }
  return false;
}

}  // namespace

AdoRecordset::AdoRecordset(std::optional<CachedRows> rows, odbc::CursorLocation location)
    : cursorLocation_(location) {
  if (rows) {
    Show(std::move(*rows), odbc::CursorType::Unspecified, odbc::LockType::Unspecified);
  }
}

const CachedRows& AdoRecordset::Rows() const {
  if (!IsOpen()) {
    throw Error(AdoError::ObjectClosed);
  }
  return *rows_;
}

void AdoRecordset::SetCursorLocation(odbc::CursorLocation location) {
  if (IsOpen()) {
    throw Error(AdoError::ObjectOpen);
  }
  cursorLocation_ = location;
}

void AdoRecordset::Open(std::u16string_view statement, AdoConnection& connection,
                        odbc::CursorType cursorType, odbc::LockType lockType) {
  if (IsOpen()) {
    throw Error(AdoError::ObjectOpen);
  }
  if (!connection.IsOpen()) {
    throw Error(AdoError::InvalidConnection);
  }
  auto result = connection.Run(statement);
  if (result.rows) {
    Show(std::move(*result.rows), cursorType, lockType);
  }
}

void AdoRecordset::Show(CachedRows rows, odbc::CursorType cursorType, odbc::LockType lockType) {
  rows_ = std::make_shared<CachedRows>(std::move(rows));
  position_ = 0;
  if (cursorLocation_ == odbc::CursorLocation::Client) {
    cursorType_ = odbc::CursorType::Static;
  } else {
    cursorType_ =
        cursorType == odbc::CursorType::Unspecified ? odbc::CursorType::ForwardOnly : cursorType;
  }
  lockType_ = lockType == odbc::LockType::Unspecified ? odbc::LockType::ReadOnly : lockType;
}

void AdoRecordset::Close() {
  Rows();
  if (edited_ && lockType_ != odbc::LockType::BatchOptimistic) {
    throw Error(AdoError::OperationInContext);
  }
  edited_.reset();
  rows_.reset();
}

bool AdoRecordset::Bof() const {
  return Rows().rows.empty() || position_ < 0;
}

bool AdoRecordset::Eof() const {
  return position_ >= std::ssize(Rows().rows);
}

void AdoRecordset::LeaveRow() {
  if (!edited_) {
    return;
  }
  if (lockType_ != odbc::LockType::BatchOptimistic) {
    throw NoUpdating();
  }
  rows_->rows[Position()] = std::move(*edited_);
  edited_.reset();
}

void AdoRecordset::MoveNext() {
  if (Eof()) {
    throw Error(AdoError::NoCurrentRecord);
  }
  LeaveRow();
  ++position_;
}

void AdoRecordset::MovePrevious() {
  if (Bof()) {
    throw Error(AdoError::NoCurrentRecord);
  }
  LeaveRow();
  --position_;
}

void AdoRecordset::MoveFirst() {
  MoveTo(0);
}

void AdoRecordset::MoveLast() {
  const auto count = RowCount();
  MoveTo(count == 0 ? 0 : count - 1);
}

std::size_t AdoRecordset::Position() const {
  CurrentRow();
  return static_cast<std::size_t>(position_);
}

void AdoRecordset::MoveTo(std::size_t position) {
  if (position >= RowCount()) {
    throw Error(AdoError::NoCurrentRecord);
  }
  LeaveRow();
  position_ = static_cast<std::ptrdiff_t>(position);
}

const Row& AdoRecordset::CurrentRow() const {
  if (Bof() || Eof()) {
    throw Error(AdoError::NoCurrentRecord);
  }
  return edited_ ? *edited_ : rows_->rows[static_cast<std::size_t>(position_)];
}

std::size_t AdoRecordset::IndexOf(std::u16string_view name) const {
  const auto index = Rows().Find(name);
  if (!index) {
    throw Error(AdoError::ItemNotFound);
  }
  return *index;
}

automation::Value AdoRecordset::Field(std::size_t index) const {
  if (index >= Columns().size()) {
    throw Error(AdoError::ItemNotFound);
  }
  return CurrentRow()[index];
}

std::span<const Row> AdoRecordset::TakeRows(std::size_t most) {
  const std::size_t first = Position();
  LeaveRow();
  const auto rest = std::span<const Row>(rows_->rows).subspan(first);
  const auto taken = rest.first(std::min(most, rest.size()));
  position_ += std::ssize(taken);
  return taken;
}

void AdoRecordset::SetField(std::size_t index, const automation::Value& value) {
  if (index >= Columns().size()) {
    throw Error(AdoError::ItemNotFound);
  }
  const Row& current = CurrentRow();
  if (lockType_ == odbc::LockType::ReadOnly) {
    throw NoUpdating();
  }
  if (!Holds(Columns()[index], value)) {
    throw Error(AdoError::WrongValueType);
  }
  if (!edited_) {
    edited_ = current;
  }
  (*edited_)[index] = value;
}

void AdoRecordset::Update() {
  CurrentRow();
  LeaveRow();
}

void AdoRecordset::CancelUpdate() {
  Rows();
  edited_.reset();
}

AdoRecordset AdoRecordset::Clone(odbc::LockType lockType) const {
  Rows();
  if (cursorType_ == odbc::CursorType::ForwardOnly) {
    throw NoBookmarks();
  }
  AdoRecordset clone;
  clone.rows_ = rows_;
  clone.cursorLocation_ = cursorLocation_;
  clone.cursorType_ = cursorType_;
  clone.lockType_ = lockType == odbc::LockType::Unspecified ? lockType_ : lockType;
  return clone;
}

}  // namespace odbc
