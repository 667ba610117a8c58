// Every operation of DBVilnor as a table: what the database receives when all goes well, and the
// boxes that a failure of each of these calls brings.
#pragma once

#include <functional>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "automation/value.h"
#include "db/db_vilnor.h"
#include "fakes/fake_database.h"

namespace unit {

struct ExpectedCall {
  std::u16string entry;
  std::vector<std::u16string> boxesWhenItFails;
};

struct Operation {
  std::string operation;
  // Tells the operation's rows of the table apart: "OfApplication".
  std::string variant;
  // What the database holds for it.
  std::map<std::u16string, fakes::Rows> answers;
  std::vector<automation::Value> identities;
  // The result; a recordset as whether there is one, nothing as Empty.
  std::function<automation::Value(db::DBVilnor&)> run;
  automation::Value result;
  automation::Value emptyResult;
  std::vector<ExpectedCall> calls;
  // What an operation that begins with a query shows when no row answers it.
  std::vector<std::u16string> boxesWithoutARow;

  std::string Name() const { return operation + variant; }
};

const std::vector<Operation>& Operations();

// Puts the operation's answers into the database.
void Script(fakes::Database& database, const Operation& operation);

// How GoogleTest names the case in its output.
inline void PrintTo(const Operation& operation, std::ostream* out) {
  *out << operation.Name();
}

}  // namespace unit
