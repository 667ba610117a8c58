// Pure computations, without late-bound calls, use the component's code: the identity number, the
// runs of per-tooth columns, the compensation rule. A script would be slower.
#include <array>

#include "automation/conversion.h"
#include "automation/date.h"
#include "automation/text.h"
#include "com/wide_text.h"
#include "fhp/estimate_decision.h"
#include "fhp/tooth_scanner.h"
#include "platform/clock.h"
#include "platform/conversions.h"
#include "platform/locale.h"
#include "platform/platform.h"
#include "util/null_safe.h"
#include "util/rate_compensation.h"
#include "util/ssn.h"
#include "util/subsidy_period.h"
#include "windows/script.h"
#include "windows/script_objects.h"

namespace benchmarks {
namespace {

using automation::Decimal10;
using automation::Value;
using platform::ToDate;
using platform::ToInt32;
using platform::ToText;
using Text = std::u16string;

Text Fixed(double amount) {
  Text text;
  automation::AppendFixed(text, amount, platform::Current().locale.Regional());
  return text;
}

Text TextOrEmpty(const Value& value) {
  return value.IsNull() ? Text() : ToText(value);
}

// All data that is read before the first element is created.
struct Sources {
  LateBound application;
  LateBound clinician;
  LateBound provider;
  LateBound patient;
  Text city;
  Text personNumber;
};

Sources ReadSources(const LateBound& connection, const Text& fhpId) {
  const LateBound application =
      Query(connection, u"SELECT * FROM SEPrerequest WHERE SEPrerequestID = " + fhpId);
  const LateBound clinician =
      Query(connection,
            u"SELECT Worker.ToothSystem, Worker.ID, Worker.RID, Pasient.Fornavn, Pasient.Navn, "
            u"Worker.ReseptID FROM Worker INNER JOIN Pasient ON Worker.IDArkiv = Pasient.ID Where "
            u"Worker.ID = " +
                KeyField(application, u"BID"));
  const LateBound provider = Query(
      connection,
      u"Select pasient.Navn, pasient.adr1, pasient.adr2, pasient.postnr, pasient.organizationNo, "
      u"pasient.tlfPrivat, company.levno from pasient, company where company.idarkiv = pasient.id "
      u"and company.id = " +
          KeyField(application, u"RID"));
  const LateBound towns =
      Query(connection, u"SELECT Poststedsnavn FROM Postadresseregister where Postnr = '" +
                            KeyField(provider, u"Postnr") + u"'");
  const LateBound patient =
      Query(connection, u"SELECT ID, Fornavn, Navn, fDato , PersNr FROM Pasient where ID = " +
                            KeyField(application, u"PID"));
  return {.application = application,
          .clinician = clinician,
          .provider = provider,
          .patient = patient,
          .city = TextField(towns, u"Poststedsnavn"),
          .personNumber =
              util::MakeSSN(ToDate(Field(patient, u"FDato")), Field(patient, u"PersNr"), true)};
}

// The document's elements, added one by one.
class Writer {
 public:
  Writer() : document_(LateBound::Create(L"MSXML2.DOMDocument")) {
    document_.Call(L"appendChild", document_.Object(L"createProcessingInstruction", u"xml",
                                                    u"version='1.0' encoding='ISO-8859-1'"));
  }

  LateBound Root(const Text& name) const {
    return document_.Object(L"appendChild", document_.Object(L"createElement", name));
  }
  LateBound Add(const LateBound& parent, const Text& name, const Text& text = {}) const {
    auto element = document_.Object(L"createElement", name);
    if (!text.empty()) {
      element.Put(L"text", text);
    }
    parent.Call(L"appendChild", element);
    return element;
  }
  void AddItem(const LateBound& form, const Text& key, const Text& value) const {
    const LateBound item = Add(form, u"FormItem");
    Add(item, u"FormItemKey", key);
    Add(item, u"FormItemValue", value);
  }
  void Save(const Text& path) const { document_.Call(L"save", path); }

