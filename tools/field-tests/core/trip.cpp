#include "field-tests/core/trip.h"

#include <algorithm>
#include <map>

#include "field-tests/core/text.h"

namespace field_tests {
namespace {

std::vector<std::string> Behind(std::string_view word, const std::vector<std::string>& lines) {
  std::vector<std::string> found;
  for (const auto& line : lines) {
    if (line.starts_with(word)) {
      found.push_back(line.substr(word.size()));
    }
  }
  return found;
}

// As the expected boxes are written: without the usual title and button.
std::vector<std::string> BoxesIn(const std::vector<std::string>& lines) {
  constexpr std::string_view kTitle = "\"Vilnor Link connection\" ";
  auto boxes = Behind("box ", lines);
  for (auto& box : boxes) {
    if (box.starts_with(kTitle)) {
      box.erase(0, kTitle.size());
    }
    if (box.ends_with(" OK")) {
      box.resize(box.size() - 3);
    }
  }
  return boxes;
}

std::vector<std::string> ResultIn(const std::vector<std::string>& lines) {
  std::vector<std::string> result;
  for (const auto& line : lines) {
    const auto word = line.substr(0, line.find(' '));
    if (word == "result" || word == "ErrCode" || word == "ErrMsg") {
      result.push_back(line);
    }
  }
  return result;
}

// A pattern that begins with "*" stands for every text with what follows it.
bool AreLike(const std::vector<std::string>& patterns, const std::vector<std::string>& texts) {
  return std::equal(patterns.begin(), patterns.end(), texts.begin(), texts.end(),
                    [](const std::string& pattern, const std::string& text) {
                      return pattern.starts_with('*')
                                 ? text.find(pattern.substr(1)) != std::string::npos
                                 : pattern == text;
                    });
}

std::string MessageOf(const Trip& trip) {
  const auto word = trip.call.substr(0, trip.call.find(' '));
  return word == "new-case" ? "10002" : word == "new-fhp" ? "10001" : "10009";
}

std::string Shown(const std::vector<std::string>& lines) {
  return lines.empty() ? "(nothing)" : Joined(lines, "\n    ");
}

class FaultList {
 public:
  void Expect(const std::string& what, const std::vector<std::string>& expected,
              const std::vector<std::string>& found) {
    ExpectThat(what, expected == found, expected, found);
  }
  void ExpectThat(const std::string& what, bool holds, const std::vector<std::string>& expected,
                  const std::vector<std::string>& found) {
    if (!holds) {
      faults_.push_back(what + "\n  expected:\n    " + Shown(expected) + "\n  found:\n    " +
                        Shown(found));
    }
  }
  std::vector<std::string> Take() { return std::move(faults_); }

