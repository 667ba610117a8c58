#include "simulator/core/plan.h"

#include <algorithm>
#include <array>

#include "automation/conversion.h"
#include "automation/text.h"

namespace simulator {
namespace {

void SetOutcome(Plan& plan, std::u16string_view value) {
  const auto outcome = OutcomeOfWord(value);
  if (outcome) {
    plan.outcome = *outcome;
  } else {
    plan.problems.push_back(u"outcome=" + std::u16string(value) + u": väntade något av " +
                            OutcomeWords() + u".");
  }
}

void SetWait(Plan& plan, std::u16string_view value) {
  constexpr double longest = 60000;
  const auto number = automation::ParseNumber(value, {});
  if (number && *number >= 0 && *number <= longest) {
    plan.wait = std::chrono::milliseconds(static_cast<int>(*number));
  } else {
    plan.problems.push_back(u"wait=" + std::u16string(value) +
                            u": väntade 0 till 60000 millisekunder.");
  }
}

struct Key {
  const char16_t* name;
  void (*set)(Plan& plan, std::u16string_view value);
};

constexpr std::array<Key, 8> kKeys = {{
    {u"outcome", SetOutcome},
    {u"caseid", [](Plan& plan, std::u16string_view value) { plan.caseId = value; }},
    {u"user", [](Plan& plan, std::u16string_view value) { plan.userName = value; }},
    {u"cancelled", [](Plan& plan, std::u16string_view value) { plan.cancelled = value; }},
    {u"status", [](Plan& plan, std::u16string_view value) { plan.status = value; }},
    {u"keep", [](Plan& plan, std::u16string_view value) { plan.keepFolder = value; }},
    {u"log", [](Plan& plan, std::u16string_view value) { plan.logFile = value; }},
    {u"wait", SetWait},
}};

void ReadPair(std::u16string_view pair, Plan& plan) {
  const auto equals = pair.find(u'=');
  const auto name = automation::Trim(pair.substr(0, equals));
  const auto* const key = std::find_if(kKeys.begin(), kKeys.end(), [&](const auto& each) {
    return automation::EqualsNoCase(each.name, name);
  });
  if (equals == std::u16string_view::npos || key == kKeys.end()) {
    plan.problems.push_back(u"\u201D" + std::u16string(pair) + u"\u201D: okänd rad i planen.");
    return;
  }
  key->set(plan, automation::Trim(pair.substr(equals + 1)));
}

}  // namespace

Plan ParsePlan(std::u16string_view text) {
  Plan plan;
  text.remove_prefix(text.starts_with(u'\uFEFF') ? 1 : 0);
  while (!text.empty()) {
    const auto lineEnd =
        text.starts_with(u'#') ? text.find_first_of(u"\r\n") : text.find_first_of(u"\r\n;");
    const auto pair = automation::Trim(text.substr(0, lineEnd));
    if (!pair.empty() && !pair.starts_with(u'#')) {
      ReadPair(pair, plan);
    }
    text.remove_prefix(std::min(lineEnd, text.size() - 1) + 1);
  }
  return plan;
}

Answer AnswerByPlan(const Plan& plan, const Request& request, automation::Date now) {
  return {.outcome = plan.outcome,
          .caseId = plan.caseId.value_or(DefaultCaseId(request, now)),
          .userName = plan.userName.value_or(DefaultUserName(request)),
          .cancelled = plan.cancelled,
          .status = plan.status};
}

}  // namespace simulator
