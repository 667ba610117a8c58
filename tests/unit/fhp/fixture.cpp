#include "unit/fhp/fixture.h"

#include <algorithm>
#include <iterator>

#include "automation/date.h"
#include "fhp/application.h"

namespace fhp {
namespace {

using automation::Date;
using automation::MakeDate;

std::string Between(const std::string& text, const std::string& start, const std::string& end,
                    std::size_t& from) {
  const std::size_t begin = text.find(start, from) + start.size();
  from = text.find(end, begin);
  return text.substr(begin, from - begin);
}

std::string ElementText(const std::string& text, const std::string& name, std::size_t& from) {
  const std::string open = "<" + name;
  const std::size_t start = text.find(open, from);
  if (text.compare(start, open.size() + 2, open + "/>") == 0) {
    from = start + open.size() + 2;
    return {};
  }
  return Between(text, open + ">", "</" + name + ">", from);
}

Row EstimateRow() {
  return {{u"SelectNoOf", 1},        {u"RateNo", 321},
          {u"InternalCode", Null()}, {u"Debit", u"Ä"},
          {u"IncrComp", false},      {u"NoOf", 1},
          {u"Amount", 1000.0},       {u"RegDate", MakeDate({.year = 2007, .month = 2, .day = 1})}};
}

fakes::Rows RowsOf(const std::vector<Row>& rows) {
  fakes::Rows answer;
  for (const Row& row : rows) {
    answer.columns.clear();
    auto& values = answer.rows.emplace_back();
    for (const auto& [column, value] : row) {
      answer.columns.push_back(column);
      values.push_back(value);
    }
  }
  return answer;
}

}  // namespace

Row EmptyApplication() {
  Row row;
  for (const auto* column : {u"BID",
                             u"RID",
                             u"PID",
                             u"RegDate",
                             u"CaseNo",
                             u"Inlay",
                             u"Orthodontics",
                             u"Par16",
                             u"IncreasedComp",
                             u"Aids",
                             u"TimeCharge",
                             u"Implant",
                             u"TwoStepTrial",
                             u"Voluntary",
                             u"Compl",
                             u"LAF",
                             u"HighExpCover",
                             u"LSP",
                             u"NoOfXRay",
                             u"NoOfOPG",
                             u"SentBy",
                             u"NoOfModels",
                             u"NoOfPhoto",
                             u"NoOfCertificate",
                             u"Caries",
                             u"perio",
                             u"EstimateOfCost",
                             u"Apikal",
                             u"Anamnes",
                             u"PrevDentalCare",
                             u"PlanTreatm",
                             u"PlanTreatmUJaw",
                             u"PlanTreatmLJaw",
                             u"TimeEstimate81",
                             u"TimeEstimateDentalTechnic",
                             u"Notes"}) {
    row[column] = Null();
  }
  return row;
}

FhpFixture::FhpFixture()
    : application(EmptyApplication()),
      clinician{{u"Fornavn", u"Eva"}, {u"Navn", u"Ek"}},
      provider{{u"Navn", u"Kliniken"}, {u"adr1", u"Storgatan 1"},      {u"adr2", u"Box 5"},
               {u"postnr", u"11122"},  {u"organizationNo", u"5566-1"}, {u"tlfPrivat", Null()},
               {u"levno", Null()}},
      patient{{u"ID", 4711},
              {u"Fornavn", u"Anna"},
              {u"Navn", u"Berg"},
              {u"fDato", MakeDate({.year = 1970, .month = 3, .day = 15})},
              {u"PersNr", u"1234"}},
      city{{u"Poststedsnavn", u"Stockholm"}} {
  std::filesystem::create_directories(folder / "Vilnor");
  locale.UseSwedish();
  application[u"BID"] = 12;
  application[u"RID"] = 3;
  application[u"PID"] = 4711;
  application[u"CaseNo"] = u"A1";
  application[u"RegDate"] = MakeDate({.year = 2007, .month = 1, .day = 2});
  AnswerParticipant(-32000, u"anmeld");
}

void FhpFixture::UseOlderPatient() {
  patient[u"fDato"] = MakeDate({.year = 1942, .month = 3, .day = 15});
  AnswerParticipant(-32001, u"kostnad");
}

Row& FhpFixture::AddEstimateRow(const Row& changes) {
  Row row = EstimateRow();
  for (const auto& [column, value] : changes) {
    row[column] = value;
  }
  return estimateRows.emplace_back(std::move(row));
}

void FhpFixture::AnswerParticipant(std::int32_t code, const std::u16string& name) {
  const std::int32_t user = 100000 - code;
  database.Answer(u"SELECT ID from Pasient where Code1 = " + automation::Decimal10(code),
                  {{u"ID"}, {{user}}});
  database.Answer(u"SELECT UserName from VilnorPasient where PID = " + automation::Decimal10(user),
                  {{u"UserName"}, {{name}}});
}

void FhpFixture::AnswerRow(const std::u16string& statement, const Row& row) {
  database.Answer(statement, row.empty() ? fakes::Rows() : RowsOf({row}));
}

void FhpFixture::Script() {
  AnswerRow(u"SELECT * FROM SEPrerequest WHERE SEPrerequestID = 8", application);
  AnswerRow(
      u"SELECT Worker.ToothSystem, Worker.ID, Worker.RID, Pasient.Fornavn, Pasient.Navn, "
      u"Worker.ReseptID FROM Worker INNER JOIN Pasient ON Worker.IDArkiv = Pasient.ID "
      u"Where Worker.ID = 12",
      clinician);
  AnswerRow(
      u"Select pasient.Navn, pasient.adr1, pasient.adr2, pasient.postnr, pasient.organizationNo, "
      u"pasient.tlfPrivat, company.levno from pasient, company where company.idarkiv = pasient.id "
      u"and company.id = 3",
      provider);
  AnswerRow(u"SELECT Poststedsnavn FROM Postadresseregister where Postnr = '11122'", city);
  AnswerRow(u"SELECT ID, Fornavn, Navn, fDato , PersNr FROM Pasient where ID = 4711", patient);
  database.Answer(
      u"SELECT COUNT(*) AS Antal FROM SEPrerequestEstimateRows WHERE SEPrerequest_ID = 8",
      {{u"Antal"}, {{static_cast<std::int32_t>(estimateRows.size())}}});
  database.Answer(
      u"SELECT  Count(SEPreRequestEstimateRowsID) AS SelectNoOf, RateNo, InternalCode, Debit, "
      u"IncrComp, NoOf, Amount, RegDate FROM SEPreRequestEstimateRows WHERE SEPreRequest_ID = 8 "
      u"GROUP BY RateNo, Amount, InternalCode, Debit, IncrComp, NoOf, RegDate",
      RowsOf(estimateRows));
}

std::u16string FhpFixture::Write() {
  Script();
  return WriteNewFHP(5, 6, 7, 8, exchangeDirectory).OrEmpty();
}

std::optional<Fields> FhpFixture::FieldsOf(const std::string& formId) {
  Write();
  const std::string file = File();
  const std::size_t start = file.find("<FormDescrId>" + formId + "</FormDescrId>");
  if (start == std::string::npos) {
    return std::nullopt;
  }
  const std::string form = file.substr(start, file.find("</FormDescr>", start) - start);
  Fields fields;
  for (std::size_t at = form.find("<FormItem>"); at != std::string::npos;
       at = form.find("<FormItem>", at)) {
    std::string key = ElementText(form, "FormItemKey", at);
    std::string value = ElementText(form, "FormItemValue", at);
    fields.emplace_back(std::move(key), std::move(value));
  }
  return fields;
}

std::optional<std::string> FhpFixture::ValueOf(const std::string& key) {
  const Fields fields = FieldsOf("108692").value_or(Fields());
  const auto isKey = [&](const auto& field) { return field.first == key; };
  const auto found = std::find_if(fields.begin(), fields.end(), isKey);
  EXPECT_LE(std::count_if(fields.begin(), fields.end(), isKey), 1) << key << " is written twice";
  return found == fields.end() ? std::nullopt : std::optional(found->second);
}

std::vector<std::string> FhpFixture::Keys(const std::string& formId) {
  const Fields fields = FieldsOf(formId).value_or(Fields());
  std::vector<std::string> keys;
  std::transform(fields.begin(), fields.end(), std::back_inserter(keys),
                 [](const auto& field) { return field.first; });
  return keys;
}

}  // namespace fhp
