#include "results.h"

#include <string>

#include "automation/conversion.h"
#include "automation/text.h"
#include "com/com_error.h"
#include "com/variant.h"
#include "console.h"
// Must follow win32.h.
#include <adoint.h>

namespace sample_host {
namespace {

constexpr IID kRecordsetInterface = {
    0x00000556, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};

std::u16string ValueText(ADOField& field) {
  com::Variant content;
  com::CheckCall([&] { return field.get_Value(content.Receive()); });
  const auto value = com::ToValue(content.get());
  // Dates as 2026-11-16 14:05:00, whatever the user's locale.
  automation::Regional regional;
  regional.shortDate = u"yyyy-MM-dd";
  regional.twelveHourClock = false;
  return value.IsNull() ? u"Null" : Quoted(automation::ToText(value, regional));
}

std::u16string FieldText(ADOFields& fields, long index) {
  const com::Variant position{automation::Value(static_cast<std::int32_t>(index))};
  com::ComPtr<ADOField> field;
  com::CheckCall([&] { return fields.get_Item(position.get(), field.Receive()); });
  com::Bstr name;
  com::CheckCall([&] { return field->get_Name(name.Receive()); });
  return name.Text() + u"=" + ValueText(*field.get());
}

void PrintRow(_ADORecordset& recordset) {
  com::ComPtr<ADOFields> fields;
  com::CheckCall([&] { return recordset.get_Fields(fields.Receive()); });
  long count = 0;
  com::CheckCall([&] { return fields->get_Count(&count); });
  std::u16string line = u"row";
  for (long index = 0; index < count; ++index) {
    line += u" " + FieldText(*fields.get(), index);
  }
  Print(line);
}

bool AtEnd(_ADORecordset& recordset) {
  VARIANT_BOOL atEnd = VARIANT_TRUE;
  com::CheckCall([&] { return recordset.get_EOF(&atEnd); });
  return atEnd != VARIANT_FALSE;
}

}  // namespace

void PrintResult(VARIANT_BOOL result) {
  Print(result == VARIANT_FALSE ? u"result false" : u"result true");
}

void PrintResult(long result) {
  Print(u"result " + automation::Decimal10(result));
}

void PrintResult(const com::Bstr& result) {
  Print(u"result " + Quoted(result.Text()));
}

void PrintResult(const com::ComPtr<IDispatch>& recordset) {
  if (!recordset) {
    Print(u"result nothing");
    return;
  }
  com::ComPtr<_ADORecordset> rows;
  com::CheckCall(
      [&] { return recordset->QueryInterface(kRecordsetInterface, rows.ReceiveVoid()); });
  Print(u"result recordset");
  for (; !AtEnd(*rows.get()); com::CheckCall([&] { return rows->MoveNext(); })) {
    PrintRow(*rows.get());
  }
}

}  // namespace sample_host
