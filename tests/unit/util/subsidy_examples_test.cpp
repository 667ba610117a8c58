// The worked examples of docs/dental-care-subsidy.md, read from the page itself.
#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "automation/text.h"
#include "platform/conversions.h"
#include "util/rate_compensation.h"
#include "util_fixture.h"

namespace util {
namespace {

using Cells = std::vector<std::u16string>;

enum Column { Registered, Born, Rate, Debit, Increased, Applied, First, Second, Third, OnTheForm };
constexpr std::size_t kColumns = OnTheForm + 1;

// The examples' lines: those that begin with a date.
std::vector<Cells> Examples() {
  std::ifstream page(VILNOR_SOURCE_DIR "/docs/dental-care-subsidy.md");
  std::vector<Cells> examples;
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("| 20")) {
      Cells cells = automation::Split(automation::FromUtf8(line), u'|');
      cells.erase(cells.begin());
      cells.pop_back();
      std::transform(cells.begin(), cells.end(), cells.begin(),
                     [](const auto& cell) { return automation::Trim(cell); });
      examples.push_back(std::move(cells));
    }
  }
  return examples;
}

class SubsidyExamples : public UtilTest {};

TEST_F(SubsidyExamples, DocumentedSubsidyExamplesHold) {
  const auto examples = Examples();
  ASSERT_EQ(examples.size(), 39U);
  for (const Cells& cells : examples) {
    ASSERT_EQ(cells.size(), kColumns);
    RateCompensationInput input;
    input.regDate = platform::ToDate(cells[Registered]);
    input.birthDate = platform::ToDate(cells[Born]);
    input.amount1 = input.amount2 = input.amount3 = 1000;
    input.increasedComp = cells[Increased] == u"yes";
    input.increasedCompApplied = cells[Applied] == u"yes";
    input.rateNo = cells[Rate];
    input.debit = cells[Debit] == u"none" ? std::u16string() : cells[Debit];
    const RateCompensation result = GetRateCompensation(input);
    const Cells found = {platform::ToText(result.amount1), platform::ToText(result.amount2),
                         platform::ToText(result.amount3), result.accepted ? u"yes" : u"no"};
    EXPECT_EQ(found, Cells(cells.begin() + First, cells.end()))
        << automation::ToUtf8(cells[Registered] + u", rate " + cells[Rate]);
  }
}

}  // namespace
}  // namespace util