 private:
  std::vector<std::string> faults_;
};

std::vector<std::string> ExpectedCommandLine(const Trip& trip, const TripPlaces& places) {
  if (!trip.request) {
    return {};
  }
  return {places.linkProgram + (trip.request->empty()
                                    ? ""
                                    : " path=\"" + places.exchangeFolder + "\\" + *trip.request +
                                          "\" version=2 caller=KestraDental removefiles=1")};
}

// "" for an element that is not there.
std::string Between(const std::string& text, const std::string& name, std::size_t from) {
  const std::string start = "<" + name + ">";
  const auto at = text.find(start, from);
  const auto end = text.find("</" + name + ">", from);
  return at == std::string::npos || end == std::string::npos
             ? ""
             : text.substr(at + start.size(), end - at - start.size());
}

// The fields of all forms; a key that occurs twice has both texts.
std::map<std::string, std::string> FieldsOf(const std::string& request) {
  constexpr std::string_view kItem = "<FormItem>";
  std::map<std::string, std::string> fields;
  for (auto at = request.find(kItem); at != std::string::npos;
       at = request.find(kItem, at + kItem.size())) {
    auto& field = fields[Between(request, "FormItemKey", at)];
    field += (field.empty() ? "" : " ") + Between(request, "FormItemValue", at);
  }
  return fields;
}

void ExpectFields(const Trip& trip, const TripOutcome& outcome, const TripPlaces& places,
                  FaultList& faults) {
  const auto found = FieldsOf(outcome.request);
  for (auto [key, value] : trip.fields) {
    if (value) {
      ReplaceAll(*value, "{point}", places.decimalSeparator);
    }
    const auto field = found.find(key);
    using Lines = std::vector<std::string>;
    faults.Expect("form field " + key, value ? Lines{*value} : Lines{},
                  field == found.end() ? Lines{} : Lines{field->second});
  }
}

using Row = std::vector<std::string>;

std::string ColumnsThatDiffer(const Table& table, const Row& row, const Row& other,
                              const std::string& began, const std::string& ended) {
  std::string columns;
  for (std::size_t i = 1; i < row.size(); ++i) {
    if (row[i] != (other.empty() ? "NULL" : other[i])) {
      const bool isNow = row[i].size() == began.size() && row[i] >= began && row[i] <= ended;
      columns += " " + table.columns[i] + "=" + (isNow ? "now" : row[i]);
    }
  }
  return columns;
}

const Row* RowOf(const Table& table, const std::string& key) {
  const auto found = std::find_if(table.rows.begin(), table.rows.end(),
                                  [&](const Row& row) { return row.front() == key; });
  return found == table.rows.end() ? nullptr : &*found;
}

}  // namespace

std::vector<std::string> Faults(const Trip& trip, const TripOutcome& outcome,
                                const TripPlaces& places) {
  FaultList faults;
  faults.Expect("the practice program's exit code", {"0"}, {std::to_string(outcome.exitCode)});
  const std::string last =
      trip.waits ? "notification " + MessageOf(trip) + " handled" : std::string("return");
  faults.Expect("the practice program's last line", {last},
                {outcome.output.empty() ? "" : outcome.output.back()});
  faults.Expect(
      "the link program's command line", ExpectedCommandLine(trip, places),
      outcome.commandLine.empty() ? std::vector<std::string>{} : std::vector{outcome.commandLine});
  ExpectFields(trip, outcome, places, faults);
  faults.Expect("the result", trip.result, ResultIn(outcome.output));
  faults.Expect("changed rows", trip.changes, outcome.changes);
  faults.Expect("files left in the exchange folder", trip.left, outcome.left);
  const auto boxes = BoxesIn(outcome.output);
  faults.ExpectThat("message boxes", AreLike(trip.boxes, boxes), trip.boxes, boxes);
  faults.Expect("events",
                std::vector<std::string>(static_cast<std::size_t>(trip.events), "UpdateJournal"),
                Behind("event ", outcome.output));
  return faults.Take();
}

std::string WithoutTime(const std::string& name) {
  constexpr std::string_view kShape = " dddd-dd-dd dd.dd.dd";
  for (std::size_t at = 0; at + kShape.size() <= name.size(); ++at) {
    const bool isTime =
        std::equal(kShape.begin(), kShape.end(), name.begin() + static_cast<long>(at),
                   [](char shape, char letter) {
                     return shape == 'd' ? letter >= '0' && letter <= '9' : shape == letter;
                   });
    if (isTime) {
      return name.substr(0, at) + " DATE TIME" + name.substr(at + kShape.size());
    }
  }
  return name;
}

std::vector<std::string> Changes(const std::vector<Table>& before, const std::vector<Table>& after,
                                 const std::string& began, const std::string& ended) {
  std::vector<std::string> changes;
  std::vector<std::string> deleted;
  for (std::size_t i = 0; i < after.size(); ++i) {
    for (const auto& row : after[i].rows) {
      const Row* const old = RowOf(before[i], row.front());
      const auto columns =
          ColumnsThatDiffer(after[i], row, old == nullptr ? Row{} : *old, began, ended);
      if (old == nullptr || *old != row) {
        changes.push_back((old == nullptr ? "+ " : "~ ") + after[i].name + " " + row.front() + ":" +
                          columns);
      }
    }
    for (const auto& row : before[i].rows) {
      if (RowOf(after[i], row.front()) == nullptr) {
        deleted.push_back("- " + before[i].name + " " + row.front());
      }
    }
  }
  changes.insert(changes.end(), deleted.begin(), deleted.end());
  return changes;
}

}  // namespace field_tests
