// Runs one of the core's hot paths N times, for callgrind to count the instructions:
//   vilnor_instructions           lists the paths
//   vilnor_instructions PATH N
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>

#include "automation/conversion.h"
#include "automation/date.h"
#include "exchange/request_document.h"
#include "odbc/column_value.h"
#include "odbc/translation.h"
#include "shared/tooth_texts.h"
#include "util/error_trap.h"

namespace {

// Stores the results of the paths, so that they are not optimised away.
volatile std::size_t made = 0;

void BuildARequest() {
  constexpr int kFields = 200;
  exchange::RequestDocument document;
  document.Add("NewCase", [&] {
    document.Add("Form", [&] {
      for (int field = 0; field < kFields; ++field) {
        document.Add("FormItem", [&] {
          document.Add("FormItemKey", {u"edtBehandling"});
          document.Add("FormItemValue", {u"Krona & bro, tand 11, är åtgärdad"});
        });
      }
    });
  });
  made = document.Finish().size();
}

void ScanTeeth() {
  static const std::u16string text = benchmarks::RunsOf(1000);
  made = static_cast<std::size_t>(benchmarks::CountBlanks(text, fhp::kSendCheckScan));
}

void TranslateAnInsert() {
  made = odbc::Translate(
             u"Insert into Vilnor (PID, BID, RID, CaseId, CaseType, Journal_ID, StatusCode, "
             u"VilnorUser, RegDate) VALUES (4711,12,3,'26100417',9,0,5,'anna',#11-16-2026 "
             u"14:05:00#)",
             odbc::DialectOf(u"SQLite"), [](auto, auto) { return false; })
             .size();
}

void ReadARow() {
  made = odbc::ToValue(u"4711", odbc::ColumnKind::Int32).Is<std::int32_t>() +
         odbc::ToValue(u"3975.5", odbc::ColumnKind::Double).Is<double>() +
         odbc::ToValue(u"2026-11-16 10:20:00", odbc::ColumnKind::Date).Is<automation::Date>() +
         odbc::ToValue(u"1", odbc::ColumnKind::Boolean).Is<bool>();
}

void MakeTexts() {
  static const automation::Regional swedish = {.shortDate = u"yyyy-MM-dd",
                                               .decimalSeparator = u',',
                                               .groupSeparator = u'\u00A0',
                                               .twelveHourClock = false};
  static const automation::Date date = automation::MakeDate({2026, 11, 16, 14, 5, 0});
  made = automation::ToText(date, swedish).size() + automation::ToText(3975.5, swedish).size();
}

std::size_t Work() {
  return made + 1;
}

// What a procedure costs while nobody listens to the trace, and what it would without one.
void CallAProcedure() {
  made = util::UnderTrap(u" in P", util::kModBVilnorIcon, Work);
}
void CallAnUntracedProcedure() {
  made =
      [] {
        try {
          return util::Attempt<std::size_t>(Work());
        } catch (...) {
          return util::Attempt<std::size_t>(util::Failure());
        }
      }()
          .OrEmpty();
}

const std::map<std::string, void (*)()> kPaths = {
    {"a request of 200 fields", BuildARequest},
    {"a scan of 1,000 characters", ScanTeeth},
    {"an insert translated", TranslateAnInsert},
    {"four columns' values", ReadARow},
    {"a date's and a number's text", MakeTexts},
    {"a procedure", CallAProcedure},
    {"a procedure without a trace", CallAnUntracedProcedure},
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    for (const auto& [name, path] : kPaths) {
      std::puts(name.c_str());
    }
    return 0;
  }
  const auto path = kPaths.at(argv[1]);
  for (int run = std::atoi(argv[2]); run > 0; --run) {
    path();
  }
  return 0;
}
