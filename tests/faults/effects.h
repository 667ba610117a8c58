// What an operation does when nothing fails, and which boxes its faults show: one row of the table
// in docs/edge-cases/effects.md.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "faults/operations.h"

namespace faults {

class Effects {
 public:
  // Runs the operation without a fault.
  explicit Effects(const Operation& operation);

  void AddBoxes(const std::vector<platform::MessageBox>& shown);

  // "| operation | rows | files | Link.exe | UpdateJournal | exclamation | critical | own texts |"
  std::string Row() const;

 private:
  std::string name_;
  std::vector<std::string> rows_;
  std::vector<std::string> files_;
  std::vector<std::string> starts_;
  int events_ = 0;
  // Procedures named in boxes.
  std::map<platform::Icon, std::set<std::string>> procedures_;
  // Boxes that name no procedure.
  std::set<std::string> ownTexts_;
};

// The rows in the document, and whether they contain this one.
int DocumentedRows();
bool IsDocumented(const std::string& row);

}  // namespace faults
