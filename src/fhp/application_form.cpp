#include "fhp/application_form.h"

#include <array>

#include "fhp/form.h"

namespace fhp {
namespace {

using enum Condition;
using enum Writing;

constexpr auto kChoices = std::to_array<FormField>({
    {u"edtArendeNr", kApplication, u"CaseNo", Always, Text},
    {u"cbProt", kApplication, u"Inlay", IfTrue, True},
    {u"cbTandregl", kApplication, u"Orthodontics", IfTrue, True},
    {u"cbParagraf16", kApplication, u"Par16", IfTrue, True},
    {u"cbForhojdErsattn", kApplication, u"IncreasedComp", IfTrue, True},
    {u"cbHjalpmedel", kApplication, u"Aids", IfTrue, True},
    {u"cbTidsdeb", kApplication, u"TimeCharge", IfTrue, True},
    {u"cbImplantat", kApplication, u"Implant", IfTrue, True},
    {u"cb2StegsProvn", kApplication, u"TwoStepTrial", IfTrue, True},
    {u"cbFrivillig", kApplication, u"Voluntary", IfTrue, True},
    {u"cbKompl", kApplication, u"Compl", IfTrue, True},
    {u"cbLAF", kApplication, u"LAF", IfTrue, True},
    {u"cbHogkostnskydd", kApplication, u"HighExpCover", IfTrue, True},
    {u"cbLSP", kApplication, u"LSP", IfTrue, True},
    {u"edtAntalRtg", kApplication, u"NoOfXRay", IfTrue, Text},
    {u"edtAntalOPG", kApplication, u"NoOfOPG", IfTrue, Text},
    {u"edtVia", kApplication, u"SentBy", IfNotNull, Text},
    {u"edtAntalModeller", kApplication, u"NoOfModels", IfTrue, Text},
    {u"edtAntalFoto", kApplication, u"NoOfPhoto", IfTrue, Text},
    {u"edtAntalIntyg", kApplication, u"NoOfCertificate", IfTrue, Text},
    // Kept: tested like a check box, written like a count; the link program accepts both.
    {u"cbKostnadsber", kApplication, u"EstimateOfCost", IfTrue, Text},
});

constexpr auto kClinicalFields = std::to_array<FormField>({
    {u"foregtv", kApplication, u"PrevDentalCare", IfNotNull, PerTooth},
    {u"karies", kApplication, u"Caries", IfNotNull, PerTooth},
    {u"paroddiagn", kApplication, u"perio", IfNotNull, PerTooth},
    {u"apikalaforandr", kApplication, u"Apikal", IfNotNull, PerTooth},
    {u"memAnamnes", kApplication, u"Anamnes", IfNotNull, Text},
    {u"beh", kApplication, u"PlanTreatm", IfNotNull, PerTooth},
    {u"edtBerTidsatgang81", kApplication, u"TimeEstimate81", IfNotNull, Text},
    {u"edtBerTidsatgangTT", kApplication, u"TimeEstimateDentalTechnic", IfNotNull, Text},
    {u"edtOrtDatum", kProvider, u"", Always, CityAndToday},
    {u"edtTelefon", kProvider, u"tlfPrivat", Always, TextOrEmpty},
    {u"edtNamnfortydligande", kClinician, u"fornavn", Always, FullName},
    {u"edtUJbeh", kApplication, u"PlanTreatmUJaw", IfNotNull, Text},
    {u"edtLJbeh", kApplication, u"PlanTreatmLJaw", IfNotNull, Text},
});

}  // namespace

void AddApplicationForm(exchange::RequestDocument& document, const ApplicationRecords& records) {
  AddForm(document, u"108692", [&] {
    AddFields(document, kChoices, records);
    AddFields(document, kPartyFields, records);
    AddFields(document, kClinicalFields, records);
  });
}

}  // namespace fhp
