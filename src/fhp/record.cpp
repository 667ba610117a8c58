#include "fhp/record.h"

#include <algorithm>
#include <utility>

#include "platform/conversions.h"

namespace fhp {
namespace {

using automation::AutomationError;
using automation::RuntimeError;
using automation::Value;

// As ADO raises it, which is no longer asked once the rows have been read.
AutomationError NoCurrentRecord() {
  return {3021, u"ADODB.Recordset",
          u"Either BOF or EOF is True, or the current record has been deleted. Requested operation "
          u"requires a current record."};
}

}  // namespace

ColumnText::ColumnText(const Value& value) {
  if (value.Is<std::u16string>()) {
    text_ = &value.As<std::u16string>();
  } else {
    converted_ = platform::ToText(value);
  }
}

Record::Record(const std::unique_ptr<platform::Recordset>& rows,
               std::span<const std::u16string_view> columns) {
  if (!rows) {
    return;
  }
  columns_ = columns;
  try {
    fields_ = rows->GetRows(columns);
  } catch (const AutomationError&) {
    // The failed call may have moved the cursor; a clone starts at the first row.
    ReadByField(*rows->Clone(platform::LockType::Unspecified));
  }
}

// So that a field that cannot be read does not hide the others.
void Record::ReadByField(platform::Recordset& rows) {
  for (; !rows.Eof(); rows.MoveNext()) {
    for (const auto column : columns_) {
      Value field;
      try {
        field = rows.Field(std::u16string(column));
      } catch (const AutomationError& error) {
        failures_.push_front({fields_.size(), error});
      }
      fields_.push_back(std::move(field));
    }
  }
}

const Value& Record::operator[](std::u16string_view column) const {
  const std::size_t start = RowStart();
  const auto found = std::find(columns_.begin(), columns_.end(), column);
  if (found == columns_.end()) {
    throw AutomationError(RuntimeError::SubscriptOutOfRange);
  }
  const std::size_t field = start + static_cast<std::size_t>(found - columns_.begin());
  for (const Failure& failure : failures_) {
    if (failure.field == field) {
      throw AutomationError(failure.error);
    }
  }
  if (AtEnd()) {
    throw NoCurrentRecord();
  }
  return fields_[field];
}

ColumnText Record::TextOrEmpty(std::u16string_view column) const {
  const Value& value = (*this)[column];
  return value.IsNull() ? ColumnText() : ColumnText(value);
}

bool Record::AtEnd() const {
  return RowStart() >= fields_.size();
}

std::size_t Record::RowStart() const {
  if (columns_.empty()) {
    throw AutomationError(RuntimeError::ObjectNotSet);
  }
  return row_ * columns_.size();
}

}  // namespace fhp