 private:
  LateBound document_;
};

struct Column {
  const char16_t* key;
  const char16_t* name;
};

constexpr std::array<Column, 13> kChecks = {{{u"cbProt", u"Inlay"},
                                             {u"cbTandregl", u"Orthodontics"},
                                             {u"cbParagraf16", u"Par16"},
                                             {u"cbForhojdErsattn", u"IncreasedComp"},
                                             {u"cbHjalpmedel", u"Aids"},
                                             {u"cbTidsdeb", u"TimeCharge"},
                                             {u"cbImplantat", u"Implant"},
                                             {u"cb2StegsProvn", u"TwoStepTrial"},
                                             {u"cbFrivillig", u"Voluntary"},
                                             {u"cbKompl", u"Compl"},
                                             {u"cbLAF", u"LAF"},
                                             {u"cbHogkostnskydd", u"HighExpCover"},
                                             {u"cbLSP", u"LSP"}}};
constexpr std::array<Column, 2> kPictures = {
    {{u"edtAntalRtg", u"NoOfXRay"}, {u"edtAntalOPG", u"NoOfOPG"}}};
constexpr std::array<Column, 4> kThings = {{{u"edtAntalModeller", u"NoOfModels"},
                                            {u"edtAntalFoto", u"NoOfPhoto"},
                                            {u"edtAntalIntyg", u"NoOfCertificate"},
                                            {u"cbKostnadsber", u"EstimateOfCost"}}};
constexpr std::array<Column, 4> kFoundTeeth = {{{u"foregtv", u"PrevDentalCare"},
                                                {u"karies", u"Caries"},
                                                {u"paroddiagn", u"perio"},
                                                {u"apikalaforandr", u"Apikal"}}};

// The request of the full application.
class Request {
 public:
  Request(const LateBound& connection, Text folder)
      : connection_(connection),
        folder_(std::move(folder)),
        from_(ReadSources(connection, kFhpId)) {}

  void Write(const wchar_t* fileName) {
    LateBound envelope = writer_.Root(u"Envelope");
    envelope.Call(L"setAttribute", u"LIFFVersion", u"2.0");
    const LateBound newCase = writer_.Add(envelope, u"NewCase");
    AddResult(newCase);
    AddPatient(newCase);
    const LateBound contribution = writer_.Add(newCase, u"Contribution");
    writer_.Add(contribution, u"Heading");
    writer_.Add(contribution, u"Statement");
    AddApplication(contribution);
    const bool estimated = HasEstimate();
    if (estimated) {
      AddEstimate(contribution);
    }
    AddParticipant(newCase, fhp::ParticipantCode(estimated));
    writer_.Save(folder_ + u"\\" + com::FromWide(fileName));
  }

 private:
  static const Text kFhpId;

  void AddResult(const LateBound& newCase) {
    const LateBound result = writer_.Add(newCase, u"Result");
    writer_.Add(result, u"ResultPath", folder_ + u"\\OutNewFHP" + kFhpId + u".xml");
    writer_.Add(result, u"ReturnWhen", u"7");
    writer_.Add(
        result, u"UserDefData",
        Decimal10(kPatient) + u"&12&3&" + kFhpId + u"&" + TextField(from_.application, u"CaseNo"));
    const LateBound notification = writer_.Add(result, u"WnDNotification");
    writer_.Add(notification, u"ClassName", u"KestraToVilnor");
    writer_.Add(notification, u"MessageId", u"10001");
    writer_.Add(notification, u"WParam", kFhpId);
  }

  void AddPatient(const LateBound& newCase) {
    const Text first = TextField(from_.patient, u"fornavn");
    const Text last = TextField(from_.patient, u"Navn");
    writer_.Add(newCase, u"Title",
                u"FHP" + from_.personNumber.substr(2, 6) + first.substr(0, 1) + last.substr(0, 1));
    writer_.Add(newCase, u"PatientFirstName", first);
    writer_.Add(newCase, u"PatientLastName", last);
    writer_.Add(newCase, u"PatientId", from_.personNumber);
  }

  LateBound AddForm(const LateBound& contribution, const char16_t* id) {
    LateBound form = writer_.Add(contribution, u"FormDescr");
    writer_.Add(form, u"FormDescrId", id);
    writer_.AddItem(form, u"edtArendeNr", TextField(from_.application, u"CaseNo"));
    return form;
  }

