#include "diagnosis/core/report.h"

#include <algorithm>

#include "automation/text.h"

namespace diagnosis {
namespace {

using automation::Decimal10;

std::u16string WordOf(State state) {
  switch (state) {
    case State::Fault:
      return u"fault";
    case State::Warning:
      return u"warning";
    case State::Fine:
      break;
  }
  return u"fine";
}

std::int64_t CountOf(const Findings& findings, State state) {
  return std::count_if(findings.begin(), findings.end(),
                       [&](const Finding& finding) { return finding.state == state; });
}

std::u16string Escaped(char16_t unit) {
  constexpr std::u16string_view digits = u"0123456789abcdef";
  return {u'\\', u'u', u'0', u'0', digits[unit >> 4U], digits[unit & 0xFU]};
}

std::u16string Quoted(std::u16string_view text) {
  std::u16string quoted = u"\"";
  for (const char16_t unit : text) {
    if (unit == u'"' || unit == u'\\') {
      quoted += u'\\';
      quoted += unit;
    } else if (unit < u' ') {
      quoted += Escaped(unit);
    } else {
      quoted += unit;
    }
  }
  return quoted + u'"';
}

std::u16string ObjectOf(const Finding& finding) {
  return u"    {\"id\": " + Quoted(finding.check.id) + u", \"title\": " +
         Quoted(finding.check.title) + u", \"state\": " + Quoted(WordOf(finding.state)) +
         u",\r\n     \"text\": " + Quoted(finding.text) + u",\r\n     \"advice\": " +
         Quoted(finding.advice) + u"}";
}

// A finding's text may quote a message box, which has lines of its own.
std::u16string OnOneLine(std::u16string text) {
  std::replace_if(
      text.begin(), text.end(), [](char16_t unit) { return unit < u' '; }, u' ');
  return text;
}

}  // namespace

State Worst(const Findings& findings) {
  const auto worst = std::max_element(
      findings.begin(), findings.end(),
      [](const Finding& one, const Finding& other) { return one.state < other.state; });
  return worst == findings.end() ? State::Fine : worst->state;
}

std::u16string NameOf(State state) {
  switch (state) {
    case State::Fault:
      return u"FEL";
    case State::Warning:
      return u"Varning";
    case State::Fine:
      break;
  }
  return u"OK";
}

Findings Sorted(Findings findings) {
  std::stable_sort(findings.begin(), findings.end(), [](const Finding& one, const Finding& other) {
    return one.state > other.state;
  });
  return findings;
}

std::u16string Summary(const Findings& findings) {
  const std::int64_t faults = CountOf(findings, State::Fault);
  const std::int64_t warnings = CountOf(findings, State::Warning);
  if (faults == 0 && warnings == 0) {
    return u"Inget fel hittades.";
  }
  const std::u16string warningText =
      Decimal10(warnings) + (warnings == 1 ? u" varning" : u" varningar");
  return faults == 0     ? warningText
         : warnings == 0 ? Decimal10(faults) + u" fel"
                         : Decimal10(faults) + u" fel, " + warningText;
}

std::u16string AsText(const Report& report) {
  std::u16string text = u"VilnorCheck " + report.version + u", " + report.time + u"\r\n" +
                        Summary(report.findings) + u"\r\n\r\n";
  constexpr std::size_t widestState = 9;
  for (const Finding& finding : Sorted(report.findings)) {
    std::u16string state = NameOf(finding.state);
    state.resize(widestState, u' ');
    text += state + std::u16string(finding.check.title) + u": " + OnOneLine(finding.text) + u"\r\n";
    if (!finding.advice.empty()) {
      text += std::u16string(widestState, u' ') + u"Åtgärd: " + OnOneLine(finding.advice) + u"\r\n";
    }
  }
  return text;
}

std::u16string AsJson(const Report& report) {
  std::u16string list;
  for (const Finding& finding : report.findings) {
    list += (list.empty() ? u"\r\n" : u",\r\n") + ObjectOf(finding);
  }
  return u"{\"program\": \"VilnorCheck\", \"version\": " + Quoted(report.version) +
         u", \"time\": " + Quoted(report.time) + u",\r\n \"state\": " +
         Quoted(WordOf(Worst(report.findings))) + u",\r\n \"findings\": [" + list + u"\r\n ]}\r\n";
}

}  // namespace diagnosis
