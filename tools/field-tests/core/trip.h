// The trips: the practice program calls the component, the link program's simulator answers, the
// database changes. They are those of tests/system/trips, which the build takes over.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace field_tests {

struct Trip {
  std::string name;
  std::string call;                    // the host's operation
  std::optional<std::string> request;  // the request file; "" for a start without one
  std::string plan;                    // what the simulator answers
  std::string answer;                  // the user's answer to the component's boxes
  bool waits = true;                   // for the link program's message
  std::vector<std::string> result;
  std::vector<std::string> changes;  // of rows
  std::vector<std::string> left;     // files in the exchange folder
  std::vector<std::string> boxes;
  int events = 0;
  // Fields of the application's forms; "{point}" is the decimal separator, nothing for a field that
  // must be missing.
  std::vector<std::pair<std::string, std::optional<std::string>>> fields;
};

const std::vector<Trip>& Trips();

// What one trip did.
struct TripOutcome {
  int exitCode = 0;
  std::vector<std::string> output;  // the host's lines
  std::string commandLine;          // the link program's; "" if it was not started
  std::string request;              // the request file's content, if the trip has fields
  std::vector<std::string> changes;
  std::vector<std::string> left;
};

struct TripPlaces {
  std::string linkProgram;
  std::string exchangeFolder;
  std::string decimalSeparator;
};

// How the outcome differs from what is expected, one text each.
std::vector<std::string> Faults(const Trip& trip, const TripOutcome& outcome,
                                const TripPlaces& places);

// The name of a file in the exchange folder; the time at which it was set aside is "DATE TIME".
std::string WithoutTime(const std::string& name);

// Tables as lists of rows, each with its columns' texts; the first column is the key.
struct Table {
  std::string name;
  std::vector<std::string> columns;
  std::vector<std::vector<std::string>> rows;
};

// "+ Journal 505: PID=4711 ..." for a new row, "~" for a changed one, "-" for a deleted one. A time
// between `began` and `ended` ("2026-11-22 14:05:00") is "now".
std::vector<std::string> Changes(const std::vector<Table>& before, const std::vector<Table>& after,
                                 const std::string& began, const std::string& ended);

}  // namespace field_tests
