#include "diagnosis/core/host_tables.h"

namespace diagnosis {
namespace {

using Name = std::u16string_view;

constexpr auto kPatient =
    std::to_array<Name>({u"ID", u"Fornavn", u"Navn", u"fDato", u"PersNr", u"Code1", u"adr1",
                         u"adr2", u"postnr", u"organizationNo", u"tlfPrivat"});
constexpr auto kWorker =
    std::to_array<Name>({u"ID", u"RID", u"ToothSystem", u"ReseptID", u"IDArkiv"});
constexpr auto kCompany = std::to_array<Name>({u"id", u"idarkiv", u"levno"});
constexpr auto kTown = std::to_array<Name>({u"Postnr", u"Poststedsnavn"});
constexpr auto kApplication = std::to_array<Name>({u"SEPrerequestID",
                                                   u"PID",
                                                   u"BID",
                                                   u"RID",
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
                                                   u"EstimateOfCost",
                                                   u"PrevDentalCare",
                                                   u"Caries",
                                                   u"perio",
                                                   u"Apikal",
                                                   u"Anamnes",
                                                   u"PlanTreatm",
                                                   u"PlanTreatmUJaw",
                                                   u"PlanTreatmLJaw",
                                                   u"TimeEstimate81",
                                                   u"TimeEstimateDentalTechnic",
                                                   u"Notes"});
constexpr auto kEstimateRow =
    std::to_array<Name>({u"SEPreRequestEstimateRowsID", u"SEPreRequest_ID", u"RateNo",
                         u"InternalCode", u"Debit", u"IncrComp", u"NoOf", u"Amount", u"RegDate"});
constexpr auto kJournal = std::to_array<Name>({u"ID", u"PID", u"Tekst", u"BID", u"RID", u"Dato",
                                               u"KODE", u"Status", u"Fakturert", u"RefTBID"});
constexpr auto kLink =
    std::to_array<Name>({u"VilnorId", u"PID", u"BID", u"RID", u"FHP_ID", u"CaseId", u"CaseType",
                         u"Journal_ID", u"StatusCode", u"VilnorUser", u"RegDate"});
constexpr auto kLinkUser = std::to_array<Name>({u"PID", u"UserName"});

}  // namespace

const std::array<HostTable, 9>& HostTables() {
  static constexpr std::array<HostTable, 9> tables = {
      HostTable{u"Pasient", kPatient},
      HostTable{u"Worker", kWorker},
      HostTable{u"company", kCompany},
      HostTable{u"Postadresseregister", kTown},
      HostTable{u"SEPrerequest", kApplication},
      HostTable{u"SEPreRequestEstimateRows", kEstimateRow},
      HostTable{u"Journal", kJournal},
      HostTable{u"Vilnor", kLink},
      HostTable{u"VilnorPasient", kLinkUser},
  };
  return tables;
}

}  // namespace diagnosis
