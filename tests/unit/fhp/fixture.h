// One application of the host in a scripted database, valid and minimal until a test changes it,
// and the request file written for it.
#pragma once

#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fakes/component_fixture.h"

namespace fhp {

using automation::Null;
using automation::Value;

// A row by its columns.
using Row = std::map<std::u16string, Value>;
// A form's fields as written in the file, escaped and in Latin-1: (key, value).
using Fields = std::vector<std::pair<std::string, std::string>>;

class FhpFixture : public fakes::ComponentFixture {
 protected:
  FhpFixture();

  // Scripts the rows below in the database.
  void Script();
  // The same, then calls WriteNewFHP(5, 6, 7, 8, the exchange directory).
  std::u16string Write();
  // The bytes of the request file.
  std::string File() const { return Contents(u"InNewFHP8.xml"); }
  // Writes the file and returns a form's fields; none when it has no such form.
  std::optional<Fields> FieldsOf(const std::string& formId);
  // Writes the file and returns the value of the application form's only field of that key.
  std::optional<std::string> ValueOf(const std::string& key);
  std::vector<std::string> Keys(const std::string& formId);

  // Adds an estimate row that is included: rate 321, debit "Ä", a date of 2007, one of 1000.
  Row& AddEstimateRow(const Row& changes = {});
  // Makes the patient 65 and the registration one with an estimate.
  void UseOlderPatient();
  // Makes the participant lookup find the name.
  void AnswerParticipant(std::int32_t code, const std::u16string& name);

  std::vector<std::u16string> Boxes() const { return dialogs.Texts(); }

  // The contents of the host's rows. A record without columns is not found.
  Row application;
  Row clinician;
  Row provider;
  Row patient;
  Row city;
  std::vector<Row> estimateRows;

 private:
  void AnswerRow(const std::u16string& statement, const Row& row);
};

// The columns of `application` that AddApplicationForm may read, all Null.
Row EmptyApplication();

}  // namespace fhp