  void AddApplication(const LateBound& contribution) {
    const LateBound form = AddForm(contribution, u"108692");
    for (const auto& [key, name] : kChecks) {
      if (util::NullToBool(Field(from_.application, name))) {
        writer_.AddItem(form, key, u"true");
      }
    }
    AddCounts(form, kPictures);
    AddIfThere(form, u"edtVia", u"SentBy");
    AddCounts(form, kThings);
    AddParties(form);
    for (const auto& [suffix, name] : kFoundTeeth) {
      AddTeeth(form, suffix, name);
    }
    AddIfThere(form, u"memAnamnes", u"Anamnes");
    AddTeeth(form, u"beh", u"PlanTreatm");
    AddIfThere(form, u"edtBerTidsatgang81", u"TimeEstimate81");
    AddIfThere(form, u"edtBerTidsatgangTT", u"TimeEstimateDentalTechnic");
    const auto today = automation::DayOf(platform::Current().clock.Now());
    writer_.AddItem(form, u"edtOrtDatum", from_.city + u" " + platform::DateText(today));
    writer_.AddItem(form, u"edtTelefon", TextOrEmpty(Field(from_.provider, u"tlfPrivat")));
    writer_.AddItem(form, u"edtNamnfortydligande", FullName(from_.clinician));
    AddIfThere(form, u"edtUJbeh", u"PlanTreatmUJaw");
    AddIfThere(form, u"edtLJbeh", u"PlanTreatmLJaw");
  }

  void AddParties(const LateBound& form) {
    const Value street = Field(from_.provider, u"Adr1");
    writer_.AddItem(form, u"edtVardgivareNamn", TextField(from_.provider, u"Navn"));
    writer_.AddItem(form, u"edtVardgivareAdress",
                    TextOrEmpty(street.IsNull() ? Field(from_.provider, u"Adr2") : street));
    writer_.AddItem(form, u"edtVardgivarePostNr", TextField(from_.provider, u"Postnr"));
    writer_.AddItem(form, u"edtVardgivarePostort", from_.city);
    writer_.AddItem(form, u"edtVardgivareOrgNr", TextField(from_.provider, u"OrganizationNo"));
    const Value number = Field(from_.provider, u"LevNo");
    if (!number.IsNull()) {
      writer_.AddItem(form, u"edtVardgivareLeverantorNr", ToText(number));
    }
    writer_.AddItem(form, u"edtPatientPersonNr", from_.personNumber);
    writer_.AddItem(form, u"edtPatientNamn", FullName(from_.patient));
  }

  static Text FullName(const LateBound& person) {
    return TextOrEmpty(Field(person, u"fornavn")) + u" " + TextOrEmpty(Field(person, u"Navn"));
  }

  template <std::size_t Size>
  void AddCounts(const LateBound& form, const std::array<Column, Size>& columns) {
    for (const auto& [key, name] : columns) {
      const Value count = Field(from_.application, name);
      if (util::NullToBool(count)) {
        writer_.AddItem(form, key, ToText(count));
      }
    }
  }

  void AddIfThere(const LateBound& form, const char16_t* key, const char16_t* name) {
    const Value value = Field(from_.application, name);
    if (!value.IsNull()) {
      writer_.AddItem(form, key, ToText(value));
    }
  }

  void AddTeeth(const LateBound& form, const char16_t* suffix, const char16_t* name) {
    const Text column = TextOrEmpty(Field(from_.application, name));
    fhp::ToothScanner teeth(column, fhp::kDocumentScan);
    while (const auto run = teeth.Next()) {
      writer_.AddItem(form, Text(u"edt").append(run->tooth).append(suffix), Text(run->text));
    }
  }

  bool HasEstimate() {
    const LateBound count = Query(connection_,
                                  u"SELECT COUNT(*) AS Antal FROM SEPrerequestEstimateRows WHERE "
                                  u"SEPrerequest_ID = " +
                                      kFhpId);
    return ToInt32(Field(count, u"Antal")) > 0 &&
           fhp::IncludesEstimate(ToDate(Field(from_.application, u"RegDate")),
                                 ToDate(Field(from_.patient, u"FDato")));
  }

