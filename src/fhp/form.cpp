#include "fhp/form.h"

#include "automation/date.h"
#include "fhp/tooth_scanner.h"
#include "platform/clock.h"
#include "platform/conversions.h"
#include "platform/platform.h"
#include "util/null_safe.h"

namespace fhp {
namespace {

bool Holds(Condition condition, const Record& record, std::u16string_view column) {
  switch (condition) {
    case Condition::IfTrue:
      return util::NullToBool(record[column]);
    case Condition::IfNotNull:
      return !record[column].IsNull();
    case Condition::Always:
      break;
  }
  return true;
}

ColumnText Address(const Record& provider, std::u16string_view firstLine) {
  return provider[firstLine].IsNull() ? provider.TextOrEmpty(u"Adr2") : provider.Text(firstLine);
}

std::u16string TodayText() {
  return platform::DateText(automation::DayOf(platform::Current().clock.Now()));
}

void AddTeeth(exchange::RequestDocument& document, std::u16string_view suffix,
              std::u16string_view column) {
  ToothScanner teeth(column, kDocumentScan);
  while (const auto run = teeth.Next()) {
    AddFormItem(document, {u"edt", run->tooth, suffix}, {run->text});
  }
}

void AddField(exchange::RequestDocument& document, const FormField& field,
              const ApplicationRecords& records) {
  const Record& record = records.*field.source;
  if (!Holds(field.condition, record, field.column)) {
    return;
  }
  const auto add = [&](exchange::Pieces value) { AddFormItem(document, {field.key}, value); };
  switch (field.writing) {
    case Writing::True:
      return add({u"true"});
    case Writing::Text:
      return add({record.Text(field.column)});
    case Writing::TextOrEmpty:
      return add({record.TextOrEmpty(field.column)});
    case Writing::Address:
      return add({Address(record, field.column)});
    case Writing::City:
      return add({records.city});
    case Writing::CityAndToday:
      return add({records.city, u" ", TodayText()});
    case Writing::PersonNumber:
      return add({records.personNumber});
    case Writing::FullName:
      return add({record.TextOrEmpty(field.column), u" ", record.TextOrEmpty(u"Navn")});
    case Writing::PerTooth:
      return AddTeeth(document, field.key, record.Text(field.column));
  }
}

}  // namespace

void AddFormItem(exchange::RequestDocument& document, exchange::Pieces key,
                 exchange::Pieces value) {
  document.Add("FormItem", [&] {
    document.Add("FormItemKey", key);
    document.Add("FormItemValue", value);
  });
}

void AddFields(exchange::RequestDocument& document, std::span<const FormField> fields,
               const ApplicationRecords& records) {
  for (const FormField& field : fields) {
    AddField(document, field, records);
  }
}

}  // namespace fhp
