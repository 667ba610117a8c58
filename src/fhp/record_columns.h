// The columns that the export reads of each record: those of the forms' tables, which do not
// compile with any other, and those that a computation needs.
#pragma once

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "fhp/application_records.h"

namespace fhp {

inline constexpr auto kApplicationColumns =
    std::to_array<std::u16string_view>({u"BID",
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
                                        u"EstimateOfCost",
                                        u"PrevDentalCare",
                                        u"Caries",
                                        u"perio",
                                        u"Apikal",
                                        u"Anamnes",
                                        u"PlanTreatm",
                                        u"TimeEstimate81",
                                        u"TimeEstimateDentalTechnic",
                                        u"PlanTreatmUJaw",
                                        u"PlanTreatmLJaw",
                                        u"Notes"});
inline constexpr auto kClinicianColumns = std::to_array<std::u16string_view>({u"fornavn", u"Navn"});
inline constexpr auto kProviderColumns = std::to_array<std::u16string_view>(
    {u"Navn", u"Adr1", u"Adr2", u"Postnr", u"OrganizationNo", u"tlfPrivat", u"LevNo"});
inline constexpr auto kPatientColumns =
    std::to_array<std::u16string_view>({u"fornavn", u"Navn", u"FDato", u"PersNr"});
inline constexpr auto kEstimateColumns = std::to_array<std::u16string_view>(
    {u"SelectNoOf", u"RateNo", u"Debit", u"IncrComp", u"NoOf", u"Amount", u"RegDate"});

// The columns that are read of one of the records that forms are made from.
constexpr std::span<const std::u16string_view> ColumnsOf(Record ApplicationRecords::*record) {
  if (record == &ApplicationRecords::application) {
    return kApplicationColumns;
  }
  if (record == &ApplicationRecords::clinician) {
    return kClinicianColumns;
  }
  if (record == &ApplicationRecords::provider) {
    return kProviderColumns;
  }
  return kPatientColumns;
}

constexpr bool IsRead(Record ApplicationRecords::*record, std::u16string_view column) {
  const auto columns = ColumnsOf(record);
  return std::find(columns.begin(), columns.end(), column) != columns.end();
}

}  // namespace fhp
