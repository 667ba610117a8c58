// The application's forms: tables of fields, and how a field is written.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "exchange/request_document.h"
#include "fhp/application_records.h"
#include "fhp/record_columns.h"

namespace fhp {

// Decides from the field's column whether the field is written.
enum class Condition {
  Always,
  // The column as a flag or count: Null and 0 are false.
  IfTrue,
  IfNotNull,
};

// How the value is formed.
enum class Writing {
  // "true".
  True,
  // The column's text; Null raises 94.
  Text,
  // The column's text, empty for Null.
  TextOrEmpty,
  // The column's text; if Null, the provider's second address line; if that is Null too, nothing.
  // Kept: the lines are never joined, because the form has room for one.
  Address,
  // The provider's postal town.
  City,
  // The postal town, a blank, today's date.
  CityAndToday,
  PersonNumber,
  // First name (the column), a blank, last name; a Null adds nothing.
  FullName,
  // One field for each run of the column, see tooth_scanner.h: "edt", the tooth, the field's key.
  PerTooth,
};

// A field of a form's table. If its column is not among those that are read, the table does not
// compile.
struct FormField {
  consteval FormField(std::u16string_view fieldKey, Record ApplicationRecords::*record,
                      std::u16string_view recordColumn, Condition when, Writing how)
      : key(fieldKey), source(record), column(recordColumn), condition(when), writing(how) {
    if (!column.empty() && !IsRead(source, column)) {
      throw "Add the column to record_columns.h.";
    }
  }

  std::u16string_view key;
  Record ApplicationRecords::*source;
  // Empty for fields that are always written and have
  // no column: City, CityAndToday, PersonNumber.
  std::u16string_view column;
  Condition condition;
  Writing writing;
};

inline constexpr Record ApplicationRecords::*kApplication = &ApplicationRecords::application;
inline constexpr Record ApplicationRecords::*kClinician = &ApplicationRecords::clinician;
inline constexpr Record ApplicationRecords::*kProvider = &ApplicationRecords::provider;
inline constexpr Record ApplicationRecords::*kPatient = &ApplicationRecords::patient;

// The clinic and the patient, as on both forms.
inline constexpr auto kPartyFields = std::to_array<FormField>({
    {u"edtVardgivareNamn", kProvider, u"Navn", Condition::Always, Writing::Text},
    {u"edtVardgivareAdress", kProvider, u"Adr1", Condition::Always, Writing::Address},
    {u"edtVardgivarePostNr", kProvider, u"Postnr", Condition::Always, Writing::Text},
    {u"edtVardgivarePostort", kProvider, u"", Condition::Always, Writing::City},
    {u"edtVardgivareOrgNr", kProvider, u"OrganizationNo", Condition::Always, Writing::Text},
    {u"edtVardgivareLeverantorNr", kProvider, u"LevNo", Condition::IfNotNull, Writing::Text},
    {u"edtPatientPersonNr", kPatient, u"", Condition::Always, Writing::PersonNumber},
    {u"edtPatientNamn", kPatient, u"fornavn", Condition::Always, Writing::FullName},
});

// Adds a form with what `body` adds.
template <class Body>
void AddForm(exchange::RequestDocument& document, std::u16string_view formId, Body body) {
  document.Add("FormDescr", [&] {
    document.Add("FormDescrId", {formId});
    body();
  });
}
// Adds one field: its key and value as elements.
void AddFormItem(exchange::RequestDocument& document, exchange::Pieces key, exchange::Pieces value);
// Adds the fields whose conditions hold, in the table's order.
void AddFields(exchange::RequestDocument& document, std::span<const FormField> fields,
               const ApplicationRecords& records);

}  // namespace fhp
