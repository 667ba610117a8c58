// A record of the host's database as the export reads it.
#pragma once

#include <cstddef>
#include <forward_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "automation/automation_error.h"
#include "automation/value.h"
#include "platform/database.h"

namespace fhp {

// A value as text, without a copy of one that is a text. A view of it is valid as long as both it
// and its record.
class ColumnText {
 public:
  ColumnText() = default;
  // Error 94 for Null.
  explicit ColumnText(const automation::Value& value);
  operator std::u16string_view() const { return text_ == nullptr ? converted_ : *text_; }

 private:
  const std::u16string* text_ = nullptr;
  std::u16string converted_;
};

// The rows of a lookup's result, read at once. If the lookup found nothing, or failed and reported
// it, every use raises error 91, as in the classic runtime.
class Record {
 public:
  Record() = default;
  // Reads these columns (which must outlive the record) of the rows from the current one on. A
  // column that cannot be read raises its error only when it is used, since a form may not need it.
  Record(const std::unique_ptr<platform::Recordset>& rows,
         std::span<const std::u16string_view> columns);

  // A column of the current row. ADO's error if it could not be read (3265 for an unknown column),
  // and 3021 past the last row.
  const automation::Value& operator[](std::u16string_view column) const;
  // The column as text; error 94 for Null.
  ColumnText Text(std::u16string_view column) const { return ColumnText((*this)[column]); }
  // The column as text, empty for Null, as in a concatenation.
  ColumnText TextOrEmpty(std::u16string_view column) const;
  void MoveFirst() { row_ = 0; }
  void MoveNext() { ++row_; }
  // Past the last row.
  bool AtEnd() const;

 private:
  struct Failure {
    std::size_t field = 0;
    automation::AutomationError error;
  };

  void ReadByField(platform::Recordset& rows);
  // Where the current row's fields begin.
  std::size_t RowStart() const;

  // None without a record.
  std::span<const std::u16string_view> columns_;
  // Row by row.
  std::vector<automation::Value> fields_;
  std::forward_list<Failure> failures_;
  std::size_t row_ = 0;
};

}  // namespace fhp
