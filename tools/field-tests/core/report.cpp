#include "field-tests/core/report.h"

#include <algorithm>
#include <map>

#include "field-tests/core/report_style.h"

namespace field_tests {
namespace {

std::string Escaped(const std::string& text) {
  std::string html;
  for (const char letter : text) {
    switch (letter) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      default:
        // HTML has no other control characters than these.
        html += static_cast<unsigned char>(letter) >= ' ' || letter == '\n' || letter == '\t'
                    ? letter
                    : '?';
    }
  }
  return html;
}

std::string Element(const std::string& tag, const std::string& content,
                    const std::string& class_ = {}) {
  return "<" + tag + (class_.empty() ? "" : " class=\"" + class_ + "\"") + ">" + content + "</" +
         tag + ">";
}

std::string RowOf(const std::vector<std::string>& cells) {
  std::string row;
  for (const auto& cell : cells) {
    row += Element("td", cell);
  }
  return Element("tr", row) + "\n";
}

std::string TableOf(const std::string& class_, const std::vector<std::string>& heads,
                    const std::string& rows) {
  std::string head;
  for (const auto& each : heads) {
    head += Element("th", each);
  }
  return Element("table", (heads.empty() ? "" : Element("tr", head) + "\n") + rows, class_) + "\n";
}

std::string Box(const std::string& class_, int count, const std::string& words) {
  return Element("div", Element("b", std::to_string(count)) + " " + words, class_);
}

std::string HeadOf(const Report& report) {
  const int failed = CountOf(report.cases, Outcome::Failed);
  const int notRun = CountOf(report.cases, Outcome::NotRun);
  std::string head =
      Element("h1", "Vilnor field tests") +
      Element("p", Escaped(report.component) + ", tested " + Escaped(report.when), "about");
  if (report.inWine) {
    head += Element("p",
                    "This is Wine, not Windows. The report shows how the field tests work; it "
                    "proves nothing about Windows.",
                    "wine");
  }
  return head +
         Element("div",
                 Box("good", CountOf(report.cases, Outcome::Passed), "passed") +
                     Box(failed > 0 ? "bad" : "none", failed, "failed") +
                     Box(notRun > 0 ? "open" : "none", notRun, "not run"),
                 "counts") +
         "\n";
}

std::string ComputerOf(const Report& report) {
  std::string rows;
  for (const auto& [what, value] : report.computer) {
    rows += Element("tr", Element("th", Escaped(what)) + Element("td", Escaped(value))) + "\n";
  }
  return Element("h2", "The computer") + TableOf("computer", {}, rows);
}

std::string DifferencesOf(const Report& report, const WineOutcomes& wine) {
  const auto differences = DifferencesFromWine(report.cases, wine);
  const std::string heading = Element("h2", "What differed from Wine");
  if (differences.empty()) {
    return heading + Element("p", "Nothing: every test that was run ended as it does in Wine.");
  }
  std::string rows;
  for (const auto& each : differences) {
    rows += RowOf({Escaped(each.test->program), Escaped(each.test->name), WordOf(each.inWine),
                   WordOf(each.test->outcome)});
  }
  return heading + TableOf("differences", {"program", "test", "in Wine", "here"}, rows);
}

std::string FailuresOf(const Report& report) {
  std::string failures;
  for (const auto& each : report.cases) {
    if (each.outcome == Outcome::Failed) {
      failures += Element("h3", Escaped(each.program + ": " + each.name)) +
                  Element("pre", Escaped(each.text)) + "\n";
    }
  }
  return failures.empty() ? ""
                          : Element("h2", "What failed") + Element("div", failures, "failures");
}

std::string NotRunOf(const Report& report) {
  // The tests of each program, by the reason.
  std::map<std::pair<std::string, std::string>, std::vector<std::string>> groups;
  for (const auto& each : report.cases) {
    if (each.outcome == Outcome::NotRun) {
      groups[{each.text, each.program}].push_back(each.name);
    }
  }
  std::string rows;
  for (const auto& [key, names] : groups) {
    std::string list;
    for (const auto& name : names) {
      list += Element("li", Escaped(name));
    }
    rows += RowOf({Escaped(key.second), std::to_string(names.size()),
                   Escaped(key.first) +
                       Element("details", Element("summary", "the tests") + Element("ul", list))});
  }
  return rows.empty() ? ""
                      : Element("h2", "What was not run") +
                            TableOf("not-run", {"program", "tests", "why"}, rows);
}

int CountOfProgram(const Cases& cases, const std::string& program, Outcome outcome) {
  return static_cast<int>(std::count_if(cases.begin(), cases.end(), [&](const Case& each) {
    return each.program == program && each.outcome == outcome;
  }));
}

std::string PurposeOf(const std::string& program) {
  static const std::map<std::string, std::string> purposes = {
      {"windows_tests", "windows, message boxes, processes, settings"},
      {"contract_tests", "files, XML, registry, statements by ADO"},
      {"com_tests", "the component as a host calls it"},
      {"database_tests", "the component's database operations"},
      {"trips", "practice program, component, link program, database"},
      {"trace", "event tracing of Windows"}};
  const auto found = purposes.find(program);
  return found == purposes.end() ? "" : found->second;
}

std::string ProgramsOf(const Report& report) {
  std::string rows;
  for (const auto& each : report.times) {
    std::vector<std::string> cells = {Escaped(each.program) +
                                      Element("span", PurposeOf(each.program), "purpose")};
    for (const auto outcome : {Outcome::Passed, Outcome::Failed, Outcome::NotRun}) {
      cells.push_back(std::to_string(CountOfProgram(report.cases, each.program, outcome)));
    }
    cells.push_back(std::to_string(each.seconds) + " s");
    rows += RowOf(cells);
  }
  return Element("h2", "The programs") +
         TableOf("programs", {"program", "passed", "failed", "not run", "time"}, rows);
}

std::string NotesOf(const Report& report) {
  std::string notes;
  for (const auto& each : report.notes) {
    notes += Element("li", Escaped(each));
  }
  return Element("h2", "What was changed on this computer, and put back") + Element("ul", notes);
}

}  // namespace

std::string HtmlOf(const Report& report, const WineOutcomes& wine) {
  return "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">" +
         Element("title", "Vilnor field tests: " + SummaryOf(report.cases)) +
         Element("style", kStyle) + "</head>\n<body>" + HeadOf(report) + ComputerOf(report) +
         FailuresOf(report) + DifferencesOf(report, wine) + ProgramsOf(report) + NotRunOf(report) +
         NotesOf(report) + "</body></html>\n";
}

std::string SummaryOf(const Cases& cases) {
  const int notRun = CountOf(cases, Outcome::NotRun);
  return std::to_string(CountOf(cases, Outcome::Passed)) + " passed, " +
         std::to_string(CountOf(cases, Outcome::Failed)) + " failed" +
         (notRun > 0 ? ", " + std::to_string(notRun) + " not run" : "");
}

std::string LineOf(const ProgramTime& time, const Cases& cases) {
  Cases own;
  std::copy_if(cases.begin(), cases.end(), std::back_inserter(own),
               [&](const Case& each) { return each.program == time.program; });
  return time.program + ": " + SummaryOf(own) + " (" + std::to_string(time.seconds) + " s)";
}

}  // namespace field_tests
