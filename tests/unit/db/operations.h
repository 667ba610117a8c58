// Every operation of DBVilnor as a table: the database calls when all goes well, and the boxes
// shown when each of these calls fails.
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
  // Distinguishes the operation's rows in the table: "OfApplication".
  std::string variant;
  // The database's answers for it.
  std::map<std::u16string, fakes::Rows> answers;
  std::vector<automation::Value> identities;
  // The result; for a recordset whether there is one, Empty for no result.
  std::function<automation::Value(db::DBVilnor&)> run;
  automation::Value result;
  automation::Value emptyResult;
  std::vector<ExpectedCall> calls;
  // The boxes of an operation whose first query finds no row.
  std::vector<std::u16string> boxesWithoutARow;

  std::string Name() const { return operation + variant; }
};

const std::vector<Operation>& Operations();

// Scripts the operation's answers in the database.
void Script(fakes::Database& database, const Operation& operation);

// How GoogleTest names the case in its output.
inline void PrintTo(const Operation& operation, std::ostream* out) {
  *out << operation.Name();
}

}  // namespace unit