  void AddEstimate(const LateBound& contribution) {
    const LateBound form = AddForm(contribution, u"108696");
    AddParties(form);
    AddIfThere(form, u"memUpplysningar", u"Notes");
    const LateBound rows = Query(
        connection_,
        u"SELECT  Count(SEPreRequestEstimateRowsID) AS SelectNoOf, RateNo, InternalCode, Debit, "
        u"IncrComp, NoOf, Amount, RegDate FROM SEPreRequestEstimateRows WHERE SEPreRequest_ID = " +
            kFhpId + u" GROUP BY RateNo, Amount, InternalCode, Debit, IncrComp, NoOf, RegDate");
    double sum = 0;
    for (std::int32_t number = 1; !AtEnd(rows); rows.Call(L"MoveNext")) {
      sum += AddRow(form, rows, number);
    }
    constexpr double kDeduction = 7700;
    writer_.AddItem(form, u"edtBerSummering", Fixed(sum));
    writer_.AddItem(form, u"edtBerTotalErsattning", Fixed(sum - kDeduction));
  }

  // The row's sum. No row of the sample has a rate with a printed row.
  double AddRow(const LateBound& form, const LateBound& row, std::int32_t& number) {
    const Value rateNo = Field(row, u"RateNo");
    const Value amount = Field(row, u"Amount");
    const Text debit = TextOrEmpty(Field(row, u"Debit"));
    const bool taken =
        debit == util::kElderlyDebit && ToInt32(rateNo) != 0 &&
        util::GetRateCompensation(
            {.regDate = ToDate(Field(row, u"RegDate")),
             .birthDate = ToDate(Field(from_.patient, u"FDato")),
             .amount1 = amount,
             .amount2 = amount,
             .amount3 = amount,
             .increasedComp = util::NullToBool(Field(row, u"IncrComp")),
             .increasedCompApplied = util::NullToBool(Field(from_.application, u"IncreasedComp")),
             .rateNo = rateNo,
             .debit = debit})
            .accepted;
    if (!taken) {
      return 0;
    }
    const std::int32_t noOf = ToInt32(util::NullToZero(Field(row, u"NoOf")));
    const std::int32_t count = ToInt32(Field(row, u"SelectNoOf")) * (noOf == 0 ? 1 : noOf);
    const double price = platform::ToDouble(amount);
    const bool hasPrintedMeasure = number == 10 || number == 11;
    const Text key = u"edtBer" + Decimal10(number++);
    if (!hasPrintedMeasure) {
      writer_.AddItem(form, key + u"Atgard", ToText(rateNo));
    }
    writer_.AddItem(form, key + u"Antal", Decimal10(count));
    writer_.AddItem(form, key + u"Pris", Fixed(price));
    writer_.AddItem(form, key + u"Summa", Fixed(count * price));
    return count * price;
  }

  void AddParticipant(const LateBound& newCase, std::int32_t code) {
    const LateBound person =
        Query(connection_, u"SELECT ID from Pasient where Code1 = " + Decimal10(code));
    const LateBound user = Query(
        connection_, u"SELECT UserName from VilnorPasient where PID = " + KeyField(person, u"ID"));
    writer_.Add(writer_.Add(newCase, u"Participant"), u"UserId", TextField(user, u"UserName"));
  }

  const LateBound& connection_;
  Text folder_;
  Sources from_;
  Writer writer_;
};

const Text Request::kFhpId = Decimal10(kFullApplication);

}  // namespace

void RequestByScript(const Computer& computer, const wchar_t* fileName) {
  const auto shell = LateBound::Create(L"WScript.Shell");
  const Text folder = ExchangeFolder(shell);
  RegisteredPath(shell, u"Microsoft\\Windows\\CurrentVersion\\App Paths\\Link.exe");
  const LateBound connection = Connect(computer);
  Request(connection, folder).Write(fileName);
}

}  // namespace benchmarks
