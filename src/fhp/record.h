// A record of the host's database as the export reads it.
#pragma once

#include <memory>
#include <string>

#include "automation/value.h"
#include "platform/database.h"

namespace fhp {

// Owns the result of a DBVilnor lookup. A lookup that found nothing, or failed and reported it,
// returns no recordset: every use then raises error 91, as in the classic runtime. Column errors
// are ADO's (3265 for an unknown column).
class Record {
 public:
  Record() = default;
  explicit Record(std::unique_ptr<platform::Recordset> rows) : rows_(std::move(rows)) {}

  // A column of the current row.
  automation::Value operator[](const char16_t* column) const { return Rows().Field(column); }
  // The column as text; error 94 for Null.
  std::u16string Text(const char16_t* column) const;
  // The column as text, empty for Null, as in a concatenation.
  std::u16string TextOrEmpty(const char16_t* column) const;
  // Changes the record in memory only.
  void Put(const char16_t* column, const automation::Value& value) {
    Rows().SetField(column, value);
  }
  // Past the last row.
  bool AtEnd() const { return Rows().Eof(); }
  void MoveNext() { Rows().MoveNext(); }
  void Close() { Rows().Close(); }

 private:
  platform::Recordset& Rows() const { return platform::Require(rows_); }

  std::unique_ptr<platform::Recordset> rows_;
};

}  // namespace fhp
