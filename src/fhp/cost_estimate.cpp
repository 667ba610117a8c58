#include "fhp/cost_estimate.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <string>

#include "automation/automation_error.h"
#include "automation/conversion.h"
#include "automation/text.h"
#include "fhp/form.h"
#include "platform/conversions.h"
#include "platform/locale.h"
#include "platform/platform.h"
#include "util/null_safe.h"
#include "util/rate_compensation.h"
#include "util/subsidy_period.h"

namespace fhp {
namespace {

using automation::Decimal10;
using automation::Value;
using enum Condition;
using enum Writing;

constexpr auto kCaseFields = std::to_array<FormField>({
    {u"edtArendeNr", kApplication, u"CaseNo", Always, Text},
});

constexpr auto kNoteFields = std::to_array<FormField>({
    {u"memUpplysningar", kApplication, u"Notes", IfNotNull, Text},
});

// Rates that have a printed row on the form and a fixed price.
struct FixedRate {
  std::u16string_view rateNo;
  std::int16_t rowNumber;
  std::int32_t price;
};
constexpr auto kFixedRates = std::to_array<FixedRate>({
    {u"681", 10, 2900},
    {u"682", 11, 3200},
});

// Whichever rate uses the row: the form has no room for a measure beside the printed one.
bool HasPrintedMeasure(std::int16_t rowNumber) {
  return std::any_of(kFixedRates.begin(), kFixedRates.end(),
                     [=](const FixedRate& fixed) { return fixed.rowNumber == rowNumber; });
}

// The patient's own share, deducted from every estimate, even a smaller one.
constexpr double kFixedDeduction = 7700;

std::int32_t Product(std::int32_t left, std::int32_t right) {
  const std::int64_t product = std::int64_t{left} * right;
  if (product < std::numeric_limits<std::int32_t>::min() ||
      product > std::numeric_limits<std::int32_t>::max()) {
    throw automation::AutomationError(automation::RuntimeError::Overflow);
  }
  return static_cast<std::int32_t>(product);
}

Value OrZero(const Record& row, std::u16string_view column) {
  return util::NullToZero(row[column]);
}

bool IsTaken(const Record& row, const ApplicationRecords& records) {
  const std::u16string debit = util::NullToText(row[u"Debit"]);
  if (debit != util::kElderlyDebit || platform::ToDouble(OrZero(row, u"RateNo")) == 0) {
    return false;
  }
  const Value& amount = row[u"Amount"];
  return util::GetRateCompensation(
             {.regDate = platform::ToDate(row[u"RegDate"]),
              .birthDate = platform::ToDate(records.patient[u"FDato"]),
              .amount1 = amount,
              .amount2 = amount,
              .amount3 = amount,
              .increasedComp = util::NullToBool(row[u"IncrComp"]),
              .increasedCompApplied = util::NullToBool(records.application[u"IncreasedComp"]),
              .rateNo = row[u"RateNo"],
              .debit = debit})
      .accepted;
}

std::int32_t CountOf(const Record& row) {
  const std::int32_t noOf = platform::ToInt32(OrZero(row, u"NoOf"));
  return Product(platform::ToInt32(OrZero(row, u"SelectNoOf")), noOf == 0 ? 1 : noOf);
}

// Writes the rows in order and keeps their sum.
class EstimateRows {
 public:
  explicit EstimateRows(exchange::RequestDocument& document) : document_(document) {}

  void Add(const Record& row) {
    const std::u16string rateNo = util::NullToText(row[u"RateNo"]);
    const std::int32_t count = CountOf(row);
    const double unitPrice = platform::ToDouble(OrZero(row, u"Amount"));
    for (const FixedRate& fixed : kFixedRates) {
      if (rateNo == fixed.rateNo) {
        // Kept: the sum uses the fixed price while the row shows its own amount; the form's printed
        // rows contain the price.
        AddItems(fixed.rowNumber, count, unitPrice, Product(count, fixed.price));
        return;
      }
    }
    // Kept: no upper bound, so the tenth row shares its keys with rate 681.
    const std::int16_t rowNumber = nextRow_;
    AdvanceRow();
    if (!HasPrintedMeasure(rowNumber)) {
      AddItem(rowNumber, u"Atgard", rateNo);
    }
    AddItems(rowNumber, count, unitPrice, count * unitPrice);
  }

  void AddSums() {
    AddFormItem(document_, {u"edtBerSummering"}, {Fixed(sum_)});
    AddFormItem(document_, {u"edtBerTotalErsattning"}, {Fixed(sum_ - kFixedDeduction)});
  }

 private:
  void AdvanceRow() {
    if (nextRow_ == std::numeric_limits<std::int16_t>::max()) {
      throw automation::AutomationError(automation::RuntimeError::Overflow);
    }
    ++nextRow_;
  }

  void AddItems(std::int16_t rowNumber, std::int32_t count, double unitPrice, double rowSum) {
    AddItem(rowNumber, u"Antal", Decimal10(count));
    AddItem(rowNumber, u"Pris", Fixed(unitPrice));
    AddItem(rowNumber, u"Summa", Fixed(rowSum));
    sum_ += rowSum;
  }

  void AddItem(std::int16_t rowNumber, std::u16string_view what, std::u16string_view value) {
    AddFormItem(document_, {u"edtBer", Decimal10(rowNumber), what}, {value});
  }

  // Valid until the next one.
  std::u16string_view Fixed(double amount) {
    text_.clear();
    automation::AppendFixed(text_, amount, regional_);
    return text_;
  }

  exchange::RequestDocument& document_;
  // Asking the system for them takes longer than writing an amount.
  const automation::Regional regional_ = platform::Current().locale.Regional();
  std::u16string text_;
  std::int16_t nextRow_ = 1;
  double sum_ = 0;
};

}  // namespace

void AddCostEstimate(exchange::RequestDocument& document, ApplicationRecords& records) {
  AddForm(document, u"108696", [&] {
    AddFields(document, kCaseFields, records);
    AddFields(document, kPartyFields, records);
    AddFields(document, kNoteFields, records);
    EstimateRows rows(document);
    Record& row = records.estimateRows;
    for (row.MoveFirst(); !row.AtEnd(); row.MoveNext()) {
      if (IsTaken(row, records)) {
        rows.Add(row);
      }
    }
    rows.AddSums();
  });
}

}  // namespace fhp
