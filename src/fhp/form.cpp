#include "fhp/form.h"

#include <utility>

#include "automation/date.h"
#include "fhp/tooth_scanner.h"
#include "platform/clock.h"
#include "platform/conversions.h"
#include "platform/platform.h"
#include "util/null_safe.h"

namespace fhp {
namespace {

bool Holds(Condition condition, const Record& record, const char16_t* column) {
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

std::u16string Address(const Record& provider, const char16_t* firstLine) {
  return provider[firstLine].IsNull() ? provider.TextOrEmpty(u"Adr2") : provider.Text(firstLine);
}

std::u16string TodayText() {
  return platform::DateText(automation::DayOf(platform::Current().clock.Now()));
}

std::u16string ValueOf(const FormField& field, const ApplicationRecords& records) {
  const Record& record = records.*field.source;
  switch (field.writing) {
    case Writing::True:
      return u"true";
    case Writing::TextOrEmpty:
      return record.TextOrEmpty(field.column);
    case Writing::Address:
      return Address(record, field.column);
    case Writing::City:
      return records.city;
    case Writing::CityAndToday:
      return records.city + u" " + TodayText();
    case Writing::PersonNumber:
      return records.personNumber;
    case Writing::FullName:
      return record.TextOrEmpty(field.column) + u" " + record.TextOrEmpty(u"Navn");
    case Writing::Text:
    case Writing::PerTooth:
      break;
  }
  return record.Text(field.column);
}

void AddTeeth(exchange::Element& form, std::u16string_view suffix, std::u16string_view column) {
  ToothScanner teeth(column, kDocumentScan);
  while (const auto run = teeth.Next()) {
    AddFormItem(form, std::u16string(u"edt").append(run->tooth).append(suffix),
                std::u16string(run->text));
  }
}

void AddField(exchange::Element& form, const FormField& field, const ApplicationRecords& records) {
  if (!Holds(field.condition, records.*field.source, field.column)) {
    return;
  }
  std::u16string value = ValueOf(field, records);
  if (field.writing == Writing::PerTooth) {
    AddTeeth(form, field.key, value);
  } else {
    AddFormItem(form, std::u16string(field.key), std::move(value));
  }
}

}  // namespace

exchange::Element& AddForm(exchange::Element& contribution, std::u16string_view formId) {
  exchange::Element& form = contribution.Add(u"FormDescr");
  form.Add(u"FormDescrId", std::u16string(formId));
  return form;
}

void AddFormItem(exchange::Element& form, std::u16string key, std::u16string value) {
  exchange::Element& item = form.Add(u"FormItem");
  item.Add(u"FormItemKey", std::move(key));
  item.Add(u"FormItemValue", std::move(value));
}

void AddFields(exchange::Element& form, std::span<const FormField> fields,
               const ApplicationRecords& records) {
  for (const FormField& field : fields) {
    AddField(form, field, records);
  }
}

}  // namespace fhp
